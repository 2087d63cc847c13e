#include "ui/skin/skin.h"

#include <QImageReader>

namespace {

// Larger files and pictures are no part of a skin, and reading them would hold up the program.
constexpr qint64 mostBytes = 64 * 1024 * 1024;
constexpr int mostPixels = 8192;
// A smaller background leaves no room for a window that can be used.
constexpr int leastBackground = 64;

bool FitsSize(const QSize& size, bool background) {
    const int least = background ? leastBackground : 1;
    return size.width() >= least && size.height() >= least && size.width() <= mostPixels &&
           size.height() <= mostPixels;
}

QImage ReadPicture(const QString& path, bool background) {
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > mostBytes) return {};
    QImageReader reader(path);
    // Skins are made by hand: a name does not always tell what the file is.
    reader.setDecideFormatFromContent(true);
    if (reader.size().isValid() && !FitsSize(reader.size(), background)) return {};
    const QImage image = reader.read();
    return FitsSize(image.size(), background) ? image : QImage();
}

}  // namespace

Skin::Skin(const SkinFolders& skinFolders, const QString& skinName)
    : folders(skinFolders), name(skinName) {}

SkinLayout Skin::Layout() const {
    return SkinLayout(folders.Find(name, "Position.ini"), scale);
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
    const QString path = folders.Find(skin, file);
    const QString called = file + " (" + skin + ")";
    if (path.isEmpty()) {
        Remember(called + " is missing");
        return {};
    }
    const QImage image = ReadPicture(path, background);
    if (image.isNull()) Remember(called + " is not a usable picture");
    return image;
}

void Skin::Remember(const QString& fault) {
    if (!faults.contains(fault)) faults << fault;
}

QString Skin::Fault() const {
    return faults.join(", ");
}
