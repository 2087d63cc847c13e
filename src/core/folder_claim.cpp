#include "core/folder_claim.h"

#include "base/clock.h"
#include "platform/foreground.h"
#include "platform/memory_folder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QThread>

namespace {

constexpr int answerPatience = 3000;  // milliseconds
constexpr int listeningAgain = 10'000;
constexpr int longestQuestion = 1024;
constexpr int writingMilliseconds = 200;  // more than a program needs to write its lock file
const QByteArray showQuestion = "show ";
const QByteArray thereQuestion = "there";
const QByteArray shownAnswer = "shown\n";
const QByteArray hiddenAnswer = "hidden\n";

// Every user's own, and each folder's, whatever way leads there.
QString ServerName(const QString& folder) {
    const QFileInfo info(folder);
    const QString full = info.canonicalFilePath();
    const QString seen = (full.isEmpty() ? info.absoluteFilePath() : full) + QDir::homePath();
    const QByteArray sum = QCryptographicHash::hash(seen.toUtf8(), QCryptographicHash::Sha1);
    return "stillpost-start-" + QString::fromLatin1(sum.toHex().left(16));
}

// A service and a desktop may differ in what they know of the user's place in memory.
QStringList ServerNames(const QString& folder) {
    const QString name = ServerName(folder);
    const QString memory = MemoryFolder();
    return memory.isEmpty() ? QStringList{name} : QStringList{QDir(memory).filePath(name), name};
}

// What desktops hand to the programs that they start.
QByteArray ActivationToken() {
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

}  // namespace

FolderClaim::FolderClaim(const QString& folder)
    : names(ServerNames(folder)), lock(QDir(folder).filePath("stillpost.lock")) {
    // However long it is held.
    lock.setStaleLockTime(0);
    server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server, &QLocalServer::newConnection, this, &FolderClaim::Meet);
}

FolderClaim::~FolderClaim() = default;

bool FolderClaim::Take() {
    if (lock.tryLock(0)) return true;
    if (lock.error() == QLockFile::LockFailedError) return RemoveLeftBehind() && lock.tryLock(0);
    return Talk(thereQuestion) == Answer::None;
}

// By the lock that the system itself holds for a living process: what the file says of its process
// may be another one's by now, or of a computer that has another name today.
bool FolderClaim::RemoveLeftBehind() {
    // A power cut leaves an empty file; but it may only just be written.
    if (Other().Process == 0) QThread::msleep(writingMilliseconds);
    return lock.removeStaleLockFile();
}

FolderClaim::Holder FolderClaim::Other() const {
    Holder holder;
    QString program;
    (void)lock.getLockInfo(&holder.Process, &holder.Computer, &program);
    return holder;
}

void FolderClaim::Listen(Clock& clock, bool ownVisible) {
    visible = ownVisible;
    TakeName();
    // The server gives up without a word when there is no file left for who comes.
    listening = std::make_unique<Timer>(clock, listeningAgain);
    connect(listening.get(), &Timer::Tick, this, [this] {
        if (!server.isListening()) TakeName();
    });
    listening->SetEnabled(true);
}

void FolderClaim::TakeName() {
    for (const QString& name : std::as_const(names)) {
        // Of one that has crashed: nobody else can have it, with the folder in this one's hands.
        QLocalServer::removeServer(name);
        if (server.listen(name)) return;
    }
}

FolderClaim::Answer FolderClaim::Ask() const {
    Foreground::HandTo(Other().Process);
    return Talk(showQuestion + ActivationToken().left(longestQuestion / 2));
}

FolderClaim::Answer FolderClaim::Talk(const QByteArray& question) const {
    for (const QString& name : names) {
        QLocalSocket socket;
        socket.connectToServer(name);
        if (!socket.waitForConnected(answerPatience)) continue;
        socket.write(question + '\n');
        QByteArray answer;
        while (!answer.endsWith('\n') && socket.waitForReadyRead(answerPatience))
            answer += socket.read(longestQuestion);
        if (answer == shownAnswer) return Answer::Shown;
        if (answer == hiddenAnswer) return Answer::Hidden;
    }
    return Answer::None;
}

void FolderClaim::Meet() {
    while (QLocalSocket* const socket = server.nextPendingConnection()) {
        socket->setReadBufferSize(longestQuestion);
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto answer = [this, socket] {
            if (!socket->canReadLine()) return;
            const QByteArray question = socket->readLine().trimmed();
            socket->write(visible ? shownAnswer : hiddenAnswer);
            socket->flush();
            if (question.startsWith(showQuestion.trimmed()))
                emit ShowWanted(question.mid(showQuestion.size()));
        };
        connect(socket, &QLocalSocket::readyRead, this, answer);
        answer();
    }
}
