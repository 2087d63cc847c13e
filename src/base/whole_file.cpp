#include "base/whole_file.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include <filesystem>
#include <system_error>

namespace WholeFile {

namespace {

// Beside the target, because a rename does not cross file systems; hidden from listings of
// pictures by its ending.
QString TemporaryName(const QString& path) {
    return path + ".part";
}

// The form in which the system takes a path of any length. Windows gives up at 260 characters
// unless it is told not to look at the path.
std::filesystem::path SystemPath(const QString& path) {
    const QString native = QDir::toNativeSeparators(QDir::cleanPath(QDir().absoluteFilePath(path)));
    if (native.size() > 1 && native[1] == u':') return ("\\\\?\\" + native).toStdU16String();
    return native.toStdU16String();
}

// Where a file that somebody reads cannot be replaced at that moment, as on Windows, it can be a
// moment later: a web server reads a picture in no time.
bool Rename(const QString& from, const QString& to) {
    constexpr int tries = 25;
    constexpr unsigned long pause = 10;  // milliseconds
    const std::filesystem::path source = SystemPath(from);
    const std::filesystem::path target = SystemPath(to);
    std::error_code failed;
    for (int i = 0; i < tries; ++i) {
        if (i > 0) QThread::msleep(pause);
        std::filesystem::rename(source, target, failed);
        if (failed != std::errc::permission_denied) break;
    }
    return !failed;
}

bool Open(QFile& file, const std::function<bool(const QFile&)>& reusable) {
    if (reusable &&
        file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        if (reusable(file)) return true;
        file.close();
        // Whoever still reads it keeps it.
        QFile::remove(file.fileName());
    }
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
}

}  // namespace

bool Replace(const QString& path, const std::function<bool(QFile&)>& write) {
    return Replace(path, write, {});
}

bool Replace(const QString& path, const std::function<bool(QFile&)>& write,
             const std::function<bool(const QFile&)>& reusable) {
    const QString temporary = TemporaryName(path);
    QFile file(temporary);
    if (!Open(file, reusable)) return false;
    const bool filled = write(file);
    // Some file systems tell only here that the disk is full.
    file.close();
    const bool written = filled && file.error() == QFileDevice::NoError;
    if (written && Rename(temporary, path)) return true;
    QFile::remove(temporary);
    return false;
}

bool SetAside(const QString& path) {
    std::error_code failed;
    std::filesystem::rename(SystemPath(path), SystemPath(TemporaryName(path)), failed);
    if (!failed) return true;
    QFile::remove(path);
    Forget(path);
    return false;
}

void Forget(const QString& path) {
    QFile::remove(TemporaryName(path));
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
