#include "skin_pictures.h"

#include "drawing.h"
#include "encoders.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QSettings>

#include <stdexcept>
#include <vector>

namespace {

constexpr int TwipsPerPixel = 15;

struct ControlPicture {
    const char* Name;     // of the file and of the cell in the sheet
    const char* Section;  // of the control in Position.ini
};

const std::vector<ControlPicture> MainPictures = {
    {"button_go", "btnStart"},
    {"button_go2", "btnStart"},
    {"button_pau", "btnPause"},
    {"button_pau2", "btnPause"},
    {"button_stop", "btnStop"},
    {"button_stop2", "btnStop"},
    {"button_Options", "btnOptions"},
    {"button_Options2", "btnOptions"},
    {"button_min", "btnMin"},
    {"button_min2", "btnMin"},
    {"button_ex", "btnExit"},
    {"button_ex2", "btnExit"},
    {"LEDleft", "LEDLeft"},
    {"LEDleft2", "LEDLeft"},
    {"LEDreight", "LEDReigth"},
    {"LEDreight2", "LEDReigth"},
    {"Splash_Klappe", "pic_klappe"},
    {"button_klappe_open", "pic_klappe_open"},
    {"button_klappe_open2", "pic_klappe_open"},
};

const std::vector<ControlPicture> StatusPictures = {
    {"Slider1BG", "Slider1"},
    {"Slider2BG", "Slider2"},
    {"progress_bg", "Prog_Bar"},
    {"progress_bg2", "Prog_Bar"},
};

// The controls of one skin on their way from the sheet to the files.
class ControlSheet {
  public:
    ControlSheet(const QString& source, const QString& targetFolder)
        : drawing(source + "/controls.svg"),
          sheet(drawing.Render()),
          layout(source + "/Position.ini", QSettings::IniFormat),
          target(targetFolder) {}

    [[nodiscard]] QPoint Place(const QString& section) const {
        return {Pixels(section + "/Left"), Pixels(section + "/Top")};
    }

    // Puts the cell `name` on a piece of `body` and returns that piece.
    [[nodiscard]] QImage Compose(const QString& name, const QImage& body, QPoint place) const {
        const QRect cell = drawing.Cell(name);
        QImage picture = body.copy(QRect(place, cell.size()));
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (qAlpha(picture.pixel(x, y)) == 0)
                    throw std::runtime_error(name.toStdString() + " hangs over the window's edge");
        QPainter(&picture).drawImage(0, 0, sheet.copy(cell));
        return picture;
    }

    void Write(const QString& name, const QImage& body, QPoint place) const {
        WriteFile(target + "/" + name + ".jpg", Encoders::Jpeg(Compose(name, body, place)));
    }

    void WriteAll(const std::vector<ControlPicture>& pictures, const QImage& body) const {
        for (const ControlPicture& picture : pictures)
            Write(QLatin1String(picture.Name), body, Place(QLatin1String(picture.Section)));
    }

    // The handle slides along the track, so what stands behind its picture is the track's middle.
    void WriteHandles(QImage body) const {
        const QPoint track = Place("Slider1");
        const QImage trackPicture = Compose("Slider1BG", body, track);
        QPainter(&body).drawImage(track, trackPicture);
        const int middle = track.x() + trackPicture.width() / 2;
        for (const QString& name : {QStringLiteral("Anfasser"), QStringLiteral("Anfasserhell")})
            Write(name, body, {middle - drawing.Cell(name).width() / 2, Pixels("Anfasser1/Top")});
    }

  private:
    [[nodiscard]] int Pixels(const QString& key) const {
        return layout.value(key).toInt() / TwipsPerPixel;
    }

    Drawing drawing;
    QImage sheet;
    QSettings layout;
    QString target;
};

}  // namespace

void WriteFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void RenderSkin(const QString& source, const QString& target) {
    const QImage main = RenderBody(Drawing(source + "/splash.svg"));
    const QImage status = RenderBody(Drawing(source + "/StatusBg.svg"));
    WriteFile(target + "/splash.bmp", Encoders::Bitmap(main));
    WriteFile(target + "/StatusBg.bmp", Encoders::Bitmap(status));
    const ControlSheet controls(source, target);
    controls.WriteAll(MainPictures, main);
    controls.WriteAll(StatusPictures, status);
    controls.WriteHandles(status);
    QFile layout(source + "/Position.ini");
    if (!layout.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + layout.fileName().toStdString());
    WriteFile(target + "/Position.ini", layout.readAll());
}
