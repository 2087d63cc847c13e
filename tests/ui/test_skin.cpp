#include "support/data_rows.h"
#include "ui/skin/skin.h"
#include "ui/skin/window_place.h"
#include "window_fixture.h"

#include <QDir>
#include <QTest>

class TestSkin : public QObject {
    Q_OBJECT

  private slots:
    void LayoutValues_data() {
        const Rows<QByteArray, int, bool> row;
        row("missing", QByteArray("\nOther=1"), 0, false);
        row("empty", QByteArray(""), 0, false);
        row("no number", QByteArray("left"), 0, false);
        row("whole pixels", QByteArray("4800"), 320, false);
        row("rounded up", QByteArray("3525.9 twips"), 235, false);
        row("just over half a pixel", QByteArray("23"), 2, false);
        row("out of sight on the left", QByteArray("-150"), -10, false);
        row("beyond every screen", QByteArray("99999999999"), 16000, false);
        row("one", QByteArray("1"), 0, true);
        row("one and a blank", QByteArray("\"1 \""), 0, false);
        row("one with a nought in front", QByteArray("01"), 0, false);
        row("another number", QByteArray("2"), 0, false);
    }

    void LayoutValues() {
        const auto [value, pixels, one] = Row<QByteArray, int, bool>();
        const QTemporaryDir folder;
        const QString file = folder.filePath("Position.ini");
        SkinMaker::Write(file, "[Control]\nTop=30\n[control2]\nKey=" + value + "\n");
        const SkinLayout layout(file);
        QCOMPARE(layout.Pixels("Control2", "key"), pixels);
        QCOMPARE(layout.IsOne("Control2", "Key"), one);
        QCOMPARE(layout.Position("Control"), QPoint(0, 2));
    }

    void Colours() {
        const QTemporaryDir folder;
        const QString file = folder.filePath("Position.ini");
        SkinMaker::Write(file, "[Label]\nForeColor=3359846\n");
        QCOMPARE(SkinLayout(file).Colour("Label", "ForeColor"), QColor(102, 68, 51));
        QCOMPARE(SkinLayout(file).Colour("Label", "BackColor"), QColor(Qt::black));
        QCOMPARE(SkinLayout({}).Colour("Label", "ForeColor"), QColor(Qt::black));
    }

    void SkinsAreFolders() {
        const QTemporaryDir own;
        const QTemporaryDir installed;
        for (const QString& name :
             {own.filePath("SKINS/night"), own.filePath("SKINS/.hidden"),
              installed.filePath("Skins/Default"), installed.filePath("Skins/Night")})
            QDir().mkpath(name);
        SkinMaker::Write(own.filePath("SKINS/readme.txt"), "no skin");
        const SkinFolders skins({own.path(), installed.path(), own.filePath("nowhere")});
        QCOMPARE(skins.Names(), QStringList({"Default", "night"}));
        QCOMPARE(skins.Choose("NIGHT"), "night");
        QCOMPARE(skins.Choose("readme.txt"), "Default");
        QCOMPARE(skins.Choose("gone"), "Default");
        QCOMPARE(skins.Choose({}), "Default");
        QVERIFY(!skins.Has("gone") && skins.Has("default"));
        // A file of the operator's own counts before the installed one, one by one.
        SkinMaker::Write(installed.filePath("Skins/Night/LEDleft.jpg"), "a");
        SkinMaker::Write(installed.filePath("Skins/Night/splash.bmp"), "b");
        SkinMaker::Write(own.filePath("SKINS/night/Splash.BMP"), "c");
        QVERIFY(skins.Find("night", "splash.bmp").startsWith(QDir::toNativeSeparators(own.path())));
        QVERIFY(skins.Find("night", "LEDLEFT.jpg")
                    .startsWith(QDir::toNativeSeparators(installed.path())));
        QCOMPARE(skins.Find("night", "LEDright.jpg"), QString());
    }

    void AttributesAsLetters() {
        QCOMPARE(AttributeLetters(0), QString());
        QCOMPARE(AttributeLetters(0xFFFF), "ACDHNRS");
        QCOMPARE(AttributeLetters(0x10 | 0x1), "DR");
        QCOMPARE(AttributeLetters(0x800 | 0x80 | 0x2), "CHN");
        QCOMPARE(AttributeLetters(0x20 | 0x4 | 0x100), "AS");
        const QTemporaryDir folder;
        SkinMaker::Write(folder.filePath("file"), "x");
        QCOMPARE(AttributeLetters(AttributesOf(QFileInfo(folder.path()))), "D");
        QCOMPARE(AttributeLetters(AttributesOf(QFileInfo(folder.filePath("file")))), "N");
    }

    void WindowsComeOntoAScreen_data() {
        const Rows<QPoint, QPoint> row;
        row("where it was", QPoint(100, 50), QPoint(100, 50));
        row("on the second screen", QPoint(-700, 10), QPoint(-700, 10));
        row("between the two: mostly on the first", QPoint(-100, 10), QPoint(0, 10));
        row("below the edge", QPoint(500, 700), QPoint(500, 468));
        row("screen gone, far right", QPoint(3000, 100), QPoint(624, 100));
        row("screen gone, far left and up", QPoint(-9000, -9000), QPoint(-800, 0));
    }

    void WindowsComeOntoAScreen() {
        const auto [place, expected] = Row<QPoint, QPoint>();
        const QList<QRect> screens{{0, 0, 1024, 768}, {-800, 0, 800, 600}};
        QCOMPARE(WindowPlace::OntoScreen({place, QSize(400, 300)}, screens), expected);
        QCOMPARE(WindowPlace::OntoScreen({place, QSize(2000, 2000)}, {screens[0]}), QPoint(0, 0));
        QCOMPARE(WindowPlace::OntoScreen({place, QSize(400, 300)}, {}), place);
    }

    void WindowsComeBesideAnother_data() {
        const Rows<QRect, QPoint> row;
        row("right", QRect(100, 200, 400, 300), QPoint(512, 200));
        row("left at the right edge", QRect(800, 200, 200, 300), QPoint(388, 200));
        row("below where neither side has room", QRect(300, 0, 450, 300), QPoint(300, 312));
        row("above at the bottom", QRect(300, 450, 450, 300), QPoint(300, 138));
        row("slides up", QRect(100, 700, 200, 60), QPoint(312, 468));
    }

    void WindowsComeBesideAnother() {
        const auto [neighbour, place] = Row<QRect, QPoint>();
        QCOMPARE(WindowPlace::Beside(neighbour, {400, 300}, {{0, 0, 1024, 768}}), place);
    }
};

QTEST_MAIN(TestSkin)
#include "test_skin.moc"
