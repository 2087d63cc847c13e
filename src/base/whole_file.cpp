#include "base/whole_file.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace WholeFile {

namespace {

// Beside the target, because a rename does not cross file systems; hidden from listings of
// pictures by its ending.
QString TemporaryName(const QString& path) {
    return path + ".part";
}

}  // namespace

bool Replace(const QString& path, const std::function<bool(QFile&)>& write) {
    const QString temporary = TemporaryName(path);
    QFile file(temporary);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return false;
    const bool filled = write(file);
    // Some file systems tell only here that the disk is full.
    file.close();
    const bool written = filled && file.error() == QFileDevice::NoError;
    std::error_code failed;
    if (written) std::filesystem::rename(temporary.toStdU16String(), path.toStdU16String(), failed);
    if (written && !failed) return true;
    QFile::remove(temporary);
    return false;
}

bool Copy(const QString& from, const QString& to) {
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return false;
    return Replace(to, [&source](QFile& target) {
        constexpr qint64 portion = 256 * 1024;
        qint64 copied = 0;
        for (;;) {
            const QByteArray bytes = source.read(portion);
            if (bytes.isEmpty()) break;
            if (target.write(bytes) != bytes.size()) return false;
            copied += bytes.size();
        }
        return source.error() == QFileDevice::NoError && copied == source.size();
    });
}

}  // namespace WholeFile
