#include "net/sftp/ssh_connection.h"

#include "base/clock.h"
#include "net/sftp/host_keys.h"
#include "net/sftp/password_teller.h"
#include "net/sftp/ssh_process.h"
#include "net/sftp/ssh_words.h"

#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <algorithm>
#include <utility>

namespace {

constexpr int loginSeconds = 30;
constexpr qsizetype longestConfiguration = 100'000;

}  // namespace

SshConnection::SshConnection(Clock& ownClock, Wait wait, const SshProgram& ownProgram)
    : clock(ownClock), await(std::move(wait)), given(ownProgram) {}

ServerAnswer SshConnection::Open(const ServerAccess& wanted, const Condition& answered) {
    Close();
    access = wanted;
    program = given.Path.isEmpty() ? SshProgram::OfSystem() : given;
    if (program.Path.isEmpty()) return {ServerFault::NoSsh, {}};
    if (!SshCommand::CanName(access.Server)) return {ServerFault::HostNotFound, {}};
    patienceEnds = clock.Milliseconds() + loginSeconds * 1000LL;
    if (HostKeys::IsFingerprint(access.Trusted))
        HostKeys::KeepOnly(access.Trusted, access.ProgramFolder);
    ServerAnswer answer = Connect(answered);
    if (answer.Is == ServerFault::HostKeyUnknown) answer = MeetNewKey(answered);
    if (!answer.Fine()) Close();
    return answer;
}

bool SshConnection::IsOpen() const {
    return process && !process->Ended();
}

void SshConnection::Close() {
    if (!process) return;
    SshProcess* const left = std::exchange(process, nullptr);
    left->disconnect(this);
    left->Leave();
}

void SshConnection::Write(const QByteArray& bytes) {
    if (IsOpen()) process->Write(bytes);
}

QString SshConnection::LastLine() const {
    return process && !process->Lines().isEmpty() ? process->Lines().last() : QString();
}

int SshConnection::SecondsLeft() const {
    const qint64 left = (patienceEnds - clock.Milliseconds()) / 1000;
    return static_cast<int>(std::max<qint64>(left, 1));
}

void SshConnection::Start(SshProcess& run, SshCommand::Purpose purpose, PasswordTeller& teller) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C");  // its words are read
    if (!teller.Prepare(environment)) emit Said("No local socket for the password");
    const QStringList arguments = SshCommand::Arguments(access, purpose);
    connect(&run, &SshProcess::Line, this, &SshConnection::Said);
    emit Called(program.Path + u' ' + arguments.join(u' '));
    run.Start(arguments, environment);
}

ServerAnswer SshConnection::Connect(const Condition& answered) {
    Close();
    PasswordTeller::Secret secret{access.Password, {}, !access.KeyFile.isEmpty()};
    if (!access.Password.isEmpty()) {
        const ServerAnswer answer = LearnLogin(secret.Login);
        if (!answer.Fine()) return answer;
    }
    PasswordTeller teller(secret);
    process = new SshProcess(clock, program, access.ProgramFolder);
    process->setParent(this);
    connect(process, &SshProcess::Output, this, &SshConnection::Output);
    Start(*process, SshCommand::Purpose::Session, teller);
    emit Began();
    const auto decided = [&] { return answered() || !IsOpen(); };
    if (const auto fault = await(decided, SecondsLeft())) return {*fault, LastLine()};
    // It may have said its last word and gone; or somebody has closed.
    if (answered()) return {};
    return process ? WhyNot(*process, teller) : ServerAnswer{ServerFault::Cancelled, {}};
}

ServerAnswer SshConnection::WhyNot(const SshProcess& run, const PasswordTeller& teller) const {
    if (run.Missing()) return {ServerFault::NoSsh, {}};
    ServerAnswer answer = SshWords::Judge(run.Lines(), !access.KeyFile.isEmpty());
    if (answer.Is == ServerFault::LoginRefused && teller.AskedForPassphrase())
        answer.Is = ServerFault::KeyNeedsPassphrase;
    return answer;
}

// OpenSSH refuses a server that it does not know, and shows nothing of its key. So another run
// writes the key into a scratch file, and stops there: it offers no way to log in. What has been
// compared is what the next run insists on.
ServerAnswer SshConnection::MeetNewKey(const Condition& answered) {
    const QTemporaryDir scratch;
    if (!scratch.isValid()) return {ServerFault::HostKeyNotKept, scratch.path()};
    QByteArray output;
    const ServerAnswer end = RunToEnd(SshCommand::Purpose::LearnKey, scratch.path(), output);
    QFile file(scratch.filePath(HostKeys::FileName));
    constexpr qint64 enough = 10'000;
    const QByteArray lines = file.open(QIODevice::ReadOnly) ? file.read(enough) : QByteArray();
    const QString fingerprint = HostKeys::FingerprintOf(lines);
    if (fingerprint.isEmpty()) return end;
    if (!HostKeys::IsFingerprint(access.Trusted)) return {ServerFault::HostKeyUnknown, fingerprint};
    if (!HostKeys::IsSame(fingerprint, access.Trusted))
        return {ServerFault::HostKeyChanged, fingerprint};
    if (!HostKeys::Write(lines, access.ProgramFolder))
        return {ServerFault::HostKeyNotKept, HostKeys::PathIn(access.ProgramFolder)};
    return Connect(answered);
}

// The user's configuration may give the server another name, and others on the way may ask, too.
ServerAnswer SshConnection::LearnLogin(SshLogin& login) {
    QByteArray output;
    const ServerAnswer end =
        RunToEnd(SshCommand::Purpose::ShowConfig, access.ProgramFolder, output);
    login = SshLogin::Of(QString::fromUtf8(output));
    return output.isEmpty() ? end : ServerAnswer();
}

ServerAnswer SshConnection::RunToEnd(SshCommand::Purpose purpose, const QString& folder,
                                     QByteArray& output) {
    PasswordTeller nothing({});
    SshProcess run(clock, program, folder);
    connect(&run, &SshProcess::Output, this, [&output](const QByteArray& bytes) {
        output = (output + bytes).left(longestConfiguration);
    });
    Start(run, purpose, nothing);
    run.EndInput();
    if (const auto fault = await([&] { return run.Ended(); }, SecondsLeft())) return {*fault, {}};
    return WhyNot(run, nothing);
}
