#include "picture/archive/archive_index.h"

#include "fuzzer.h"
#include "picture/archive/archive_names.h"

const Fuzzer archiveIndex("archive_index", [](const QByteArray& bytes) {
    const QList<ArchiveEntry> entries = IndexEntries(bytes);
    QByteArray written;
    for (const ArchiveEntry& each : entries) {
        MUST(each.Bytes >= 0 && IsArchiveName(each.Path));
        const QStringList steps = each.Path.split(u'/');
        MUST(steps.size() == 1 || (steps.size() == 2 && DayOfFolder(steps[0]).isValid()));
        MUST(bytes.contains(each.Path.toUtf8()));
        written += IndexLine(each);
    }
    MUST(IndexEntries(written) == entries);
    // A power cut leaves half a line: nothing but the last entry is lost by it.
    const QList<ArchiveEntry> cut = IndexEntries(written.chopped(written.isEmpty() ? 0 : 1));
    MUST(cut == entries.first(cut.size()) && cut.size() + 1 >= entries.size());
});
