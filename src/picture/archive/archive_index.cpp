#include "picture/archive/archive_index.h"

#include "picture/archive/archive_names.h"

#include <charconv>

namespace {

struct Line {
    qint64 Bytes = -1;  // below 0: none
    QByteArrayView Path;
};

Line Parsed(QByteArrayView text) {
    qint64 bytes = -1;
    const char* const end = text.data() + text.size();
    const auto [behind, fault] = std::from_chars(text.data(), end, bytes);
    if (fault != std::errc() || bytes < 0 || behind == end || *behind != ' ') return {};
    const QByteArrayView path(behind + 1, end);
    const bool named = path.isValidUtf8() && IsArchiveName(QString::fromUtf8(path));
    return named ? Line{bytes, path} : Line{};
}

}  // namespace

QByteArray IndexLine(const ArchiveEntry& entry) {
    return QByteArray::number(entry.Bytes) + ' ' + entry.Path.toUtf8() + '\n';
}

void ForEachIndexLine(const QByteArray& text,
                      const std::function<void(qint64 bytes, QByteArrayView path)>& each) {
    Line before;
    for (qsizetype at = 0;;) {
        const qsizetype end = text.indexOf('\n', at);
        if (end < 0) break;
        const Line line = Parsed(QByteArrayView(text).sliced(at, end - at));
        at = end + 1;
        if (line.Bytes < 0) continue;
        if (before.Bytes >= 0 && before.Path != line.Path) each(before.Bytes, before.Path);
        before = line;
    }
    if (before.Bytes >= 0) each(before.Bytes, before.Path);
}

QList<ArchiveEntry> IndexEntries(const QByteArray& text) {
    QList<ArchiveEntry> entries;
    ForEachIndexLine(text, [&](qint64 bytes, QByteArrayView path) {
        entries << ArchiveEntry{bytes, QString::fromUtf8(path)};
    });
    return entries;
}
