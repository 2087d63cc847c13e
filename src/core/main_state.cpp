#include "core/main_state.h"

#include "core/public_names.h"
#include "core/settings/work_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

void MainState::KeepPublished(const QString& file, qint64 now) {
    const QString sent = WorkFile(PublicNames::Sent);
    Published = {file, now};
    if (file != WorkFile(PublicNames::Sending)) return;
    QFile::remove(sent);
    if (!QFile::rename(file, sent)) QFile::remove(file);
    Published->File = sent;
}

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
