// Measures what an upload costs on a connection that is kept, for each way to a server.
//
//     upload_bench FILE RUNS [WAY ...]
//
// Starts a server of the system on a free port of 127.0.0.1 and publishes FILE that many times
// (send, rename) as the program does, without rights, which the others do not set either; beside
// it the same with one process of curl, or of OpenSSH's sftp, over one connection. Start and login
// are left out of both. WAY: ftp, passive, ftps, sftp, http, https, s3; all of them when none is
// named. Prints for each the median, over some rounds in turns, of the processor time of one upload
// (children included), and its turns, as lines "name value unit". Ways whose server or peer is not
// installed are left out.

#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/upload_transaction.h"
#include "net/certificates.h"
#include "net/connectivity.h"
#include "net/page_control.h"
#include "net/publishing/make_server.h"
#include "platform/system_clock.h"
#include "support/answering_boxes.h"
#include "support/file_bytes.h"
#include "support/real_ftp_server.h"
#include "support/test_certificates.h"
#include "support/test_platform.h"
#include "texts/texts.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QProcess>
#include <QSslCertificate>

#include <sys/resource.h>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr int rounds = 5;
const QString user = QStringLiteral("cam");
const QString password = QStringLiteral("secret");

// Of this process, or of its children that have ended.
double Milliseconds(int whose) {
    rusage usage{};
    getrusage(whose, &usage);
    const auto part = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return part(usage.ru_utime) + part(usage.ru_stime);
}

// Of this process and the OpenSSH that it has started.
double OwnMilliseconds() {
    double sum = Milliseconds(RUSAGE_SELF);
    const qint64 self = QCoreApplication::applicationPid();
    const QString children = QString("/proc/%1/task/%1/children").arg(self);
    for (const QByteArray& child : ReadBytes(children).simplified().split(' ')) {
        const QString folder = "/proc/" + QString::fromLatin1(child) + '/';
        if (ReadBytes(folder + "comm").trimmed() == "ssh")
            sum += ReadBytes(folder + "schedstat").split(' ').first().toDouble() / 1e6;
    }
    return sum;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

bool Succeeds(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitCode() == 0;
}

QString OutputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromLatin1(process.readAll());
}

// A server, the settings that lead to it, and how a peer does the same.
class Way {
  public:
    explicit Way(const QString& ownName) : name(ownName) {
        using Kind = RealFtpServer::Kind;
        if (Is("http") || Is("https"))
            server = std::make_unique<RealServer>("apache-server", WebArguments());
        else if (Is("s3"))
            server = std::make_unique<RealServer>("s3-server", QStringList{user, password, "eu-1"});
        else
            server = std::make_unique<RealFtpServer>(Is("sftp") ? Kind::Sshd : Kind::Vsftpd, user,
                                                     password,
                                                     Is("ftps") ? QString("TLSv1.2") : QString());
        if (Is("https"))
            (void)WriteBytes(server->Own("server.pem"),
                             QByteArray(TestCertificates::Key) + TestCertificates::Good);
    }

    [[nodiscard]] bool Start() { return server->Start(); }
    [[nodiscard]] QString WhyNot() const { return server->WhyNot(); }

    void Set(Settings& values) const {
        values.Protocol = Is("passive") ? QString("ftp") : name;
        values.Passive = Is("passive") || Is("ftps");
        values.Server = Is("s3") ? Address("http") : QString("127.0.0.1");
        values.Port = server->Port();
        values.User = user;
        values.PW = password;
        values.Bucket = "cam";
        values.Region = "eu-1";
        values.FileMode.clear();
        if (Is("ftps") || Is("https"))
            values.Trusted =
                Certificates::Fingerprint(QSslCertificate(QByteArray(TestCertificates::Good)));
        if (!Is("sftp")) return;
        values.KeyFile = server->Own("key");
        values.Trusted =
            OutputOf("ssh-keygen", {"-lf", server->Own("hostkey.pub")}).section(u' ', 1, 1);
    }

    // One process that does so many uploads. False: it failed.
    [[nodiscard]] bool RunPeer(const QString& file, int uploads) const {
        if (!Is("sftp")) return Succeeds("curl", CurlArguments(file, uploads));
        const QByteArray one = "put " + file.toUtf8() + " 1pw.jpg\nrename 1pw.jpg pw.jpg\n";
        const QString batch = server->Own("batch");
        if (!WriteBytes(batch, one.repeated(uploads))) return false;
        return Succeeds(
            "sftp", {"-q", "-b", batch, "-F", "none", "-i", server->Own("key"), "-P",
                     QString::number(server->Port()), "-o", "StrictHostKeyChecking=no", "-o",
                     "UserKnownHostsFile=/dev/null", "-o", "LogLevel=ERROR", user + "@127.0.0.1"});
    }

  private:
    [[nodiscard]] bool Is(const char* other) const { return name == QLatin1String(other); }
    [[nodiscard]] QString Address(const QString& scheme) const {
        return QString("%1://127.0.0.1:%2").arg(scheme).arg(server->Port());
    }
    [[nodiscard]] QStringList WebArguments() const {
        QStringList arguments{user, password, "basic"};
        if (Is("https"))
            arguments << "server.pem"
                      << "server.pem";
        return arguments;
    }
    [[nodiscard]] QStringList CurlArguments(const QString& file, int uploads) const {
        const QStringList login{"-s", "-f", "-k", "--user", user + ':' + password};
        QStringList one{"-T", file};
        QStringList first = login;
        if (Is("http") || Is("https")) {
            one << Address(name) + "/pw.jpg";  // as ours does on Apache
        } else if (Is("s3")) {
            one << Address("http") + "/cam/pw.jpg";
            const QByteArray hash =
                QCryptographicHash::hash(ReadBytes(file), QCryptographicHash::Sha256).toHex();
            first << "--aws-sigv4"
                  << "aws:amz:eu-1:s3"
                  << "-H"
                  << "x-amz-content-sha256: " + QString::fromLatin1(hash);
        } else {
            one << Address("ftp") + "/1pw.jpg";
            first << "-Q"
                  << "-RNFR 1pw.jpg"
                  << "-Q"
                  << "-RNTO pw.jpg";
            if (Is("ftp"))
                first << "--ftp-port"
                      << "-"
                      << "--disable-eprt";
            if (Is("ftps")) first << "--ssl-reqd";
        }
        QStringList arguments = first + one;
        for (int i = 1; i < uploads; ++i) arguments << one;
        return arguments;
    }

    QString name;
    std::unique_ptr<RealServer> server;
};

// The program's way to the server, and nobody who looks.
class Ours {
  public:
    explicit Ours(const Way& way) : state(StateOf(way)) {
        state.SettingsFile = folder.filePath("ftpOptions.ini");
        connectivity.SetServer("127.0.0.1");
        QObject::connect(server.get(), &PictureServer::Sent, [this] { ++Turns; });
    }

    bool Connect() { return transaction.ConnectFtp(); }
    [[nodiscard]] QString WhyNot() const { return transaction.Failure().Why; }

    // The processor time of one upload; none when one of them failed.
    std::optional<double> Measure(const QString& file, int runs) {
        const double before = OwnMilliseconds();
        for (int i = 0; i < runs; ++i) {
            if (!transaction.Publish(file)) return {};
            // As the program's event loop does between two pictures.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return (OwnMilliseconds() - before) / runs;
    }

    int Turns = 0;

  private:
    static MainState StateOf(const Way& way) {
        MainState state;
        way.Set(state.Values);
        return state;
    }

    QTemporaryDir folder;
    SystemClock clock;
    Waiting waiting{clock};
    StatusHub nobody;
    TestOnlineState online;
    TestDialer dialer;
    PageControl page;
    Connectivity connectivity{waiting, online, dialer, nobody, page};
    AnsweringBoxes boxes;
    MainState state;
    RunStatus run{clock, nobody};
    Texts words{Texts::Language::English};
    std::unique_ptr<PictureServer> server =
        MakeServer(ProtocolOf(state.Values.Protocol),
                   {waiting, nobody, [this] { return connectivity.Online(); }}, {.Pauses = false});
    UploadTransaction transaction{{waiting, connectivity, nobody, boxes, state, words, run},
                                  *server};
};

// What each further upload of a peer costs; none when it failed.
std::optional<double> MeasurePeer(const Way& way, const QString& file, int runs) {
    const double start = Milliseconds(RUSAGE_CHILDREN);
    if (!way.RunPeer(file, 1)) return {};
    const double one = Milliseconds(RUSAGE_CHILDREN) - start;
    if (!way.RunPeer(file, 1 + runs)) return {};
    return (Milliseconds(RUSAGE_CHILDREN) - start - 2 * one) / runs;
}

// Empty, or why the way could not be measured.
QString Measure(const QString& name, const QString& file, int runs) {
    Way way(name);
    if (!way.Start()) return way.WhyNot();
    Ours ours(way);
    if (!ours.Connect() || !ours.Measure(file, 1)) return ours.WhyNot();
    ours.Turns = 0;
    std::vector<double> own;
    std::vector<double> peers;
    for (int round = 0; round < rounds; ++round) {
        const auto cost = ours.Measure(file, runs);
        if (!cost) return ours.WhyNot();
        own.push_back(*cost);
        if (const auto peer = MeasurePeer(way, file, runs)) peers.push_back(*peer);
    }
    const auto say = [&](const char* what, double value, const char* unit) {
        std::printf("%s_%s %.3f %s\n", qPrintable(name), what, value, unit);
    };
    say("upload", Median(own), "ms");
    say("turns", static_cast<double>(ours.Turns) / runs / rounds, "each");
    if (!peers.empty()) say("peer", Median(peers), "ms");
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: upload_bench FILE RUNS [WAY ...]\n");
        return 2;
    }
    const QString& file = arguments.at(1);
    const int runs = arguments.at(2).toInt();
    QStringList ways = arguments.mid(3);
    if (ways.isEmpty()) ways = {"ftp", "passive", "ftps", "sftp", "http", "https", "s3"};
    for (const QString& name : std::as_const(ways)) {
        const QString why = Measure(name, file, runs);
        if (!why.isEmpty())
            std::fprintf(stderr, "upload_bench: %s: %s\n", qPrintable(name), qPrintable(why));
        std::fflush(stdout);
    }
    return 0;
}
