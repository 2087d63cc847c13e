#pragma once

#include <QImage>
#include <QMap>
#include <QSettings>

// The colour that is cut away around a window.
constexpr QRgb CutAway = 0xFFFF00FF;

// A file of the program folder that the build has laid out, and one of a skin in it.
[[nodiscard]] QString ProgramFile(const QString& name);
[[nodiscard]] QString SkinFile(const QString& skin, const QString& name);

// The picture in the file; a null image when there is none.
[[nodiscard]] QImage Picture(const QString& file);

// The places in pixels that a skin's layout gives to the controls of its two windows. Labels have
// the size of their longest usual text, pictures their own.
class Layout {
  public:
    explicit Layout(const QString& skinName)
        : File(SkinFile(skinName, "Position.ini"), QSettings::IniFormat), skin(skinName) {}

    const QSettings File;
    mutable QStringList Missing;  // keys that were asked for and have no number

    [[nodiscard]] QRect At(const QString& section, QSize size) const {
        return {QPoint(Pixels(section + "/Left"), Pixels(section + "/Top")), size};
    }
    [[nodiscard]] QRect Of(const QString& section, const QString& picture) const {
        return At(section, Picture(SkinFile(skin, picture + ".jpg")).size());
    }
    [[nodiscard]] int Pixels(const QString& key) const {
        bool isNumber = false;
        const int twips = File.value(key).toInt(&isNumber);
        if (!isNumber) Missing << key;
        return twips / 15;
    }
    [[nodiscard]] bool HasFlap() const { return File.value("pic_klappe/Visible") == "1"; }
    [[nodiscard]] QRect Preview() const {
        return At("ezVidCap1", HasFlap() ? QSize(316, 235) : QSize(320, 240));
    }

    [[nodiscard]] QMap<QString, QRect> MainWindow() const;
    [[nodiscard]] QMap<QString, QRect> StatusWindow() const;

  private:
    // The track with the handle at its ends and the caption above.
    [[nodiscard]] QRect Slider(const QString& number) const {
        const QRect track = Of("Slider" + number, "Slider" + number + "BG");
        const QSize handle = Picture(SkinFile(skin, "Anfasser.jpg")).size();
        const QRect path(track.left() - handle.width() / 2, Pixels("Anfasser" + number + "/Top"),
                         track.width() + handle.width(), handle.height());
        return track.united(path).adjusted(0, -20, 0, 0);
    }

    QString skin;
};

// What is wrong with the places in one window; empty when every control stands on the body and
// none on another.
[[nodiscard]] QStringList Misplaced(const QMap<QString, QRect>& places, const QImage& bitmap);
