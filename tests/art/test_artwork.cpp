#include "art/skin_layout.h"
#include "support/data_rows.h"
#include "ui/skin/window_shape.h"

#include <QBitmap>
#include <QFile>
#include <QImageReader>
#include <QRawFont>
#include <QtEndian>

#include <algorithm>

namespace {

const QStringList Windows = {"splash.bmp", "StatusBg.bmp"};

// Pictures that have another one, which takes their place under the mouse, when lit or when filled.
const QString Changing =
    "button_go button_pau button_stop button_Options button_min button_ex button_klappe_open "
    "LEDleft LEDreight progress_bg Anfasser";

// Whether the colour that is cut away has run into this one.
bool Tinted(QRgb colour) {
    return std::min(qRed(colour), qBlue(colour)) - qGreen(colour) > 60;
}

void EachSkin() {
    Rows<QString>({{"Default"}, {"silver 1024"}, {"Night Watch"}});
}

}  // namespace

class TestArtwork : public QObject {
    Q_OBJECT

  private slots:
    void HoverPicturesDiffer_data() { EachSkin(); }
    void HoverPicturesDiffer() {
        const auto [skin] = Row<QString>();
        for (const QString& normal : Changing.split(u' ')) {
            const QString other = normal + (normal == "Anfasser" ? QString("hell") : QString("2"));
            const QImage before = Picture(SkinFile(skin, normal + ".jpg"));
            const QImage after = Picture(SkinFile(skin, other + ".jpg"));
            QVERIFY2(!before.isNull() && before.size() == after.size(), qPrintable(normal));
            int changed = 0;
            for (int y = 0; y < before.height(); ++y)
                for (int x = 0; x < before.width(); ++x) {
                    const QColor a = before.pixelColor(x, y);
                    const QColor b = after.pixelColor(x, y);
                    const int step =
                        std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                                  std::abs(a.blue() - b.blue())});
                    changed += step > 24;
                    QVERIFY2(!Tinted(a.rgb()) && !Tinted(b.rgb()), qPrintable(normal));
                }
            QVERIFY2(changed * 8 > before.width() * before.height(), qPrintable(other));
        }
    }

    void ScanFindsTheOutline_data() { EachSkin(); }
    void ScanFindsTheOutline() {
        const auto [skin] = Row<QString>();
        for (const QString& window : Windows) {
            const QString file = SkinFile(skin, window);
            QCOMPARE(QImageReader(file).imageFormat(), QImage::Format_RGB32);  // 24 bits in it
            const QImage bitmap = Picture(file);
            QCOMPARE(bitmap.pixel(0, 0), CutAway);
            const QImage outline = bitmap.createMaskFromColor(CutAway, Qt::MaskInColor);
            QCOMPARE(BuildRegionFromPicture(bitmap) ^ QRegion(QBitmap::fromImage(outline)),
                     QRegion());
            for (int y = 0; y < bitmap.height(); ++y)
                for (int x = 0; x < bitmap.width(); ++x)
                    if (bitmap.pixel(x, y) != CutAway && Tinted(bitmap.pixel(x, y)))
                        QFAIL(qPrintable(QStringLiteral("magenta fringe at %1, %2").arg(x).arg(y)));
        }
    }

    void ControlsStandFree_data() { EachSkin(); }
    void ControlsStandFree() {
        const auto [skin] = Row<QString>();
        const Layout layout(skin);
        QCOMPARE(Misplaced(layout.MainWindow(), Picture(SkinFile(skin, "splash.bmp"))),
                 QStringList());
        QCOMPARE(Misplaced(layout.StatusWindow(), Picture(SkinFile(skin, "StatusBg.bmp"))),
                 QStringList());
        QVERIFY(layout.Of("pic_klappe", "Splash_Klappe").contains(layout.Preview()));
        for (const char* key :
             {"pic_klappe/Visible", "Beschriftung/Visible", "Beschriftung_Color/ForeColor",
              "Prog_Bar/Caption", "Label_Treiber/ForeColor"})
            (void)layout.Pixels(QLatin1String(key));
        QCOMPARE(layout.Missing, QStringList());
        // Only a skin with a progress bar of its own may set the colour of the status labels.
        QCOMPARE(layout.File.value("Prog_Bar/picture").toString(), QStringLiteral("1"));
        QVERIFY(layout.File.contains("Prog_Bar/TextBefore"));
        QVERIFY(layout.File.contains("Prog_Bar/TextAfter"));
    }

    void PicturesHaveTheirSize_data() {
        const Rows<QString, QSize> row;
        const auto add = [&row](const QString& file, int width, int height) {
            row(qPrintable(file), file, {width, height});
        };
        for (const char* check : {"Hacken0", "Hacken", "Hacken2", "Hacken3"})
            add(QStringLiteral("Skins/Default/%1.jpg").arg(QLatin1String(check)), 18, 18);
        add("Skins/Default/InfoBG.jpg", 400, 260);
        add("Skins/Default/startbg.jpg", 480, 300);
        add("overlay/Overlay.bmp", 200, 80);
        add("Offline/Offline.jpg", 640, 480);
        for (const int size : {16, 22, 24, 32}) {
            add(QStringLiteral("icons/stillpost-%1.png").arg(size), size, size);
            for (const char* state : {"running", "paused", "stopped", "offline"})
                add(QStringLiteral("icons/tray-%1-%2.png").arg(QLatin1String(state)).arg(size),
                    size, size);
        }
    }
    void PicturesHaveTheirSize() {
        const auto [file, size] = Row<QString, QSize>();
        QCOMPARE(QImage(ProgramFile(file)).size(), size);
    }

    void IconHoldsAllSizes() {
        QImageReader icon(ProgramFile("icons/stillpost.ico"));
        QList<int> sizes;
        for (int i = 0; i < icon.imageCount() && icon.jumpToImage(i); ++i)
            sizes << icon.read().width();
        QCOMPARE(sizes, QList<int>({16, 24, 32, 48, 64, 128, 256}));
    }

    void FontSpeaksAllLanguages() {
        const QRawFont font(ProgramFile("fonts/StillpostReadout.ttf"), 15);
        QVERIFY(font.isValid());
        for (char16_t code = 32; code < 127; ++code)
            QVERIFY2(font.supportsCharacter(QChar(code)), qPrintable(QString(QChar(code))));
        for (const QChar letter : QStringLiteral("ÄÖÜäöüßàâæçéèêëîïôœùûüÿÀÂÇÉÈÊËÎÏÔÙÛ«»„“’…–°€"))
            QVERIFY2(font.supportsCharacter(letter), qPrintable(QString(letter)));
    }

    void SoundIsWhole() {
        QFile file(ProgramFile("Click.wav"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray wave = file.readAll();
        const auto number = [&wave](int at) {
            return qFromLittleEndian<quint32>(wave.data() + at);
        };
        QVERIFY(wave.startsWith("RIFF") && wave.size() > 44);
        QCOMPARE(qsizetype(number(4)), wave.size() - 8);
        QCOMPARE(qsizetype(number(40)), wave.size() - 44);
        QVERIFY(std::any_of(wave.begin() + 44, wave.end(), [](char part) { return part > 16; }));
    }
};

QTEST_MAIN(TestArtwork)
#include "test_artwork.moc"
