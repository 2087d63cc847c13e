#include "support/real_server.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

RealServer::RealServer(const QString& script, const QStringList& arguments) {
    process.setProcessChannelMode(QProcess::MergedChannels);
    // A process group of its own, so that its children end with it; and it ends with a test that
    // is killed.
    process.setChildProcessModifier([] {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    static_cast<void>(chmod(qPrintable(folder.path()), 0755));
    QDir().mkpath(Root());
    static_cast<void>(chmod(qPrintable(Root()), 0777));
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    port = probe.serverPort();
    process.setProgram(QStringLiteral(STILLPOST_TEST_SUPPORT "/") + script);
    process.setArguments(QStringList{folder.path(), QString::number(port)} + arguments);
}

bool RealServer::Start() {
    process.start();
    for (int attempt = 0; attempt < 500; ++attempt) {
        if (Answers()) return true;
        if (process.waitForFinished(20) || process.state() == QProcess::NotRunning) break;
    }
    whyNot = QString::fromUtf8(process.readAll());
    return false;
}

void RealServer::Stop() {
    if (process.state() == QProcess::NotRunning) return;
    kill(-static_cast<pid_t>(process.processId()), SIGKILL);
    process.waitForFinished(5000);
    // Its children may hold the port a moment longer; the next one must not be taken for it.
    for (int attempt = 0; attempt < 500 && Answers(); ++attempt) QThread::msleep(10);
}

bool RealServer::Answers() const {
    QTcpSocket probe;
    probe.connectToHost(QHostAddress::LocalHost, port);
    return probe.waitForConnected(1000);
}
