#include "support/data_rows.h"
#include "ui/dialogs/frm_oberflaeche.h"
#include "ui/skin/picture_button.h"
#include "ui/skin/skin.h"
#include "ui/skin/window_place.h"
#include "ui/widgets/menu_row.h"
#include "ui/window_fixture.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

namespace {

// A second window that writes down what happens to it.
class RecordingWindow : public SkinnedWindow {
  public:
    QStringList Steps;

    void LoadBackground(Skin& skin) override { Steps << "background " + skin.Name(); }
    void ApplyLayout(Skin& skin) override { Steps << "layout " + skin.Name(); }
};

// The program with the chooser for its window and a second one.
class ChooserFixture : public WindowFixture {
  public:
    ChooserFixture() {
        Start();
        Chooser = std::make_unique<frmOberflaeche>(*Core, Skins, Boxes);
        Chooser->AddWindow(*Window);
        Chooser->AddWindow(Second);
        Chooser->Show({10, 10});
    }

    RecordingWindow Second;
    std::unique_ptr<frmOberflaeche> Chooser;
};

}  // namespace

class TestSkin : public QObject {
    Q_OBJECT

  private slots:
    void LayoutValues_data() {
        const Rows<QByteArray, int, bool> row;
        row("missing", QByteArray("\nOther=1"), 0, false);
        row("no number", QByteArray("left"), 0, false);
        row("rounded", QByteArray("3532.9 twips"), 236, false);
        row("just over half a pixel", QByteArray("23"), 2, false);
        row("out of sight on the left", QByteArray("-150"), -10, false);
        row("beyond every screen", QByteArray("99999999999"), 16000, false);
        row("one", QByteArray("1"), 0, true);
        row("one and a blank", QByteArray("\"1 \""), 0, false);
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

    void WindowsComeOntoAScreen_data() {
        const Rows<QPoint, QPoint> row;
        row("on the second screen", QPoint(-700, 10), QPoint(-700, 10));
        row("between the two: mostly on the first", QPoint(-100, 10), QPoint(0, 10));
        row("below the edge", QPoint(500, 700), QPoint(500, 468));
        row("screen gone, far left and up", QPoint(-9000, -9000), QPoint(-800, 0));
    }

    void WindowsComeOntoAScreen() {
        const auto [place, expected] = Row<QPoint, QPoint>();
        const QList<QRect> screens{{0, 0, 1024, 768}, {-800, 0, 800, 600}};
        QCOMPARE(WindowPlace::OntoScreen({place, QSize(400, 300)}, screens), expected);
        QCOMPARE(WindowPlace::OntoScreen({place, QSize(2000, 2000)}, {screens[0]}), QPoint(0, 0));
    }

    void WindowsComeBesideAnother_data() {
        Rows<QRect, QPoint>({{{100, 200, 400, 300}, {512, 200}},   // right of it
                             {{800, 200, 200, 300}, {388, 200}},   // left
                             {{300, 0, 450, 300}, {300, 312}},     // below
                             {{300, 450, 450, 300}, {300, 138}},   // above
                             {{100, 700, 200, 60}, {312, 468}}});  // slid up
    }

    void WindowsComeBesideAnother() {
        const auto [neighbour, place] = Row<QRect, QPoint>();
        QCOMPARE(WindowPlace::Beside(neighbour, {400, 300}, {{0, 0, 1024, 768}}), place);
    }

    void ListsSkinsAndChecksTheOneInUse() {
        ChooserFixture program;
        const QList<MenuRow*>& rows = program.Chooser->Label1;
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0]->text(), "Default");
        QVERIFY(!rows[0]->isChecked() && rows[1]->isChecked());
        QCOMPARE(rows[1]->y(), rows[0]->y() + rows[0]->height());
        const auto mark = [](MenuRow* row) {
            return row->grab().toImage().pixelColor(14, row->height() / 2);
        };
        QVERIFY(Alike(mark(rows[1]), SkinMaker::CheckColour));
        QVERIFY(!Alike(mark(rows[0]), SkinMaker::CheckColour));
    }

    void AClickDressesAllWindowsAtOnce() {
        ChooserFixture program;
        const QSignalSpy choosing(program.Chooser.get(), &frmOberflaeche::Choosing);
        QTest::mouseClick(program.Chooser->Label1[0], Qt::LeftButton);
        QCOMPARE(choosing.size(), 1);
        QCOMPARE(program.Second.Steps, QStringList({"background Default", "layout Default"}));
        QCOMPARE(program.Core->State.SkinName, "Default");
        QCOMPARE(program.Boxes.Shown, QStringList());
        QVERIFY(Alike(MiddleColour(*program.Window->btnStart), Qt::blue));
        QVERIFY(!program.Chooser->isVisible());
    }

    void ChooserByKeyboard() {
        ChooserFixture program;
        frmOberflaeche& chooser = *program.Chooser;
        QVERIFY(QTest::qWaitForWindowActive(&chooser));
        chooser.FocusRow();
        QCOMPARE(chooser.focusWidget(), chooser.Label1[1]);
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Escape);
        QVERIFY(!chooser.isVisible() && program.Second.Steps.isEmpty());
        chooser.Show({10, 10});
        QVERIFY(QTest::qWaitForWindowActive(&chooser));
        chooser.FocusRow();
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Up);
        QCOMPARE(chooser.focusWidget(), chooser.Label1[0]);
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Return);
        QCOMPARE(program.Setting("Einstellungen", "Skin"), "Default");
    }

    // Faults are told once, with the file's name, and never leave a window behind that is no use.
    void BrokenSkins_data() {
        const Rows<QString, QString, QString> row;
        row("no picture", "LEDleft2.jpg", "LEDleft2.jpg (Default)", "Default");
        row("no layout: no fault", "Position.ini", "", "Default");
        row("folder gone", "", "Default is missing", "Green");
    }

    void BrokenSkins() {
        const auto [removed, told, skin] = Row<QString, QString, QString>();
        ChooserFixture program;
        if (removed.isEmpty()) QDir(program.Skin("Default")).removeRecursively();
        QFile::remove(program.Skin("Default", removed));
        QTest::mouseClick(program.Chooser->Label1[0], Qt::LeftButton);
        QCOMPARE(program.Boxes.Shown.size(), told.isEmpty() ? 0 : 1);
        if (!told.isEmpty())
            QVERIFY(program.Boxes.Shown[0].startsWith("Stillpost: Error: " + told));
        QCOMPARE(program.Setting("Einstellungen", "Skin"), skin);
        QCOMPARE(program.Core->State.SkinName, skin);
        QVERIFY(program.Window->isVisible());
        // Back from there to a whole skin.
        program.Chooser->Show({10, 10});
        QTest::mouseClick(program.Chooser->Label1.last(), Qt::LeftButton);
        QCOMPARE(program.Window->size(), QSize(400, 320));
        QCOMPARE(program.Window->btnStart->geometry(), QRect(40, 290, 40, 20));
        QVERIFY(!program.Window->mask().isEmpty());
    }

    void NeverBelowTheScreen() {
        const QRect screen(0, 0, 1024, 768);
        QCOMPARE(frmOberflaeche::TopOnScreen(668, 100, screen), 668);
        QCOMPARE(frmOberflaeche::TopOnScreen(669, 100, screen), 635);
        QCOMPARE(frmOberflaeche::TopOnScreen(669, 900, screen), 0);
    }
};

QTEST_MAIN(TestSkin)
#include "test_skin.moc"
