#include "core/main_state.h"

#include "core/settings/work_folder.h"

#include <QDir>
#include <QFileInfo>

void MainState::FindWorkFolder() {
    if (!QDir(Values.WorkPath).exists()) Values.WorkPath = LoadSettings(SettingsFile).WorkPath;
}

bool MainState::LeaveMemory() {
    const QString programFolder = QFileInfo(SettingsFile).absolutePath();
    if (Values.WorkPath != WorkFolder::InMemory(programFolder)) return false;
    WorkFolder::Remove(Values.WorkPath);
    Values.WorkPath = WorkFolder::OnDisk(programFolder);
    return QDir().mkpath(Values.WorkPath);
}
