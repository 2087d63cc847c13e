#pragma once

#include "ui/skin/skin_folders.h"
#include "ui/skin/skin_layout.h"

#include <QImage>
#include <QPixmap>

#include <functional>
#include <optional>

// A skin while the windows are dressed in it: gives out its layout and its pictures. A picture that
// is missing or broken comes from the skin "Default" instead, and is remembered as a fault.
class Skin {
  public:
    // Gives what is in a file of a skin, as SkinFolders::Read does.
    using Source =
        std::function<std::optional<QByteArray>(const QString& skin, const QString& file)>;

    // skinName: one that the source has, or "Default".
    Skin(Source ownSource, const QString& skinName);
    // From folders, which outlive the skin.
    Skin(const SkinFolders& folders, const QString& skinName);

    [[nodiscard]] QString Name() const { return name; }
    [[nodiscard]] SkinLayout Layout() const;

    // Lengths of the layout and pictures of controls come in this scale from now on.
    void SetScale(double wanted) { scale = wanted; }

    // A window's background; null when not even "Default" has a usable one.
    [[nodiscard]] QImage Background(const QString& file);
    // A control's picture; null in the same case.
    [[nodiscard]] QPixmap Picture(const QString& file);
    // A picture that all skins take from "Default".
    [[nodiscard]] QPixmap SharedPicture(const QString& file);

    // What was wrong so far, as a sentence with the names of the files; empty when nothing was.
    [[nodiscard]] QString Fault() const;

  private:
    [[nodiscard]] QImage Load(const QString& file, bool background);
    [[nodiscard]] QImage LoadFrom(const QString& skin, const QString& file, bool background);
    [[nodiscard]] QPixmap Scaled(const QImage& picture) const;
    void Remember(const QString& fault);

    Source source;
    QString name;
    QStringList faults;
    double scale = 1;
};
