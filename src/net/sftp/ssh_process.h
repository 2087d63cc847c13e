#pragma once

#include "base/clock.h"
#include "net/sftp/ssh_command.h"

#include <QObject>
#include <QProcess>
#include <QStringList>

class QProcessEnvironment;

// One run of OpenSSH.
class SshProcess : public QObject {
    Q_OBJECT

  public:
    // folder: that it runs in, where relative names of files begin.
    SshProcess(Clock& clock, const SshProgram& program, const QString& folder);
    ~SshProcess() override;

    void Start(const QStringList& arguments, const QProcessEnvironment& environment);
    void Write(const QByteArray& bytes) { process.write(bytes); }
    // Nothing more is said to it.
    void EndInput() { process.closeWriteChannel(); }

    [[nodiscard]] bool Ended() const { return ended; }
    // There is no such program.
    [[nodiscard]] bool Missing() const { return missing; }
    // What it said on standard error, the last lines.
    [[nodiscard]] const QStringList& Lines() const { return lines; }

    // Lets it say good-bye and go, this object with it; by force where that takes too long.
    void Leave();

  signals:
    void Output(const QByteArray& bytes);
    void Line(const QString& text);
    void Over();

  private:
    void ReadOutput();
    void ReadErrors();
    void AddLine(const QByteArray& line);
    void End();

    QProcess process;
    SshProgram program;
    Timer patience;
    QByteArray begun;  // a line whose end has not come yet
    QStringList lines;
    int linesTold = 0;
    bool ended = false;
    bool missing = false;
    bool leaving = false;
};
