#include "picture/archive/archive_names.h"

#include "film/archive_time.h"
#include "fuzzer.h"

const Fuzzer archiveNames("archive_names", [](const QByteArray& bytes) {
    const QString name = QString::fromUtf8(bytes);
    if (const QDate day = DayOfFolder(name); day.isValid()) MUST(DayFolder(day) == name);
    if (IsArchiveName(name)) {
        const bool day = name.size() > 10 && name[10] == u'/';
        MUST(!name.mid(day ? 11 : 0).contains(u'/') && !name.contains(u'\\'));
    }
    for (const char* const language : {"de_DE", "en_US", "C"}) {
        ArchiveTimes times{QLocale(QString::fromLatin1(language))};
        const auto time = times.Of(name);
        if (!time) continue;
        const QString sorted = IsoArchiveName(LocalTimeOf(*time));
        MUST(IsArchiveName(sorted) && times.Of(sorted) == time);
    }
});
