#include "net/publishing/connection_trial.h"

#include "base/status_display.h"
#include "base/whole_file.h"
#include "net/publishing/make_server.h"
#include "net/publishing/server_trial.h"

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

TrialOutcome ConnectionTrial::Run(const ServerAccess& access) {
    if (running) return {{ServerFault::Cancelled, {}}, {}};
    const QScopedValueRollback now(running, true);
    return access.Local ? TryFolder(access.Folder) : TryServer(access);
}

TrialOutcome ConnectionTrial::TryServer(const ServerAccess& access) {
    TrialOutcome outcome = TryOnce(access);
    const ServerFault fault = outcome.Answer.Is;
    if (fault != ServerFault::DataBlocked && fault != ServerFault::PassiveBlocked) return outcome;
    ServerAccess other = access;
    other.Passive = !access.Passive;
    const TrialOutcome second = TryOnce(other);
    if (second.Answer.Fine()) outcome.Offer = TrialOffer::SwitchPassive;
    if (second.Answer.Is == ServerFault::Cancelled) return second;
    return outcome;
}

TrialOutcome ConnectionTrial::TryOnce(const ServerAccess& access) {
    StatusDisplay unseen;  // nobody watches the countdown of a trial
    const auto server = MakeServer(access.Way, {waiting, unseen}, FtpLimits::OfTrial());
    connect(server.get(), &PictureServer::Sent, this,
            [this](const QString& command) { log.LogCommand(command); });
    connect(server.get(), &PictureServer::Received, this,
            [this](const QString& reply) { log.LogReply(reply.trimmed()); });
    server->SetAccess(access);
    ServerTrial trial(waiting, *server);
    connect(&trial, &ServerTrial::StepStarted, this, &ConnectionTrial::StepStarted);
    const QScopedValueRollback now(current, &trial);
    return trial.Run();
}

void ConnectionTrial::Cancel() {
    if (current) current->Stop(ServerFault::Cancelled);
}

TrialOutcome ConnectionTrial::TryFolder(const QString& folder) {
    emit StepStarted(TrialStep::Storing);
    const QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) return {{ServerFault::LocalFolderMissing, {}}, {}};
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
    return {{ServerFault::LocalNotWritable, {}}, removed ? QString() : names.First};
}
