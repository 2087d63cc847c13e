#include "core/commands/report.h"

#include "base/waiting.h"
#include "core/report/report_parts.h"
#include "core/report/report_text.h"
#include "core/settings/load_settings.h"
#include "texts/texts.h"

#include <QDir>

CommandStatus Report(const CommandSurroundings& around) {
    const Texts words(LanguageIn(SettingsFileIn(around.Folder)).value_or(Texts::Language::English));
    Clock& clock = around.Wait.OwnClock();
    ReportGathering gathering(clock);
    QString text;
    QObject::connect(&gathering, &ReportGathering::Done, &gathering,
                     [&](const QList<ReportSection>& sections) {
                         text = ReportText(words, clock.Now(), sections, QDir::homePath());
                     });
    gathering.Begin(ReportParts({around.System, words, around.Folder}));
    around.Wait.Until([&text] { return !text.isEmpty(); });
    around.Print(text.chopped(text.isEmpty() ? 0 : 1));
    return text.isEmpty() ? CommandStatus::Failed : CommandStatus::Fine;
}
