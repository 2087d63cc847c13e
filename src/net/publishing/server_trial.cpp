#include "net/publishing/server_trial.h"

#include "base/waiting.h"

#include <algorithm>
#include <utility>

namespace {

constexpr int deadlineMilliseconds = 60'000;
constexpr int graceMilliseconds = 3000;

// Who the server is stands in question, which the operator may answer.
bool IsAboutIdentity(ServerFault fault) {
    using enum ServerAnswer::Fault;
    const auto faults = {CertificateUnknown, CertificateExpired, CertificateWrongName,
                         CertificateChanged, HostKeyUnknown,     HostKeyChanged};
    return std::find(faults.begin(), faults.end(), fault) != faults.end();
}

}  // namespace

ServerTrial::ServerTrial(Waiting& ownWaiting, PictureServer& ownServer)
    : waiting(ownWaiting),
      server(ownServer),
      deadline(ownWaiting.OwnClock(), deadlineMilliseconds),
      grace(ownWaiting.OwnClock(), graceMilliseconds) {
    connect(&deadline, &Timer::Tick, this, [this] { Stop(ServerFault::TooSlow); });
    connect(&grace, &Timer::Tick, this, [this] { server.Cancel(); });
}

TrialOutcome ServerTrial::Run() {
    deadline.SetEnabled(true);
    TrialOutcome outcome{Try(), {}};
    outcome.Offer = OfferAfter(outcome.Answer);
    deadline.SetEnabled(false);
    CleanUp();
    server.Close();
    if (stopped) outcome.Answer = {*stopped, {}};
    if (waiting.Closing()) outcome.Answer = {ServerFault::Cancelled, {}};
    outcome.LeftBehind = leftBehind;
    return outcome;
}

void ServerTrial::Stop(ServerFault result) {
    if (!stopped) stopped = result;
    server.Cancel();
}

TrialOffer ServerTrial::OfferAfter(const ServerAnswer& answer) {
    if (stopped || waiting.Closing()) return TrialOffer::None;
    if (answer.Fine() && server.OffersEncryption()) return TrialOffer::Encrypt;
    const bool fingerprint = IsAboutIdentity(answer.Is) && !answer.Reply.isEmpty();
    return fingerprint ? TrialOffer::Accept : TrialOffer::None;
}

ServerAnswer ServerTrial::Try() {
    if (!scratch.open() || scratch.write("Stillpost\n") < 1 || !scratch.flush())
        return {ServerFault::NoLocalFile, {}};
    emit StepStarted(TrialStep::Connecting);
    ServerAnswer answer = server.Open();
    // The second file takes the place of the first, as the second picture does.
    for (const bool over : {false, true}) {
        if (answer.Fine() && !stopped) answer = PutOneInPlace(over);
    }
    return answer.Fine() && !stopped ? Delete() : answer;
}

ServerAnswer ServerTrial::PutOneInPlace(bool over) {
    if (server.SendsWhole()) return Send(names.Second);
    ServerAnswer answer = Send(names.First);
    if (answer.Fine() && !stopped && over && DeletesFirst()) answer = Delete();
    return answer.Fine() && !stopped ? Rename(over) : answer;
}

bool ServerTrial::DeletesFirst() const {
    return server.Access().DeleteFirst && !server.Replaces();
}

ServerAnswer ServerTrial::Send(const QString& name) {
    emit StepStarted(TrialStep::Storing);
    onServer << name;
    const ServerAnswer answer = server.SendFile(scratch.fileName(), name);
    if (answer.Fine()) stored = name;
    return answer;
}

ServerAnswer ServerTrial::Rename(bool over) {
    emit StepStarted(TrialStep::Renaming);
    ServerAnswer answer = server.RenameFile(names.First, names.Second);
    if (answer.Fine()) {
        onServer = {names.Second};
        stored = names.Second;
        return answer;
    }
    onServer << names.Second;  // who knows how far it came
    // That both files are there, or only one of them, is known for sure.
    using enum ServerAnswer::Fault;
    const bool refused =
        answer.Is == RenameRefused || answer.Is == ReplaceRefused || answer.Is == FileMissing;
    if (refused) answer.Is = over && !DeletesFirst() ? ReplaceRefused : RenameRefused;
    return answer;
}

ServerAnswer ServerTrial::Delete() {
    emit StepStarted(TrialStep::Deleting);
    ServerAnswer answer = server.DeleteFile(names.Second);
    if (answer.Fine()) onServer.removeAll(names.Second);
    // Some say so of a file that may not be deleted.
    if (answer.Is == ServerFault::FileMissing) answer.Is = ServerFault::DeleteRefused;
    return answer;
}

void ServerTrial::CleanUp() {
    onServer.removeDuplicates();
    if (onServer.isEmpty()) return;
    grace.SetEnabled(true);
    // What was stopped has cost the connection.
    if (!server.IsOpen() && !waiting.Closing()) (void)server.Open();
    for (const QString& name : std::as_const(onServer)) {
        if (!Gone(name) && leftBehind.isEmpty()) leftBehind = name;
    }
    grace.SetEnabled(false);
}

// The same answer tells of a file that is not there and of one that may not be deleted.
bool ServerTrial::Gone(const QString& name) {
    if (!server.IsOpen()) return false;
    const ServerFault fault = server.DeleteFile(name).Is;
    return fault == ServerFault::None || (fault == ServerFault::FileMissing && name != stored);
}
