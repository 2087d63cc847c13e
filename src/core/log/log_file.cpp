#include "core/log/log_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr qint64 mostBytes = 1'000'000;
constexpr std::array endings{"", ".1", ".2"};  // the newest first

QString PathIn(const QString& folder, const char* ending) {
    return QDir(folder).filePath(QStringLiteral("stillpost.log") + QString::fromLatin1(ending));
}

// The end of a file, from the beginning of a line on.
QByteArray EndOf(const QString& path, qint64 bytes) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return {};
    const qint64 from = std::max<qint64>(0, file.size() - bytes);
    file.seek(from);
    const QByteArray end = file.read(bytes);
    return from == 0 ? end : end.mid(end.indexOf('\n') + 1);
}

}  // namespace

LogFile::LogFile(const QString& folder) : path(PathIn(folder, "")) {}

void LogFile::Write(const QString& line) {
    const QByteArray missing =
        lost == 0 ? QByteArray()
                  : "(" + QByteArray::number(lost) + " lines could not be written)\n";
    if (Append(missing + line.toUtf8() + '\n'))
        lost = 0;
    else if (lost < std::numeric_limits<int>::max())
        ++lost;
}

bool LogFile::Append(const QByteArray& bytes) const {
    if (!MakeRoom(bytes.size())) return false;
    QFile file(path);
    const bool fresh = !file.exists();
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered)) return false;
    // What servers and cameras say is nobody else's business.
    if (fresh) file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const qint64 before = file.size();
    if (file.write(bytes) == bytes.size()) return true;
    // Half a line on a full disk.
    file.resize(before);
    return false;
}

// Whatever keeps the full one from getting another name also keeps it from growing.
bool LogFile::MakeRoom(qint64 bytes) const {
    const QFileInfo info(path);
    if (!info.exists()) return true;
    if (!info.isFile()) return false;
    if (info.size() + bytes <= mostBytes) return true;
    const QString folder = info.path();
    for (std::size_t i = endings.size() - 1; i > 0; --i) {
        const QString older = PathIn(folder, endings.at(i));
        QFile::remove(older);
        QFile::rename(PathIn(folder, endings.at(i - 1)), older);
    }
    return !QFile::exists(path);
}

QStringList LogFile::Last(const QString& folder, int lines) {
    constexpr qint64 longest = 600;  // bytes of a line, and more than most
    QByteArray text;
    for (const char* ending : endings) {
        if (text.count('\n') >= lines) break;
        text.prepend(EndOf(PathIn(folder, ending), lines * longest));
    }
    QStringList all = QString::fromUtf8(text).split(u'\n', Qt::SkipEmptyParts);
    return all.mid(std::max<qsizetype>(0, all.size() - lines));
}
