#include "net/sftp/host_keys.h"

#include "base/whole_file.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

namespace {

const QString method = QStringLiteral("SHA256:");

QString Bare(const QString& fingerprint) {
    QString text = fingerprint.trimmed();
    while (text.endsWith(u'=')) text.chop(1);
    return text;
}

QByteArray KeyOf(const QByteArray& line) {
    const QByteArrayList words = line.simplified().split(' ');
    return words.size() < 3 ? QByteArray() : QByteArray::fromBase64(words.at(2));
}

}  // namespace

QString HostKeys::PathIn(const QString& folder) {
    return QDir(folder).filePath(FileName);
}

QString HostKeys::FingerprintOf(const QByteArray& lines) {
    const QByteArray key = KeyOf(lines.trimmed().split('\n').first());
    if (key.isEmpty()) return {};
    const QByteArray digest = QCryptographicHash::hash(key, QCryptographicHash::Sha256);
    return method + QString::fromLatin1(digest.toBase64(QByteArray::OmitTrailingEquals));
}

bool HostKeys::IsFingerprint(const QString& text) {
    return text.trimmed().startsWith(method);
}

bool HostKeys::IsSame(const QString& fingerprint, const QString& other) {
    return Bare(fingerprint) == Bare(other);
}

void HostKeys::KeepOnly(const QString& fingerprint, const QString& folder) {
    QFile file(PathIn(folder));
    if (!file.open(QIODevice::ReadOnly)) return;
    constexpr qint64 enough = 100'000;
    const QByteArray lines = file.read(enough);
    file.close();
    QByteArray kept;
    for (const QByteArray& line : lines.split('\n'))
        if (IsSame(FingerprintOf(line), fingerprint)) kept += line.trimmed() + '\n';
    if (kept != lines && !Write(kept, folder)) QFile::remove(PathIn(folder));
}

bool HostKeys::Write(const QByteArray& lines, const QString& folder) {
    return WholeFile::Replace(PathIn(folder),
                              [&](QFile& file) { return file.write(lines) == lines.size(); });
}
