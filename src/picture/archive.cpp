#include "picture/archive.h"

#include "base/whole_file.h"

#include <QRegularExpression>

QString ArchiveName(const QDateTime& time, const QLocale& locale) {
    // Short dates differ in the year: systems write four digits where the locale data has two.
    static const QRegularExpression twoDigits(QStringLiteral("(?<!y)yy(?!y)"));
    QString format = locale.dateFormat(QLocale::ShortFormat);
    format.replace(twoDigits, QStringLiteral("yyyy"));
    return locale.toString(time.date(), format) + u'-' +
           time.time().toString(QStringLiteral("HHmmss")) + QStringLiteral(".jpg");
}

void ArchivePicture(const QString& picture, const QString& folder, const QDateTime& time,
                    const QLocale& locale) {
    // Without a folder the copies would pile up wherever the program was started.
    if (folder.isEmpty()) return;
    (void)WholeFile::Copy(picture, folder + ArchiveName(time, locale));
}
