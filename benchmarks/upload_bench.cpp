// Measures what an upload costs on a connection that is kept.
//
//     upload_bench FILE RUNS [curl]
//
// Starts vsftpd on a free port of 127.0.0.1 and publishes FILE that many times (send, rename); with
// `curl` the same with the program of that name, one process an upload. Prints the processor time
// of one upload, and the commands that it took, as lines "name value unit".

#include "base/status_hub.h"
#include "base/waiting.h"
#include "net/ftp.h"
#include "platform/system_clock.h"
#include "support/real_ftp_server.h"

#include <QCoreApplication>
#include <QProcess>

#include <sys/resource.h>
#include <cstdio>

namespace {

double Milliseconds(int whose) {
    rusage usage{};
    getrusage(whose, &usage);
    const auto part = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return part(usage.ru_utime) + part(usage.ru_stime);
}

bool Fail(const QString& why) {
    std::fprintf(stderr, "upload_bench: %s\n", qPrintable(why));
    return false;
}

bool Publish(FTP& ftp, bool& transferred, Waiting& waiting, const QString& file) {
    transferred = false;
    if (!ftp.PutFile({}, "1pw.jpg", file, false)) return false;
    waiting.Until([&transferred] { return transferred; }, {.LimitMilliseconds = 5000});
    return transferred && ftp.Rename({}, "1pw.jpg", "pw.jpg");
}

bool MeasureOurs(const RealFtpServer& server, const QString& file, int runs) {
    SystemClock clock;
    Waiting waiting(clock);
    StatusHub nobody;
    FTP ftp(waiting, nobody);
    ftp.SetRemoteHost("127.0.0.1");
    ftp.SetRemotePort(server.Port());
    ftp.SetUserName("cam");
    ftp.SetPassword("secret");
    bool transferred = false;
    int commands = 0;
    QObject::connect(&ftp, &FTP::ServerResponse, &ftp, [&transferred](const QString& chunk) {
        if (chunk.startsWith("226") || chunk.contains("\n226")) transferred = true;
    });
    QObject::connect(&ftp, &FTP::CommandSentToServer, &ftp, [&commands] { ++commands; });
    if (!ftp.Connect()) return Fail("cannot log in: " + ftp.GetLastErrorString());
    if (!Publish(ftp, transferred, waiting, file)) return Fail("the upload failed");
    commands = 0;
    const double before = Milliseconds(RUSAGE_SELF);
    for (int i = 0; i < runs; ++i)
        if (!Publish(ftp, transferred, waiting, file)) return Fail("the upload failed");
    std::printf("upload_stillpost %.3f ms\n", (Milliseconds(RUSAGE_SELF) - before) / runs);
    std::printf("upload_commands %.2f each\n", static_cast<double>(commands) / runs);
    return true;
}

bool MeasureCurl(const RealFtpServer& server, const QString& file, int runs) {
    const QString address = "ftp://127.0.0.1:" + QString::number(server.Port()) + "/1pw.jpg";
    const QStringList arguments{"-s",           "-T",         file, "--ftp-port",    "-",
                                "--user",       "cam:secret", "-Q", "-RNFR 1pw.jpg", "-Q",
                                "-RNTO pw.jpg", address};
    const double before = Milliseconds(RUSAGE_CHILDREN);
    for (int i = 0; i < runs; ++i)
        if (QProcess::execute("curl", arguments) != 0) return Fail("curl failed");
    std::printf("upload_curl %.3f ms\n", (Milliseconds(RUSAGE_CHILDREN) - before) / runs);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        Fail("usage: upload_bench FILE RUNS [curl]");
        return 2;
    }
    RealFtpServer server(RealFtpServer::Kind::Vsftpd);
    if (!server.Start()) {
        Fail(server.WhyNot());
        return 1;
    }
    const int runs = arguments.at(2).toInt();
    bool measured = MeasureOurs(server, arguments.at(1), runs);
    if (arguments.value(3) == "curl")
        measured = MeasureCurl(server, arguments.at(1), runs) && measured;
    return measured ? 0 : 1;
}
