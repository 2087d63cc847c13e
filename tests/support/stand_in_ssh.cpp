#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QtEndian>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>

#if __has_include(<io.h>)  // pipes are of text there unless one says otherwise
#include <fcntl.h>
#include <io.h>
#endif

// A program that is called like OpenSSH and serves a folder of this computer in version 3 of the
// file transfer protocol, with the manners and faults that its first argument names:
//
//     stand_in_ssh MANNERS FOLDER [WHAT OPENSSH IS CALLED WITH]
namespace {

constexpr int killed = 9;  // as by the system when memory runs out

struct Request {
    quint8 Kind = 0;
    quint32 Id = 0;
    QByteArray Rest = {};

    quint32 Number() {
        const auto number = qFromBigEndian<quint32>(Rest.constData());
        Rest.remove(0, 4);
        return number;
    }
    QByteArray Text() {
        const auto length = static_cast<qsizetype>(Number());
        const QByteArray text = Rest.first(length);
        Rest.remove(0, length);
        return text;
    }
};

QByteArray Word(quint32 number) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray Text(const QByteArray& text) {
    return Word(static_cast<quint32>(text.size())) + text;
}

void Print(const QByteArray& bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void Complain(const QByteArray& line) {
    std::fprintf(stderr, "%s\n", line.constData());
}

void Send(char kind, const QByteArray& content) {
    Print(Word(static_cast<quint32>(content.size() + 1)) + kind + content);
}

bool ReadExactly(char* to, std::size_t count) {
    return std::fread(to, 1, count, stdin) == count;
}

bool Read(Request& request) {
    char length[4];
    if (!ReadExactly(length, sizeof length)) return false;
    QByteArray packet(static_cast<qsizetype>(qFromBigEndian<quint32>(length)), Qt::Uninitialized);
    if (!ReadExactly(packet.data(), static_cast<std::size_t>(packet.size()))) return false;
    request = {static_cast<quint8>(packet.front()), 0, packet.mid(1)};
    request.Id = request.Number();
    return true;
}

enum Status : quint32 { Ok = 0, NoSuchFile = 2, PermissionDenied = 3, Failure = 4 };

class Server {
  public:
    Server(const QString& ownManners, const QString& folder) : manners(ownManners), root(folder) {}

    // Until the client says no more, or as the manners have it.
    int Serve() {
        Request request;
        while (Read(request)) {
            if (manners == "silent") continue;
            if (manners == "killed" || (manners == "killed later" && request.Kind == 6)) {
                std::raise(killed);
                std::_Exit(killed);  // Windows has no such signal
            }
            if (!Answer(request)) return 255;
        }
        return 0;
    }

  private:
    bool Answer(Request& request) {
        switch (request.Kind) {
            case 1:
                Greet();
                break;
            case 3:
                Open(request);
                break;
            case 4:
                if (manners != "stuck") SendStatus(request, Ok);
                file.close();
                break;
            case 6:
                return Write(request);
            case 9:
                SendStatus(request, Ok);
                break;
            case 13:
                SendStatus(request, QFile::remove(Path(request)) ? Ok : NoSuchFile);
                break;
            case 17:
                Stat(request);
                break;
            case 18:
                return Rename(request, false);
            case 200:
                return Extended(request);
            default:
                SendStatus(request, Failure);
        }
        return true;
    }

    QString Path(Request& request) const {
        return QDir(root).filePath(QString::fromUtf8(request.Text()));
    }
    static void SendStatus(const Request& request, Status status) {
        Send(101, Word(request.Id) + Word(status) + Text("told") + Text({}));
    }
    void Greet() const {
        if (manners == "shouts")
            Print("Welcome to the machine\n");
        else if (manners == "giant")
            Print(Word(0xffff'fff0) + "\x02");
        else if (manners == "ancient")
            Send(2, Word(2));
        else
            Send(2, Word(3) + (manners == "old" ? QByteArray()
                                                : Text("posix-rename@openssh.com") + Text("1") +
                                                      Text("hardlink@openssh.com") + Text("1")));
    }
    void Open(Request& request) {
        file.setFileName(Path(request));
        if (manners == "closed")
            SendStatus(request, PermissionDenied);
        else if (!file.open(QIODevice::WriteOnly))
            SendStatus(request, NoSuchFile);
        else
            Send(102, Word(request.Id) + Text("handle"));
    }
    bool Write(Request& request) {
        if (manners == "stuck") return true;
        if (manners == "cut") {
            Print(Word(30) + "\x65");
            return false;
        }
        request.Text();
        file.seek(request.Number() * qint64{0x1'0000'0000} + request.Number());
        SendStatus(request, manners == "full" || file.write(request.Text()) < 0 ? Failure : Ok);
        return true;
    }
    void Stat(Request& request) const {
        const QString path = Path(request);
        if (!QFile::exists(path))
            SendStatus(request, NoSuchFile);
        else
            Send(105, Word(request.Id) + Word(4) + Word(QDir(path).exists() ? 0040755 : 0100644));
    }
    bool Rename(Request& request, bool over) const {
        if (manners == "gone") return false;
        const QString from = Path(request);
        const QString to = Path(request);
        if (over) QFile::remove(to);
        const Status otherwise = QFile::exists(from) ? Failure : NoSuchFile;
        SendStatus(request, QFile::rename(from, to) ? Ok : otherwise);
        return true;
    }
    bool Extended(Request& request) const {
        if (request.Text().startsWith("posix-rename")) return Rename(request, true);
        const QString from = Path(request);
        SendStatus(request, QFile::copy(from, Path(request)) ? Ok : Failure);
        return true;
    }

    QString manners;
    QString root;
    QFile file;
};

// By the program that OpenSSH would start, with the same question.
QByteArray AskForPassword() {
    QProcess helper;
    helper.start(qEnvironmentVariable("SSH_ASKPASS"), {"cam@127.0.0.1's password: "});
    helper.waitForFinished();
    return helper.readAllStandardOutput().trimmed();
}

bool IsLeftLying(const QByteArray& password) {
    const QString everything = QCoreApplication::arguments().join(u' ') +
                               QProcessEnvironment::systemEnvironment().toStringList().join(u' ');
    return everything.contains(QString::fromUtf8(password));
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
#if __has_include(<io.h>)
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains("-G")) {
        Print("user cam\nhostname 127.0.0.1\n");
        return 0;
    }
    if (arguments.at(1) == "asks") {
        const QByteArray password = AskForPassword();
        if (password !=
            "s\xc3\xa9"
            "cret \"x") {
            Complain("cam@127.0.0.1: Permission denied (password).");
            return 255;
        }
        if (IsLeftLying(password)) return 254;
    }
    return Server(arguments.at(1), arguments.at(2)).Serve();
}
