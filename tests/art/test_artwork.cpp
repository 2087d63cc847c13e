#include "support/data_rows.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/window_shape.h"
#include "ui/status/frm_status.h"
#include "ui/status/readout_label.h"
#include "ui/texts/texts.h"
#include "ui/widgets/preview_area.h"
#include "ui/window_fixture.h"

#include <QBitmap>
#include <QFile>
#include <QImageReader>
#include <QRawFont>
#include <QtEndian>

#include <algorithm>

namespace {

// The colour that is cut away around a window.
constexpr QRgb CutAway = 0xFFFF00FF;

// A file of the program folder that the build has laid out, and one of a skin in it.
QString ProgramFile(const QString& name) {
    return QStringLiteral(STILLPOST_PROGRAM "/") + name;
}
QString SkinFile(const QString& skin, const QString& name) {
    return ProgramFile("Skins/" + skin + "/" + name);
}

QImage Picture(const QString& file) {
    return QImage(file).convertToFormat(QImage::Format_RGB32);
}

// The controls of a window that are not wholly on its body, or on another; except those.
QStringList Misplaced(const ShapedWindow& window, const QList<const QWidget*>& except) {
    QStringList wrong;
    QRegion taken;
    for (const QWidget* control :
         window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (control->isHidden() || except.contains(control)) continue;
        const QString name =
            QStringLiteral("%1 %2 at %3, %4")
                .arg(QLatin1String(control->metaObject()->className()), control->objectName())
                .arg(control->x())
                .arg(control->y());
        if (!(QRegion(control->geometry()) - window.Outline()).isEmpty())
            wrong << name + " leaves the body";
        if (taken.intersects(control->geometry())) wrong << name + " is on another";
        taken += control->geometry();
    }
    return wrong;
}

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
        WindowFixture program;
        program.Skins = SkinFolders({STILLPOST_PROGRAM});
        program.Set("Einstellungen", "Skin", skin);
        program.Start();
        const frmSkin& window = *program.Window;
        QCOMPARE(Misplaced(window, {window.pic_klappe, window.lblStatus}), QStringList());
        QVERIFY(window.pic_klappe->isHidden() ||
                window.pic_klappe->geometry().contains(window.preview->geometry()));
        Texts words(Texts::Language::English);
        frmStatus status(*program.Core, program.Skins, words);
        status.Show();
        StatusHub& display = program.Core->Display;
        display.ShowStatus("Send 1234567 Bytes of 1pw.jpg");
        display.ShowOnline(true);
        display.ShowRecording("Rec.");
        display.ShowPictureCount("Pic: 123456");
        display.ShowMegabytes("MB: 12345.67");
        display.ShowTimeOutLabel(45);
        display.ShowTimeOutGauge(45);
        QCOMPARE(Misplaced(status, {}), QStringList());
        for (const ReadoutLabel* label : status.findChildren<ReadoutLabel*>())
            QVERIFY2(!label->Cut(), qPrintable(label->objectName() + ": " + label->text()));
        QCOMPARE(program.Boxes.Shown, QStringList());
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
