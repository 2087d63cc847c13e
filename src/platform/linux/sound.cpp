#include "platform/linux/sound.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

void LinuxSound::Play(const QString& file) {
    if (!QFile::exists(file)) return;
    for (const QString& player : QStringList{"pw-play", "paplay", "aplay"}) {
        const QString program = QStandardPaths::findExecutable(player);
        if (program.isEmpty()) continue;
        QProcess process;
        process.setProgram(program);
        process.setArguments({file});
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.startDetached();
        return;
    }
}

void LinuxSound::SetVolume(quint32 /*volume*/) {}
