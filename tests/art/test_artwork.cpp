#include "art/skin_layout.h"

#include <QFile>
#include <QImageReader>
#include <QRawFont>
#include <QSettings>
#include <QTest>
#include <QtEndian>

#include <algorithm>

namespace {

const QStringList Skins = {"Default", "silver 1024", "Night Watch"};
const QStringList Windows = {"splash.bmp", "StatusBg.bmp"};

// A picture and the one that takes its place under the mouse, when lit or when filled.
const QList<QPair<QString, QString>> PicturePairs = {
    {"button_go", "button_go2"},
    {"button_pau", "button_pau2"},
    {"button_stop", "button_stop2"},
    {"button_Options", "button_Options2"},
    {"button_min", "button_min2"},
    {"button_ex", "button_ex2"},
    {"button_klappe_open", "button_klappe_open2"},
    {"LEDleft", "LEDleft2"},
    {"LEDreight", "LEDreight2"},
    {"Anfasser", "Anfasserhell"},
    {"progress_bg", "progress_bg2"},
};

// Whether the colour that is cut away has run into this one.
bool Tinted(QRgb colour) {
    return std::min(qRed(colour), qBlue(colour)) - qGreen(colour) > 60;
}

void AddSkinRows() {
    QTest::addColumn<QString>("skin");
    for (const QString& skin : Skins) QTest::addRow("%s", qPrintable(skin)) << skin;
}

// Which pixels of a row belong to the window, as its shaping finds them: exactly within 150 pixels
// of either side, every hundredth pixel between.
QList<bool> ScannedRow(const QImage& bitmap, int y) {
    const int width = bitmap.width();
    QList<bool> row(width, false);
    const auto cutAway = [&](int x) { return bitmap.pixel(x, y) == bitmap.pixel(0, 0); };
    const auto step = [&](int x) { return x < 151 || x >= width - 150 ? 1 : 100; };
    for (int x = 0; x < width;) {
        while (x < width && cutAway(x)) x += step(x);
        const int start = x;
        while (x < width && !cutAway(x)) x += step(x);
        for (int inside = start; inside < std::min(x, width); ++inside) row[inside] = true;
    }
    return row;
}

}  // namespace

class TestArtwork : public QObject {
    Q_OBJECT

  private slots:
    void HoverPicturesDiffer_data() { AddSkinRows(); }
    void HoverPicturesDiffer() {
        QFETCH(QString, skin);
        for (const auto& [normal, other] : PicturePairs) {
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

    void ScanFindsTheOutline_data() {
        QTest::addColumn<QString>("file");
        for (const QString& skin : Skins)
            for (const QString& window : Windows)
                QTest::addRow("%s of %s", qPrintable(window), qPrintable(skin))
                    << SkinFile(skin, window);
    }
    void ScanFindsTheOutline() {
        QFETCH(QString, file);
        QCOMPARE(QImageReader(file).imageFormat(), QImage::Format_RGB32);  // 24 bits in the file
        const QImage bitmap = Picture(file);
        QCOMPARE(bitmap.pixel(0, 0), CutAway);
        for (int y = 0; y < bitmap.height(); ++y) {
            const QList<bool> scanned = ScannedRow(bitmap, y);
            for (int x = 0; x < bitmap.width(); ++x) {
                const QRgb colour = bitmap.pixel(x, y);
                if (scanned[x] != (colour != CutAway))
                    QFAIL(qPrintable(QStringLiteral("the scan errs at %1, %2").arg(x).arg(y)));
                if (colour != CutAway && Tinted(colour))
                    QFAIL(qPrintable(QStringLiteral("magenta fringe at %1, %2").arg(x).arg(y)));
            }
        }
    }

    void LayoutIsComplete_data() { AddSkinRows(); }
    void LayoutIsComplete() {
        QFETCH(QString, skin);
        const QSettings layout(SkinFile(skin, "Position.ini"), QSettings::IniFormat);
        QStringList keys = {"pic_klappe/Visible",
                            "Anfasser1/Top",
                            "Anfasser2/Top",
                            "Beschriftung/Visible",
                            "Beschriftung_Color/ForeColor",
                            "Prog_Bar/Caption",
                            "Label_Treiber/Width",
                            "Label_Treiber/ForeColor"};
        const QStringList sections = {
            "ezVidCap1",        "Label_Driver",    "LEDReigth",    "LEDLeft",       "btnMin",
            "btnExit",          "btnStart",        "btnPause",     "btnStop",       "btnOptions",
            "pic_klappe",       "pic_klappe_open", "Slider1",      "Slider2",       "Label_Treiber",
            "Label_Rec",        "Label_Online",    "Label_Status", "Label_Pic",     "Label_MB",
            "Label_Aufloesung", "Label_JPG",       "Label_Mouse",  "Label_Overlay", "Label_Time",
            "Label_Upload",     "Label_TimeOut",   "Prog_Bar"};
        for (const QString& section : sections)
            for (const char* key : {"/Top", "/Left"}) keys << section + QLatin1String(key);
        for (const QString& key : keys) {
            bool isNumber = false;
            layout.value(key).toInt(&isNumber);
            QVERIFY2(isNumber, qPrintable(key));
        }
        // Only a skin with a progress bar of its own may set the colour of the status labels.
        QCOMPARE(layout.value("Prog_Bar/picture").toString(), QStringLiteral("1"));
        QVERIFY(layout.contains("Prog_Bar/TextBefore") && layout.contains("Prog_Bar/TextAfter"));
    }

    void ControlsStandFree_data() { AddSkinRows(); }
    void ControlsStandFree() {
        QFETCH(QString, skin);
        const Layout layout(skin);
        QCOMPARE(Misplaced(layout.MainWindow(), Picture(SkinFile(skin, "splash.bmp"))),
                 QStringList());
        QCOMPARE(Misplaced(layout.StatusWindow(), Picture(SkinFile(skin, "StatusBg.bmp"))),
                 QStringList());
        QVERIFY(layout.Of("pic_klappe", "Splash_Klappe").contains(layout.Preview()));
    }

    void PicturesHaveTheirSize_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QSize>("size");
        const auto add = [](const QString& file, int width, int height) {
            QTest::addRow("%s", qPrintable(file)) << file << QSize(width, height);
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
        QFETCH(QString, file);
        QFETCH(QSize, size);
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
