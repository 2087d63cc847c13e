#include "core/report/report_text.h"

#include "core/report/report_secrets.h"
#include "core/version.h"
#include "texts/texts.h"

QString ReportText(const Texts& words, const QDateTime& when, const QList<ReportSection>& sections,
                   const QString& home) {
    const auto word = [&words](const QString& key) { return words.Get("Report", key); };
    const QDateTime time = when.toOffsetFromUtc(when.offsetFromUtc());
    QStringList lines{word("Title") + " - Stillpost " + ProgramVersion(),
                      time.toString(Qt::ISODate)};
    for (const ReportSection& section : sections) {
        lines << QString() << section.Name;
        for (const QString& line : section.Lines)
            lines << "  " + ReportSecrets::WithoutNames(line, home);
        for (const QString& name : section.LeftOut)
            lines << "  (" + word("LeftOut").arg(ReportSecrets::WithoutNames(name, home)) + ")";
        if (section.Lines.isEmpty() && section.LeftOut.isEmpty()) lines << "  " + word("Nothing");
    }
    return lines.join(u'\n') + u'\n';
}
