#include "picture/archive/archive.h"

#include "base/whole_file.h"
#include "picture/overlay/date_time_form.h"

QString ArchiveName(const QDateTime& time, const QLocale& locale) {
    return ShortDate(time.date(), locale) + u'-' + time.time().toString(QStringLiteral("HHmmss")) +
           QStringLiteral(".jpg");
}

void ArchivePicture(const QString& picture, const QString& folder, const QDateTime& time,
                    const QLocale& locale) {
    // Without a folder the copies would pile up wherever the program was started.
    if (folder.isEmpty()) return;
    (void)WholeFile::Copy(picture, folder + ArchiveName(time, locale));
}
