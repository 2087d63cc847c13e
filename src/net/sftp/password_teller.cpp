#include "net/sftp/password_teller.h"

#include "platform/program_start.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocalSocket>
#include <QProcessEnvironment>
#include <QRandomGenerator>

#include <array>
#include <cstdio>

namespace {

const QString addressVariable = QStringLiteral("STILLPOST_ASKPASS");
constexpr char end = '\0';  // of a question and of an answer
constexpr qint64 longestText = 4096;
// One for each way in which a server takes passwords; more would only lock the user out.
constexpr int mostPasswords = 2;
constexpr int helperPatience = 10'000;

QString RandomName() {
    std::array<quint32, 4> numbers{};
    QRandomGenerator::system()->fillRange(numbers.data(), std::ssize(numbers));
    QString name = QStringLiteral("stillpost");
    for (const quint32 number : numbers) name += u'-' + QString::number(number, 36);
    return name;
}

// What came up to the end mark; none: not all is there.
std::optional<QString> TakeText(QLocalSocket& socket) {
    const QByteArray seen = socket.peek(longestText);
    const qsizetype length = seen.indexOf(end);
    return length < 0 ? std::nullopt : std::optional(QString::fromUtf8(seen.first(length)));
}

}  // namespace

PasswordTeller::PasswordTeller(const Secret& ownSecret) : secret(ownSecret) {
    server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server, &QLocalServer::newConnection, this, &PasswordTeller::OnConnection);
}

bool PasswordTeller::Prepare(QProcessEnvironment& environment) {
    if (!server.listen(RandomName())) return false;
    environment.insert(addressVariable, server.fullServerName());
    environment.insert("SSH_ASKPASS",
                       QDir::toNativeSeparators(QCoreApplication::applicationFilePath()));
    environment.insert("SSH_ASKPASS_REQUIRE", "force");
    // Older ones ask a program only where there seems to be a screen.
    if (!environment.contains("DISPLAY")) environment.insert("DISPLAY", "none");
    return true;
}

void PasswordTeller::OnConnection() {
    while (QLocalSocket* const socket = server.nextPendingConnection()) {
        socket->setReadBufferSize(longestText);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto answer = [this, socket] {
            const std::optional<QString> question = TakeText(*socket);
            if (!question) return;
            socket->disconnect(this);
            socket->write(Answer(*question).toUtf8() + end);
        };
        connect(socket, &QLocalSocket::readyRead, this, answer);
        answer();
    }
}

QString PasswordTeller::Answer(const QString& question) {
    switch (Understand(question, secret.Login)) {
        case Question::Password:
            return passwordsTold++ < mostPasswords ? secret.Password : QString();
        case Question::Passphrase:
            askedForPassphrase = true;
            return secret.OpensKey ? secret.Password : QString();
        case Question::Foreign:
            break;
    }
    return {};
}

PasswordTeller::Question PasswordTeller::Understand(const QString& words, const SshLogin& login) {
    const auto begins = [&](const QString& text) {
        return words.startsWith(text, Qt::CaseInsensitive);
    };
    if (begins("Enter passphrase for ")) return Question::Passphrase;
    // In the server's own words behind its name; older ones leave the name out.
    if (begins(login.ShortName + "'s password") || begins(u'(' + login.Name + ')'))
        return Question::Password;
    const bool nameless = !words.contains(u'@') && words.contains("password", Qt::CaseInsensitive);
    return login.Direct && nameless ? Question::Password : Question::Foreign;
}

bool PasswordHelper::Wanted() {
    return qEnvironmentVariableIsSet(qPrintable(addressVariable));
}

int PasswordHelper::Run(int argc, char** argv) {
    const QString question = ProgramStart::Arguments(argc, argv).join(u' ');
    const QCoreApplication application(argc, argv);
    QLocalSocket socket;
    socket.connectToServer(qEnvironmentVariable(qPrintable(addressVariable)));
    if (!socket.waitForConnected(helperPatience)) return 1;
    socket.write(question.toUtf8().left(longestText - 1) + end);
    std::optional<QString> answer;
    while (!(answer = TakeText(socket)) && socket.waitForReadyRead(helperPatience)) {
    }
    if (!answer || answer->isEmpty()) return 1;
    std::printf("%s\n", answer->toUtf8().constData());
    return std::fflush(stdout) == 0 ? 0 : 1;
}
