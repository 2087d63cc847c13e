#include "ui/skin/skin.h"

#include "picture/bitmap/picture_file.h"

#include <QBuffer>

#include <utility>

namespace {

// Larger pictures are no part of a skin, and reading them would hold up the program.
constexpr int mostPixels = 8192;
// A smaller background leaves no room for a window that can be used.
constexpr int leastBackground = 64;

bool FitsSize(const QSize& size, bool background) {
    const int least = background ? leastBackground : 1;
    return size.width() >= least && size.height() >= least && size.width() <= mostPixels &&
           size.height() <= mostPixels;
}

// Skins are made by hand: a name does not always tell what the file is, and a file is not always
// whole.
QImage Decoded(QByteArray bytes, bool background) {
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::ReadOnly)) return {};
    const QImage image = ReadPicture(buffer).Image;
    return FitsSize(image.size(), background) ? image : QImage();
}

}  // namespace

Skin::Skin(Source ownSource, const QString& skinName)
    : source(std::move(ownSource)), name(skinName) {}

Skin::Skin(const SkinFolders& folders, const QString& skinName)
    : Skin(
          [&folders](const QString& skin, const QString& file) { return folders.Read(skin, file); },
          skinName) {}

SkinLayout Skin::Layout() const {
    return SkinLayout(source(name, "Position.ini").value_or(QByteArray()), scale);
}

QImage Skin::Background(const QString& file) {
    return Load(file, true);
}

QPixmap Skin::Picture(const QString& file) {
    return Scaled(Load(file, false));
}

QPixmap Skin::SharedPicture(const QString& file) {
    return Scaled(LoadFrom(SkinFolders::Default, file, false));
}

QPixmap Skin::Scaled(const QImage& picture) const {
    if (scale == 1 || picture.isNull()) return QPixmap::fromImage(picture);
    const QSize size = (QSizeF(picture.size()) * scale).toSize().expandedTo({1, 1});
    return QPixmap::fromImage(
        picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QImage Skin::Load(const QString& file, bool background) {
    QImage image = LoadFrom(name, file, background);
    if (image.isNull() && name != SkinFolders::Default)
        image = LoadFrom(SkinFolders::Default, file, background);
    return image;
}

QImage Skin::LoadFrom(const QString& skin, const QString& file, bool background) {
    const std::optional<QByteArray> bytes = source(skin, file);
    const QString called = file + " (" + skin + ")";
    if (!bytes) {
        Remember(called + " is missing");
        return {};
    }
    const QImage image = Decoded(*bytes, background);
    if (image.isNull()) Remember(called + " is not a usable picture");
    return image;
}

void Skin::Remember(const QString& fault) {
    if (!faults.contains(fault)) faults << fault;
}

QString Skin::Fault() const {
    return faults.join(", ");
}
