#include "core/settings/work_folder.h"

#include "base/paths.h"
#include "platform/memory_folder.h"

#include <QCryptographicHash>
#include <QDir>

#include <filesystem>

namespace WorkFolder {

namespace {

constexpr quint64 leastRoom = 32'000'000;  // bytes: the files of a picture of five million pixels

bool HasRoom(const QString& folder) {
    std::error_code failed;
    const auto space = std::filesystem::space(folder.toStdU16String(), failed);
    return !failed && space.available >= leastRoom;
}

}  // namespace

QString InMemory(const QString& programFolder) {
    const QString place = MemoryFolder();
    if (place.isEmpty()) return {};
    const QByteArray path = QDir(programFolder).absolutePath().toUtf8();
    const QByteArray sum = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    const QString name = "stillpost-" + QString::fromLatin1(sum.left(12));
    return Paths::WithSeparator(QDir(place).filePath(name));
}

QString OnDisk(const QString& programFolder) {
    return Paths::WithSeparator(QDir(programFolder).filePath("work"));
}

QString Usual(const QString& programFolder) {
    const QString memory = InMemory(programFolder);
    const bool usable = !memory.isEmpty() && (QDir(memory).exists() || HasRoom(MemoryFolder()));
    return usable ? memory : OnDisk(programFolder);
}

void Remove(const QString& folder) {
    for (const char* name :
         {"1pw.jpg", "1pw.jpg.part", "0pw.jpg", "1pw.bmp", "1pw.bmp.part", "cam.bmp"})
        QFile::remove(QDir(folder).filePath(QString::fromLatin1(name)));
    (void)QDir().rmdir(folder);
}

}  // namespace WorkFolder
