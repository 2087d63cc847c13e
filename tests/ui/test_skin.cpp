#include "support/data_rows.h"
#include "ui/skin/skin.h"
#include "ui/skin/window_shape.h"
#include "ui/widgets/outline_style.h"
#include "ui/window_fixture.h"

#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>

namespace {

constexpr QRgb cut = 0xFFFF00FF;
constexpr QRgb kept = 0xFF204060;

// A picture to cut a window out of, with these parts of it kept.
QImage Drawing(const QSize& size, const QRegion& drawn) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(cut);
    QPainter painter(&picture);
    for (const QRect& part : drawn) painter.fillRect(part, QColor::fromRgb(kept));
    return picture;
}

}  // namespace

class TestSkin : public QObject {
    Q_OBJECT

  private slots:
    void LayoutValues_data() {
        const Rows<QByteArray, int, bool> row;
        row("no number", QByteArray("left"), 0, false);
        row("rounded", QByteArray("3532.9 twips"), 236, false);
        row("out of sight on the left", QByteArray("-150"), -10, false);
        row("beyond every screen", QByteArray("99999999999"), 16000, false);
        row("one", QByteArray("1"), 0, true);
    }

    void LayoutValues() {
        const auto [value, pixels, one] = Row<QByteArray, int, bool>();
        const SkinLayout layout("[Control]\nTop=30\n[control2]\nKey=" + value + "\n");
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
        const SkinFolders skins({own.path(), installed.path(), own.filePath("nowhere")});
        QCOMPARE(skins.Names(), QStringList({"Default", "night"}));
        QCOMPARE(skins.Choose("NIGHT"), "night");
        QCOMPARE(skins.Choose("gone"), "Default");
        // A file of the operator's own counts before the installed one, one by one.
        SkinMaker::Write(installed.filePath("Skins/Night/LEDleft.jpg"), "a");
        SkinMaker::Write(installed.filePath("Skins/Night/splash.bmp"), "b");
        SkinMaker::Write(own.filePath("SKINS/night/Splash.BMP"), "c");
        QVERIFY(skins.Find("night", "splash.bmp").startsWith(QDir::toNativeSeparators(own.path())));
        QVERIFY(skins.Find("night", "LEDLEFT.jpg")
                    .startsWith(QDir::toNativeSeparators(installed.path())));
        QCOMPARE(skins.Find("night", "LEDright.jpg"), QString());
    }

    // Exact within 150 pixels of either side; between them only every hundredth pixel counts.
    void OutlinesAreScanned() {
        const QRegion drawn = QRegion(5, 0, 2, 3) + QRect(160, 0, 80, 3) + QRect(245, 0, 20, 3) +
                              QRect(490, 0, 10, 3);
        const QImage picture = Drawing({500, 4}, drawn);
        const QRegion outline = QRegion(5, 0, 2, 3) + QRect(251, 0, 100, 3) + QRect(490, 0, 10, 3);
        QCOMPARE(BuildRegionFromPicture(picture), outline);
        QCOMPARE(BuildRegionFromPicture(picture.convertToFormat(QImage::Format_RGB888)), outline);
    }

    void EveryPictureMakesAWindow_data() {
        const Rows<QRect, QRegion> row;
        row("up to the corner: everything else is cut away", QRect(0, 0, 80, 30),
            QRegion(0, 30, 80, 30));
        row("one colour: nothing is cut away", QRect(), QRegion(0, 0, 80, 60));
    }

    void EveryPictureMakesAWindow() {
        const auto [drawing, outline] = Row<QRect, QRegion>();
        const QImage picture = Drawing({80, 60}, drawing);
        QWidget window;
        QCOMPARE(ShapeWindowFromPicture(window, picture), outline);
        QCOMPARE(window.size(), picture.size());
        QCOMPARE(window.mask().isEmpty() ? QRegion(window.rect()) : window.mask(), outline);
    }

    // The seam takes the colour beside it; further away, and inside, nothing changes.
    void SeamIsColoured() {
        const QImage picture = Drawing({30, 20}, QRect(5, 5, 10, 10));
        const QImage cleaned = WithCleanEdges(picture, BuildRegionFromPicture(picture));
        QCOMPARE(cleaned, Drawing({30, 20}, QRect(4, 4, 12, 12)));
    }

    // The toolkit's own outlines are black on black.
    void ControlsAreSeenOnBlack() {
        OutlineStyle style;
        QCheckBox box;
        QRadioButton choice;
        QLineEdit line;
        QListWidget list;
        QSlider slider;
        QPushButton button;
        for (QWidget* each :
             std::initializer_list<QWidget*>{&box, &choice, &line, &list, &slider, &button}) {
            each->setStyle(&style);
            each->setPalette(QPalette(Qt::black, Qt::black));
            const QImage shown = each->grab().toImage();
            int lightest = 0;
            for (int y = 0; y < shown.height(); ++y)
                for (int x = 0; x < shown.width(); ++x)
                    lightest = std::max(lightest, qGray(shown.pixel(x, y)));
            QVERIFY2(lightest > 90, each->metaObject()->className());
        }
    }
};

QTEST_MAIN(TestSkin)
#include "test_skin.moc"
