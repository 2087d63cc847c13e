// Measures what an upload costs on a connection that is kept.
//
//     upload_bench FILE RUNS [curl]
//
// Starts vsftpd on a free port of 127.0.0.1 and publishes FILE that many times (send, rename) as
// the program does, without SITE CHMOD, which curl does not send either; with `curl` the same with
// one process of the program of that name, over one connection. Start and login are left out of
// both. Prints the median, over some rounds in turns, of the processor time of one upload, and the
// commands that it took, as lines "name value unit".

#include "base/status_hub.h"
#include "base/waiting.h"
#include "core/upload_transaction.h"
#include "net/connectivity.h"
#include "net/ftp/ftp_server.h"
#include "net/page_control.h"
#include "platform/system_clock.h"
#include "support/answering_boxes.h"
#include "support/real_ftp_server.h"
#include "support/test_platform.h"
#include "texts/texts.h"

#include <QCoreApplication>
#include <QProcess>

#include <sys/resource.h>
#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

constexpr int rounds = 5;

double Milliseconds(int whose) {
    rusage usage{};
    getrusage(whose, &usage);
    const auto part = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return part(usage.ru_utime) + part(usage.ru_stime);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

int Fail(const QString& why) {
    std::fprintf(stderr, "upload_bench: %s\n", qPrintable(why));
    return 1;
}

// The program's way to the server, logged in, and nobody who looks.
class Ours {
  public:
    explicit Ours(quint16 port) {
        connectivity.SetServer("127.0.0.1");
        state.Values.FileMode.clear();
        ftp.SetRemoteHost("127.0.0.1");
        ftp.SetRemotePort(port);
        ftp.SetUserName("cam");
        ftp.SetPassword("secret");
        QObject::connect(&ftp, &FTP::CommandSentToServer, &ftp, [this] { ++Commands; });
    }

    bool Connect() {
        transaction.Flags.ConnectionDown = !ftp.Connect();
        return !transaction.Flags.ConnectionDown;
    }

    // The processor time of one upload; none when one of them failed.
    std::optional<double> Measure(const QString& file, int runs) {
        const double before = Milliseconds(RUSAGE_SELF);
        for (int i = 0; i < runs; ++i) {
            if (!transaction.Publish(file)) return {};
            // As the program's event loop does between two pictures.
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        return (Milliseconds(RUSAGE_SELF) - before) / runs;
    }

    int Commands = 0;

  private:
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
    FTP ftp{waiting, nobody};
    Texts words{Texts::Language::English};
    FtpServer server{{waiting, nobody, [this] { return connectivity.Online(); }}, ftp};
    UploadTransaction transaction{{waiting, connectivity, nobody, boxes, state, words, run},
                                  server};
};

// The processor time of one process that does so many uploads; none when it failed.
std::optional<double> RunCurl(quint16 port, const QString& file, int uploads) {
    QStringList arguments{"-s", "--ftp-port",    "-",  "--disable-eprt", "--user", "cam:secret",
                          "-Q", "-RNFR 1pw.jpg", "-Q", "-RNTO pw.jpg"};
    const QString address = QString("ftp://127.0.0.1:%1/1pw.jpg").arg(port);
    for (int i = 0; i < uploads; ++i) arguments << "-T" << file << address;
    const double before = Milliseconds(RUSAGE_CHILDREN);
    if (QProcess::execute("curl", arguments) != 0) return {};
    return Milliseconds(RUSAGE_CHILDREN) - before;
}

// What each further upload costs.
std::optional<double> MeasureCurl(quint16 port, const QString& file, int runs) {
    const auto one = RunCurl(port, file, 1);
    const auto all = RunCurl(port, file, 1 + runs);
    if (!one || !all) return {};
    return (*all - *one) / runs;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        Fail("usage: upload_bench FILE RUNS [curl]");
        return 2;
    }
    const QString file = arguments.at(1);
    const int runs = arguments.at(2).toInt();
    const bool beside = arguments.value(3) == "curl";
    RealFtpServer server(RealFtpServer::Kind::Vsftpd);
    if (!server.Start()) return Fail(server.WhyNot());
    Ours ours(server.Port());
    if (!ours.Connect()) return Fail("cannot log in");
    if (!ours.Measure(file, 1)) return Fail("the upload failed");
    ours.Commands = 0;
    std::vector<double> own;
    std::vector<double> curls;
    for (int round = 0; round < rounds; ++round) {
        const auto cost = ours.Measure(file, runs);
        if (!cost) return Fail("an upload failed");
        own.push_back(*cost);
        if (!beside) continue;
        const auto curl = MeasureCurl(server.Port(), file, runs);
        if (!curl) return Fail("curl failed");
        curls.push_back(*curl);
    }
    std::printf("upload_stillpost %.3f ms\n", Median(own));
    std::printf("upload_commands %.2f each\n", static_cast<double>(ours.Commands) / runs / rounds);
    if (beside) std::printf("upload_curl %.3f ms\n", Median(curls));
    return 0;
}
