// What only Linux has: the desktop's launcher, the kernel's interfaces, signals, players.

#include "platform/linux/autostart_entry.h"
#include "platform/linux/interfaces.h"
#include "platform/linux/sound.h"
#include "platform/termination.h"
#include "platform/user_section.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>

#include <sched.h>

using Links = OnlineState::Links;

namespace {

bool alone = false;  // in a network namespace of its own

// Runs a command of iproute2 in it.
bool Ip(const QString& arguments) {
    return QProcess::execute("ip", arguments.split(' ')) == 0;
}

}  // namespace

class TestLinuxServices : public QObject {
    Q_OBJECT

  private slots:
    void autostartStartsTheProgramAsItWasGiven_data() {
        const Rows<QString> row;
        row("plain", "folder");
        row("blanks", "a b  c");
        row("umlauts", "Bücher für Zoë");
        row("per cent", "100% %f %%");
        row("quotes and dollars", "a\"b'c`d$HOME\\e\\\\f");
        row("shell", "x; y & z | *? ~ #=<>()");
    }
    void autostartStartsTheProgramAsItWasGiven() {
        if (QStandardPaths::findExecutable("gio").isEmpty()) QSKIP("gio is not there");
        const auto [name] = Row<QString>();
        const QTemporaryDir home;
        const QString folder = home.filePath(name);
        QVERIFY(QDir().mkpath(folder));
        const QString program = folder + "/" + "pro gram";
        const QString result = home.filePath("result");
        QVERIFY(WriteBytes(program, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + result.toUtf8() +
                                        ".part'\nmv '" + result.toUtf8() + ".part' '" +
                                        result.toUtf8() + "'\n"));
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        LinuxAutostartEntry entry(home.path());
        QVERIFY(entry.Write(program, {"--folder", folder, "/autostarter"}));
        QCOMPARE(QProcess::execute("gio", {"launch", entry.Place()}), 0);
        QTRY_VERIFY(QFile::exists(result));
        QCOMPARE(QString::fromUtf8(ReadBytes(result)).split(u'\n'),
                 QStringList({"--folder", folder, "/autostarter", ""}));
    }

    void autostartNeedsAFolder() {
        const QTemporaryDir home;
        QVERIFY(WriteBytes(home.filePath("file"), "no folder"));
        QVERIFY(!LinuxAutostartEntry(home.filePath("file")).Write("/one", {}));
        LinuxAutostartEntry entry(home.filePath("new"));
        QVERIFY(entry.Write("/two", {"/autostarter"}));
        const QByteArray text = ReadBytes(home.filePath("new/autostart/stillpost.desktop"));
        QVERIFY(text.contains("\nExec=/two /autostarter\n"));
    }

    void interfaceKinds_data() {
        const Rows<QList<NetworkInterface>, Links> row;
        const auto make = [](const char* name, bool up, bool hasAddress) -> NetworkInterface {
            return {.Name = QString::fromLatin1(name), .Up = up, .HasAddress = hasAddress};
        };
        const NetworkInterface lo{.Name = "lo", .Up = true, .Loopback = true, .HasAddress = true};
        const NetworkInterface unplugged = make("eth0", false, true);
        const NetworkInterface noAddress = make("wlan0", true, false);
        row("cable pulled", {lo, unplugged}, {});
        row("no address yet", {lo, noAddress}, {});
        row("cable", {lo, unplugged, make("enp3s0", true, true)}, OnlineState::Lan);
        row("ppp", {lo, noAddress, make("ppp0", true, true)}, OnlineState::Modem);
        row("mobile", {lo, make("wwp0s20u4", true, true)}, OnlineState::Modem);
    }
    void interfaceKinds() {
        const auto [interfaces, links] = Row<QList<NetworkInterface>, Links>();
        QCOMPARE(LinksOf(interfaces), links);
    }

    void interfacesFollowTheKernel() {
        if (!alone) QSKIP("needs the right to make a network namespace");
        InterfaceWatch watch;
        const auto links = [&watch] { return LinksOf(watch.Interfaces()); };
        QCOMPARE(links(), Links());
        QVERIFY(Ip("link set lo up"));
        // Two ends of one cable.
        if (!Ip("link add lan0 type veth peer name ppp0")) QSKIP("needs iproute2 and veth");
        // Without addresses of their own making, each step causes one kind of notification only.
        QVERIFY(Ip("link set lan0 addrgenmode none"));
        QVERIFY(Ip("link set ppp0 addrgenmode none"));
        QVERIFY(Ip("addr add 10.9.8.7/24 dev lan0"));
        QSignalSpy changes(&watch, &InterfaceWatch::Changed);
        QVERIFY(Ip("link set lan0 up"));
        QTRY_VERIFY(!changes.isEmpty());
        QCOMPARE(links(), Links());  // nothing at the other end
        QVERIFY(Ip("link set ppp0 up"));
        QTRY_COMPARE(links(), Links(OnlineState::Lan));
        // A link-local address leads nowhere.
        QVERIFY(Ip("addr add 169.254.3.4/16 dev lan0"));
        QVERIFY(Ip("addr del 10.9.8.7/24 dev lan0"));
        QTRY_COMPARE(links(), Links());
        QVERIFY(Ip("addr add fe80::7/64 dev ppp0 nodad"));
        QVERIFY(Ip("addr add fd00::7/64 dev ppp0 nodad"));
        QTRY_COMPARE(links(), Links(OnlineState::Modem));
        QVERIFY(Ip("addr del fd00::7/64 dev ppp0"));
        QTRY_COMPARE(links(), Links());
        QVERIFY(Ip("addr add 10.9.8.7/24 dev ppp0"));
        QTRY_COMPARE(links(), Links(OnlineState::Modem));
        QVERIFY(Ip("link set lan0 down"));
        QTRY_COMPARE(links(), Links());
    }

    void signalRequestsTermination_data() {
        const Rows<int, bool> row;
        row("SIGTERM", SIGTERM, true);
        row("SIGHUP", SIGHUP, true);
        row("SIGUSR1", SIGUSR1, false);
    }
    void signalRequestsTermination() {
        const auto [number, ends] = Row<int, bool>();
        struct sigaction before {};
        sigaction(number, nullptr, &before);
        {
            const auto termination = Termination::Create();
            QSignalSpy requests(termination.get(),
                                ends ? &Termination::Requested : &Termination::StopRequested);
            QSignalSpy others(termination.get(),
                              ends ? &Termination::StopRequested : &Termination::Requested);
            std::raise(number);
            QCOMPARE(requests.count(), 0);  // never from inside the handler
            QTRY_COMPARE(requests.count(), 1);
            std::raise(number);
            QTRY_COMPARE(requests.count(), 2);
            QCOMPARE(others.count(), 0);
        }
        struct sigaction after {};
        sigaction(number, nullptr, &after);
        QVERIFY(after.sa_handler == before.sa_handler);
    }

    void nohupIsRespected() {
        const auto before = std::signal(SIGHUP, SIG_IGN);
        {
            const auto termination = Termination::Create();
            QSignalSpy requests(termination.get(), &Termination::Requested);
            std::raise(SIGHUP);
            QCoreApplication::processEvents();
            QCOMPARE(requests.count(), 0);
            std::raise(SIGTERM);
            QTRY_COMPARE(requests.count(), 1);
        }
        std::signal(SIGHUP, before);
    }

    void userStoreIsAFile() {
        const QTemporaryDir folder;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        const QString section(QChar(u'\0'));
        OpenUserSection("FTP Control 1.01", section)->setValue("LastErrorCode", "550");
        const QSettings file(folder.filePath("Stillpost/FTP Control 1.01.ini"),
                             QSettings::IniFormat);
        QCOMPARE(file.childGroups(), QStringList(section));
    }

    void playsThroughFirstPlayer() {
        QTemporaryDir folder;
        const QString wave = folder.filePath("a $(click) 'now'.wav");
        const QString note = folder.filePath("note");
        for (const QString& player : QStringList{"aplay", "paplay"}) {
            const QString script = folder.filePath(player);
            const auto text = QString("#!/bin/sh\necho \"%1 $# $1\" >> '%2'\n").arg(player, note);
            QVERIFY(WriteBytes(script, text.toUtf8()));
            QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", folder.path().toLocal8Bit());
        LinuxSound sound;
        sound.Play(wave);  // not there yet: nothing is started
        QVERIFY(WriteBytes(wave, {}));
        sound.Play(wave);
        qputenv("PATH", path);

        QTRY_VERIFY(ReadBytes(note).endsWith('\n'));
        QCOMPARE(QString::fromUtf8(ReadBytes(note)), QString("paplay 1 %1\n").arg(wave));
    }
};

// The namespace has to be made before Qt starts its first thread.
int main(int argc, char** argv) {
    alone = unshare(CLONE_NEWNET) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0;
    const QCoreApplication application(argc, argv);
    TestLinuxServices test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_linux_services.moc"
