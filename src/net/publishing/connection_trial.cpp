#include "net/publishing/connection_trial.h"

#include "base/whole_file.h"
#include "net/publishing/ftp_trial.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QScopedValueRollback>

TrialNames TrialNames::Make() {
    // Named as pictures are, because some servers take nothing else.
    const QString name = QStringLiteral("stillpost-test-%1")
                             .arg(QRandomGenerator::global()->generate(), 8, 16, QChar(u'0'));
    return {name + QStringLiteral("a.jpg"), name + QStringLiteral("b.jpg")};
}

ConnectionTrial::ConnectionTrial(Waiting& ownWaiting, StatusDisplay& ownLog)
    : waiting(ownWaiting), log(ownLog) {}

ConnectionTrial::~ConnectionTrial() = default;

TrialOutcome ConnectionTrial::Run(const TrialAccess& access) {
    if (running) return {TrialResult::Cancelled, {}, {}};
    const QScopedValueRollback now(running, true);
    if (access.Local) return TryFolder(access.Folder);
    FtpTrial trial(waiting, log, access);
    connect(&trial, &FtpTrial::StepStarted, this, &ConnectionTrial::StepStarted);
    const QScopedValueRollback current(server, &trial);
    return trial.Run();
}

void ConnectionTrial::Cancel() {
    if (server) server->Stop(TrialResult::Cancelled);
}

TrialOutcome ConnectionTrial::TryFolder(const QString& folder) {
    emit StepStarted(TrialStep::Storing);
    const QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) return {TrialResult::LocalFolderMissing, {}, {}};
    const TrialNames names = TrialNames::Make();
    const auto store = [&] {
        return WholeFile::Replace(dir.filePath(names.First),
                                  [](QFile& file) { return file.write("test\n") > 0; });
    };
    // Twice, because the second picture replaces the first.
    const bool stored = store() && store();
    const QString left = dir.filePath(names.First);
    const bool removed = QFile::remove(left) || !QFile::exists(left);
    if (stored && removed) return {};
    return {TrialResult::LocalNotWritable, {}, removed ? QString() : names.First};
}
