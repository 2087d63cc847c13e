#include "ui/settings/autostart.h"

#include "base/message_boxes.h"
#include "core/program.h"
#include "core/program_folder.h"
#include "platform/autostart_entry.h"
#include "platform/platform.h"

#include <QCoreApplication>

void ApplyAutostart(const SettingsWindow::Surroundings& around, bool on) {
    AutostartEntry& entry = *around.Core.System().Autostart;
    const QStringList arguments = ProgramFolder::AutostartArguments(
        around.Core.ProgramFolder(), ProgramFolder::Places::OfThisProcess({}));
    const bool done =
        on ? entry.Write(QCoreApplication::applicationFilePath(), arguments) : entry.Remove();
    if (!done)
        around.Boxes.Show("Stillpost",
                          around.Words.Get("frmFTP", "AutostartFails").arg(entry.Place()),
                          MessageBoxes::Icon::Critical);
}
