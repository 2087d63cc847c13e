#include "net/sftp/ssh_process.h"

#include "platform/child_process.h"

#include <QFileInfo>
#include <QProcessEnvironment>

namespace {

constexpr int goodByeMilliseconds = 2000;
constexpr int killMilliseconds = 1000;
constexpr qsizetype longestLine = 500;
constexpr qsizetype mostLines = 60;
constexpr int mostLinesTold = 1000;

}  // namespace

SshProcess::SshProcess(Clock& clock, const SshProgram& ownProgram, const QString& folder)
    : program(ownProgram), patience(clock, goodByeMilliseconds) {
    process.setWorkingDirectory(folder);
    ChildProcess::KeepOffTerminal(process);
    connect(&process, &QProcess::readyReadStandardOutput, this, &SshProcess::ReadOutput);
    connect(&process, &QProcess::readyReadStandardError, this, &SshProcess::ReadErrors);
    connect(&process, &QProcess::finished, this, &SshProcess::End);
    connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        const bool unstarted = error == QProcess::FailedToStart;
        // Without memory for it, or ended by the system, it has no words of its own.
        if (unstarted || error == QProcess::Crashed) AddLine(process.errorString().toUtf8());
        if (!unstarted) return;
        missing = !QFileInfo(program.Path).isExecutable();
        End();
    });
    connect(&patience, &Timer::Tick, &process, &QProcess::kill);
}

SshProcess::~SshProcess() {
    disconnect(&process, nullptr, this, nullptr);
    if (process.state() == QProcess::NotRunning) return;
    process.kill();
    process.waitForFinished(killMilliseconds);
}

void SshProcess::Start(const QStringList& arguments, const QProcessEnvironment& environment) {
    process.setProcessEnvironment(environment);
    process.start(program.Path, program.First + arguments);
}

void SshProcess::Leave() {
    leaving = true;
    if (ended) {
        deleteLater();
        return;
    }
    EndInput();
    patience.SetEnabled(true);
}

void SshProcess::ReadOutput() {
    const QByteArray bytes = process.readAllStandardOutput();
    if (!bytes.isEmpty() && !leaving) emit Output(bytes);
}

void SshProcess::ReadErrors() {
    begun += process.readAllStandardError();
    for (qsizetype end = begun.indexOf('\n'); end >= 0; end = begun.indexOf('\n')) {
        AddLine(begun.first(end));
        begun.remove(0, end + 1);
    }
    begun.truncate(longestLine);
}

void SshProcess::AddLine(const QByteArray& line) {
    const QString text = QString::fromUtf8(line.left(longestLine)).trimmed();
    if (text.isEmpty()) return;
    lines << text;
    if (lines.size() > mostLines) lines.removeFirst();
    // Nobody reads more than that of one that cannot stop.
    if (++linesTold <= mostLinesTold) emit Line(text);
}

void SshProcess::End() {
    ReadOutput();
    ReadErrors();
    AddLine(begun);
    ended = true;
    emit Over();
    if (leaving) deleteLater();
}
