#include "net/sftp/sftp_server.h"

#include "base/clock.h"
#include "base/waiting.h"

#include <QFile>

#include <deque>

using namespace Sftp;

namespace {

constexpr int folderSeconds = 15;
constexpr int sendSeconds = 45;
constexpr int renameSeconds = 15;
constexpr int deleteSeconds = 30;
constexpr int modeSeconds = 15;
constexpr int lookSeconds = 15;

// Every server takes blocks of this size; so many of them fill a line of 100 Mbit/s to a server
// that is 80 ms away.
constexpr qint64 blockSize = 32 * 1024;
constexpr std::size_t mostUnderWay = 32;

constexpr quint32 forWriting =
    0x02 | 0x08 | 0x10;  // made where it is not there, emptied where it is
constexpr quint32 forReading = 0x01;
constexpr quint32 noAttributes = 0;
constexpr quint32 onlyMode = 4;
constexpr quint32 fileType = 0170000;  // the part of a mode
constexpr quint32 isFolder = 0040000;

const QByteArray renameOver = "posix-rename@openssh.com";
const QByteArray secondName = "hardlink@openssh.com";

// What a server said, in words that are short and of one line.
QString WordsOf(const Reply& reply) {
    constexpr qsizetype enough = 120;
    if (reply.Is != Kind::Status) return "ok";
    const QString text = QString::fromUtf8(reply.Text.left(enough)).simplified();
    const QString code = QString::number(static_cast<quint32>(reply.Code));
    return text.isEmpty() ? "status " + code : text + " (" + code + ')';
}

ServerFault Meaning(Status code, ServerFault otherwise) {
    switch (code) {
        case Status::NoSuchFile:
            return ServerFault::FileMissing;
        case Status::NoSpace:
        case Status::QuotaExceeded:
            return ServerFault::NoRoom;
        default:
            return otherwise;
    }
}

bool IsFine(const Reply& reply) {
    return reply.Is == Kind::Status && reply.Code == Status::Ok;
}

bool Is(const Reply& reply, Status code) {
    return reply.Is == Kind::Status && reply.Code == code;
}

// otherwise: what a refusal means that says no more.
ServerAnswer Explained(const Reply& reply, ServerFault otherwise) {
    return IsFine(reply) ? ServerAnswer()
                         : ServerAnswer{Meaning(reply.Code, otherwise), WordsOf(reply)};
}

// A file on its way, several blocks at a time. The first refusal ends it.
class Upload {
  public:
    Upload(SftpConversation& ownTalk, QFile& ownFile, const QByteArray& ownHandle)
        : talk(ownTalk), file(ownFile), handle(ownHandle) {}

    // Takes the answers that have come and sends what there is room for.
    void GoOn() {
        while (!underWay.empty() && !refusal && talk.IsAnswered(underWay.front().Id)) {
            const Reply reply = talk.Take(underWay.front().Id);
            if (!IsFine(reply)) refusal = reply;
            confirmed += underWay.front().Size;
            underWay.pop_front();
        }
        while (!refusal && !closing && underWay.size() < mostUnderWay) SendNext();
    }
    [[nodiscard]] bool Over() const { return refusal || (closing && underWay.empty()); }
    [[nodiscard]] qint64 Confirmed() const { return confirmed; }
    [[nodiscard]] const std::optional<Reply>& Refusal() const { return refusal; }
    [[nodiscard]] bool Unreadable() const { return file.error() != QFile::NoError; }

  private:
    struct Block {
        quint32 Id;
        qint64 Size;
    };

    // The next block, or behind the last one the end, which needs no turn of its own.
    void SendNext() {
        const QByteArray block = file.read(blockSize);
        closing = block.isEmpty();
        Request request = talk.New(closing ? Kind::Close : Kind::Write).Text(handle);
        if (!closing) request.LongNumber(static_cast<quint64>(sent)).Text(block);
        sent += block.size();
        underWay.push_back({request.Id(), block.size()});
        talk.Ask(request);
    }

    SftpConversation& talk;
    QFile& file;
    QByteArray handle;
    std::deque<Block> underWay;
    qint64 sent = 0;
    qint64 confirmed = 0;
    bool closing = false;
    std::optional<Reply> refusal;
};

}  // namespace

SftpServer::SftpServer(const Surroundings& surroundings, const SshProgram& program)
    : PictureServer(surroundings),
      connection(
          surroundings.Wait.OwnClock(),
          [this](const SshConnection::Condition& done, int seconds) {
              return Await(done, seconds);
          },
          program) {
    connect(&connection, &SshConnection::Began, this, &SftpServer::Begin);
    connect(&connection, &SshConnection::Output, this, [this](const QByteArray& bytes) {
        if (talk) talk->Receive(bytes);
    });
    connect(&connection, &SshConnection::Called, this, &PictureServer::Sent);
    connect(&connection, &SshConnection::Said, this, &PictureServer::Received);
}

bool SftpServer::IsOpen() const {
    return talk && talk->Greeted() && !talk->Broken() && connection.IsOpen();
}

bool SftpServer::Replaces() const {
    return talk && talk->Offers(renameOver);
}

void SftpServer::Close() {
    connection.Close();
    talk.reset();
}

void SftpServer::Begin() {
    talk = std::make_unique<SftpConversation>(
        [this](const QByteArray& bytes) { connection.Write(bytes); });
    talk->Begin();
}

// Without a conversation it goes nowhere.
Request SftpServer::New(Kind kind) {
    return talk ? talk->New(kind) : Request(kind, 0);
}

ServerAnswer SftpServer::DoOpen() {
    Close();
    folder = Access().Folder;
    const auto answered = [this] { return talk && (talk->Greeted() || talk->Broken()); };
    ServerAnswer answer = connection.Open(Access(), answered);
    if (answer.Fine() && talk->Broken()) answer = {ServerFault::NotThisWay, talk->Nonsense()};
    if (answer.Fine()) answer = EnterFolder();
    if (!answer.Fine()) Close();
    return answer;
}

ServerAnswer SftpServer::EnterFolder() {
    const QString path = folder.isEmpty() ? QString(".") : folder;
    const auto [lost, reply] =
        Ask("stat " + path, New(Kind::Stat).Text(path.toUtf8()), folderSeconds);
    if (!lost.Fine()) return lost;
    if (Is(reply, Status::PermissionDenied)) return {ServerFault::FolderRefused, WordsOf(reply)};
    const bool isThere =
        reply.Is == Kind::Attributes && (reply.Mode.value_or(isFolder) & fileType) == isFolder;
    return isThere ? ServerAnswer() : ServerAnswer{ServerFault::FolderMissing, WordsOf(reply)};
}

ServerAnswer SftpServer::AwaitAnswers(const std::function<bool()>& done, int seconds) {
    const auto there = [&] { return talk && done(); };
    const auto fault = Await(there, seconds, [this] { return !IsOpen(); });
    if (!fault) return {};
    const ServerAnswer lost{*fault, connection.LastLine()};
    // What was given up here is not known to be wrong with the server.
    if (*fault == ServerFault::Cancelled && IsOpen())
        talk->Forget();
    else
        Close();
    return lost;
}

SftpServer::Answered SftpServer::Ask(const QString& words, const Request& request, int seconds) {
    emit Sent(words);
    if (!IsOpen()) return {{ServerFault::ConnectionLost, connection.LastLine()}, {}};
    talk->Ask(request);
    const ServerAnswer lost = AwaitAnswers([&] { return talk->IsAnswered(request.Id()); }, seconds);
    if (!lost.Fine()) return {lost, {}};
    const Reply reply = talk->Take(request.Id());
    emit Received(WordsOf(reply));
    return {{}, reply};
}

// Without a folder a name stands for a file of the one that the login starts in.
QByteArray SftpServer::PathOf(const QString& name) const {
    if (folder.isEmpty()) return name.toUtf8();
    return (folder.endsWith(u'/') ? folder + name : folder + u'/' + name).toUtf8();
}

ServerAnswer SftpServer::DoSend(const QString& localPath, const QString& name) {
    QFile file(localPath);
    if (!file.open(QIODevice::ReadOnly)) return {ServerFault::NoLocalFile, file.errorString()};
    const qint64 start = Wait().OwnClock().Milliseconds();
    const Request open = New(Kind::Open).Text(PathOf(name)).Number(forWriting).Number(noAttributes);
    const auto [lost, reply] = Ask("open " + name, open, sendSeconds);
    if (!lost.Fine()) return lost;
    if (Is(reply, Status::NoSuchFile)) return {ServerFault::FolderMissing, WordsOf(reply)};
    if (reply.Is != Kind::Handle)
        return {Meaning(reply.Code, ServerFault::MayNotStore), WordsOf(reply)};
    const auto passed = static_cast<int>((Wait().OwnClock().Milliseconds() - start) / 1000);
    return SendContent(file, reply.Text, sendSeconds - passed);
}

ServerAnswer SftpServer::SendContent(QFile& file, const QByteArray& handle, int seconds) {
    emit Sent("write " + QString::number(file.size()) + " bytes, close");
    if (!IsOpen()) return {ServerFault::ConnectionLost, connection.LastLine()};
    Upload upload(*talk, file, handle);
    qint64 shown = -1;
    const auto goOn = [&] {
        upload.GoOn();
        if (shown != upload.Confirmed()) {
            shown = upload.Confirmed();
            emit SendProgress(shown, file.size());
        }
        return upload.Over();
    };
    const ServerAnswer lost = AwaitAnswers(goOn, seconds);
    if (lost.Fine() && !upload.Refusal()) {
        emit Received(QStringLiteral("ok"));
        return upload.Unreadable() ? ServerAnswer{ServerFault::NoLocalFile, file.errorString()}
                                   : ServerAnswer();
    }
    if (IsOpen()) {
        talk->Ask(talk->New(Kind::Close).Text(handle));
        talk->Forget();
    }
    if (!lost.Fine()) return lost;
    const QString words = WordsOf(*upload.Refusal());
    emit Received(words);
    // A server that lets a file be made and then does not take what is in it has no room for it.
    const bool forbidden = Is(*upload.Refusal(), Status::PermissionDenied);
    return {forbidden ? ServerFault::MayNotStore : ServerFault::NoRoom, words};
}

SftpServer::Answered SftpServer::NameAnew(const QByteArray& extension, const QString& from,
                                          const QString& to) {
    const bool plain = extension.isEmpty();
    Request request = New(plain ? Kind::Rename : Kind::Extended);
    if (!plain) request.Text(extension);
    request.Text(PathOf(from)).Text(PathOf(to));
    const QString verb = plain ? "rename" : QString::fromLatin1(extension).section(u'@', 0, 0);
    return Ask(verb + u' ' + from + u' ' + to, request, renameSeconds);
}

ServerAnswer SftpServer::DoRename(const QString& from, const QString& to) {
    if (!Replaces()) return RenamePlainly(from, to);
    const auto [lost, reply] = NameAnew(renameOver, from, to);
    return lost.Fine() ? Explained(reply, ServerFault::RenameRefused) : lost;
}

ServerAnswer SftpServer::RenamePlainly(const QString& from, const QString& to) {
    const auto [lost, reply] = NameAnew({}, from, to);
    if (!lost.Fine()) return lost;
    const ServerAnswer answer = Explained(reply, ServerFault::RenameRefused);
    if (answer.Is != ServerFault::RenameRefused) return answer;
    // Most say no more than that it failed.
    const auto [lostNow, there] =
        Ask("stat " + to, New(Kind::Stat).Text(PathOf(to)), renameSeconds);
    if (!lostNow.Fine()) return lostNow;
    const bool isInTheWay = there.Is == Kind::Attributes;
    return {isInTheWay ? ServerFault::ReplaceRefused : ServerFault::RenameRefused, answer.Reply};
}

ServerAnswer SftpServer::DoKeep(const QString& from, const QString& to) {
    if (!talk || !talk->Offers(secondName)) return DoRename(from, to);
    Answered named = NameAnew(secondName, from, to);
    if (!named.Lost.Fine() || IsFine(named.Reply)) return named.Lost;
    if (Is(named.Reply, Status::NoSuchFile)) return Explained(named.Reply, {});
    // A second name replaces nothing; or there are none in this file system.
    const Answered removed = Remove(to, renameSeconds);
    if (!removed.Lost.Fine()) return removed.Lost;
    if (IsFine(removed.Reply)) named = NameAnew(secondName, from, to);
    if (!named.Lost.Fine() || IsFine(named.Reply)) return named.Lost;
    return DoRename(from, to);
}

SftpServer::Answered SftpServer::Remove(const QString& name, int seconds) {
    return Ask("remove " + name, New(Kind::Remove).Text(PathOf(name)), seconds);
}

ServerAnswer SftpServer::DoDelete(const QString& name) {
    const auto [lost, reply] = Remove(name, deleteSeconds);
    return lost.Fine() ? Explained(reply, ServerFault::DeleteRefused) : lost;
}

ServerAnswer SftpServer::DoLook(const QString& name, QByteArray& beginning) {
    const Request open = New(Kind::Open).Text(PathOf(name)).Number(forReading).Number(noAttributes);
    const auto [lost, opened] = Ask("open " + name, open, lookSeconds);
    if (!lost.Fine()) return lost;
    if (opened.Is != Kind::Handle) return Explained(opened, ServerFault::Forbidden);
    const Request read = New(Kind::Read).Text(opened.Text).LongNumber(0).Number(LookedAtBytes);
    const auto [lostThen, content] = Ask("read " + name, read, lookSeconds);
    if (!lostThen.Fine()) return lostThen;
    if (content.Is == Kind::Data) beginning = content.Text;
    return Ask("close", New(Kind::Close).Text(opened.Text), lookSeconds).Lost;
}

std::optional<bool> SftpServer::ChangeMode(const QString& name, const QString& mode) {
    bool isNumber = false;
    const quint32 bits = mode.toUInt(&isNumber, 8);
    if (!isNumber) return false;
    const Request request = New(Kind::Setstat).Text(PathOf(name)).Number(onlyMode).Number(bits);
    const auto [lost, reply] = Ask("chmod " + mode + u' ' + name, request, modeSeconds);
    return lost.Fine() ? std::optional(IsFine(reply)) : std::nullopt;
}
