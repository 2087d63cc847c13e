#include "net/ftp/ftp.h"
#include "net/publishing/make_server.h"
#include "support/data_rows.h"
#include "support/recording_display.h"
#include "support/scripted_ftp_server.h"
#include "support/scripted_web_server.h"
#include "support/test_clock.h"

#include "base/waiting.h"

#include <QMutex>
#include <QWaitCondition>

#include <netdb.h>

#include <dlfcn.h>

using enum ServerAnswer::Fault;

namespace {

constexpr int hangs = 1'000'000;  // no answer at all, until there is another one

// What this process gets in the place of the system's name service.
class NameService {
  public:
    // 0: the address.
    void Be(int nowFails, const QByteArray& nowAddress) {
        const QMutexLocker lock(&mutex);
        fails = nowFails;
        address = nowAddress;
        changed.wakeAll();
    }
    int Ask(QByteArray& found) {
        const QMutexLocker lock(&mutex);
        while (fails == hangs) changed.wait(&mutex);
        found = address;
        return fails;
    }

  private:
    QMutex mutex;
    QWaitCondition changed;
    int fails = EAI_NONAME;
    QByteArray address;
} names;

}  // namespace

// In the place of the C library's, which Qt asks on a thread of its own.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                           addrinfo** result) {
    static auto* const own =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    QByteArray found(name);
    if (found.endsWith(".test"))
        if (const int fault = names.Ask(found)) return fault;
    return own(found.constData(), service, hints, result);
}

class TestNameService : public QObject {
    Q_OBJECT

  private slots:
    void GoneAndBack_data() {
        const Rows<int, QByteArray, ServerFault> row;
        row("no such name", EAI_NONAME, "", HostNotFound);
        row("not now", EAI_AGAIN, "", HostNotFound);
        row("broken", EAI_SYSTEM, "", HostNotFound);
        row("no answer", hangs, "", NoAnswer);
        row("nobody there", 0, "127.0.0.3", Refused);
    }
    void GoneAndBack() {
        const auto [fails, wrong, fault] = Row<int, QByteArray, ServerFault>();
        TestClock time(20);
        Timer seconds(time, 1000);  // the time does not outrun the lookup's thread
        seconds.SetEnabled(true);
        Waiting wait(time);
        RecordingDisplay display;
        FTP control(wait, display);
        PictureServers servers({wait, display}, control);
        ScriptedFtpServer ftp(time);
        ScriptedWebServer web;
        for (const Protocol way : {Protocol::Ftp, Protocol::Http}) {
            // Qt remembers for a minute what it has found.
            const QString host = QString("cam%1.test").arg(++hosts);
            const QString address = QString("http://%1:%2").arg(host).arg(web.serverPort());
            PictureServer& server = servers.Of(way);
            server.SetAccess({.Way = way,
                              .Server = way == Protocol::Ftp ? host : address,
                              .Port = ftp.Port(),
                              .User = "cam",
                              .Password = "secret"});
            names.Be(fails, wrong);
            for (int i = 0; i < 2; ++i) {
                const qint64 start = time.Milliseconds();
                QCOMPARE(server.Open().Is, fault);
                QVERIFY(time.Milliseconds() - start <= 60'000);
            }
            names.Be(0, "127.0.0.1");
            if (wrong.isEmpty()) QCOMPARE(server.Open(), ServerAnswer());
        }
    }

  private:
    int hosts = 0;
};

QTEST_GUILESS_MAIN(TestNameService)
#include "test_name_service.moc"
