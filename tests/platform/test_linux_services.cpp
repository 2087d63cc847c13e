// What only Linux has: the desktop's launcher, the kernel's interfaces, signals, players.

#include "base/detached_thread.h"
#include "core/folder_claim.h"
#include "net/winsock.h"
#include "platform/address_opener.h"
#include "platform/linux/autostart_entry.h"
#include "platform/linux/interfaces.h"
#include "platform/linux/sound.h"
#include "platform/linux/system_facts.h"
#include "platform/system_clock.h"
#include "platform/termination.h"
#include "support/data_rows.h"
#include "support/few_files.h"
#include "support/file_bytes.h"
#include "support/test_clock.h"

#include <QDir>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <optional>
#include <thread>

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
    void addressesThatCannotBeOpened_data() {
        const Rows<QByteArray, int> row;
        row("the desktop opens it", "exit 0", 0);
        row("the desktop has nothing for it", "exit 3", 1);
        row("no desktop and no browser", "", 1);
    }
    void addressesThatCannotBeOpened() {
        const auto [script, failures] = Row<QByteArray, int>();
        const QTemporaryDir folder;
        const QString command = folder.filePath("xdg-open");
        const QByteArray asked = QFile::encodeName(folder.filePath("asked"));
        if (!script.isEmpty()) {
            QVERIFY(WriteBytes(command, "#!/bin/sh\necho $1 > " + asked + "\n" + script));
            QVERIFY(QFile::setPermissions(command, QFile::ReadOwner | QFile::ExeOwner));
        }
        const QByteArray usual = qgetenv("PATH");
        const auto restore = qScopeGuard([&usual] { qputenv("PATH", usual); });
        qputenv("PATH", folder.path().toLocal8Bit());
        int failed = 0;
        AddressOpener::Open(QUrl("http://a.example/x y"), [&failed] { ++failed; });
        QTRY_VERIFY(!QCoreApplication::instance()->findChild<QProcess*>());
        QCOMPARE(failed, failures);
        if (!script.isEmpty())
            QCOMPARE(ReadBytes(folder.filePath("asked")), "http://a.example/x%20y\n");
    }

    void tellsWhoHoldsACamera() {
        const QTemporaryDir processes;
        const auto make = [&](const QString& id, const QByteArray& name, const QString& file) {
            return QDir(processes.path()).mkpath(id + "/fd") &&
                   WriteBytes(processes.filePath(id + "/comm"), name + '\n') &&
                   QFile::link(file, processes.filePath(id + "/fd/3"));
        };
        QVERIFY(make("12", "viewer", "/dev/video9") && make("13", "shell", "/dev/null"));
        QVERIFY(make("self", "viewer", "/dev/video9"));
        QCOMPARE(LinuxFacts::CameraUsersIn(processes.path()),
                 QStringList("viewer (12): /dev/video9"));
    }

    void tellsDrives() {
        QCOMPARE(
            LinuxFacts::DrivesIn("proc /proc proc rw\n/dev/sda1 / ext4 rw\n"
                                 "//nas/a /mnt/my\\040disk cifs rw\n/dev/loop3 /snap/x squashfs\n"
                                 "/dev/sda1 /etc/hosts ext4 rw\nme@h: /mnt/h fuse.sshfs rw\nodd\n"),
            QStringList({"/", "/mnt/my disk", "/mnt/h"}));
    }

    void autostartStartsTheProgramAsItWasGiven_data() {
        const Rows<QString> row;
        row("blanks", "a b  c");
        row("umlauts", "Bücher für Zoë");
        row("per cent", "100% %f %%");
        row("quotes and dollars", "a\"b'c`d$HOME\\e\\\\f");
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
        // A link-local address leads no further than the cable.
        QVERIFY(Ip("addr add 169.254.3.4/16 dev lan0"));
        QVERIFY(Ip("addr del 10.9.8.7/24 dev lan0"));
        QTRY_COMPARE(links(), Links());
        QVERIFY(std::ranges::any_of(watch.Interfaces(), HasNeighbours));
        QVERIFY(Ip("addr add fe80::7/64 dev ppp0 nodad"));
        QVERIFY(Ip("addr add fd00::7/64 dev ppp0 nodad"));
        QTRY_COMPARE(links(), Links(OnlineState::Modem));
        QVERIFY(Ip("link set lan0 down"));
        QTRY_COMPARE(links(), Links());
        QVERIFY(std::ranges::none_of(watch.Interfaces(), HasNeighbours));
    }

    void signalRequestsTermination_data() {
        const Rows<int, bool> row;
        row("SIGTERM", SIGTERM, true);
        row("SIGHUP", SIGHUP, true);
        row("SIGUSR1", SIGUSR1, false);
    }
    void signalRequestsTermination() {
        const auto [number, ends] = Row<int, bool>();
        const auto before = std::signal(number, SIG_DFL);
        {
            const auto termination = Termination::Create();
            QSignalSpy requests(termination.get(),
                                ends ? &Termination::Requested : &Termination::StopRequested);
            QSignalSpy others(termination.get(),
                              ends ? &Termination::StopRequested : &Termination::Requested);
            std::raise(number);
            QCOMPARE(requests.count(), 0);  // never from inside the handler
            QTRY_COMPARE(requests.count(), 1);
            QCOMPARE(others.count(), 0);
        }
        QVERIFY(std::signal(number, before) == SIG_DFL);
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

    // What begins a thread would end the program.
    void threadsWaitForFiles() {
        SystemClock clock;
        Winsock name(clock);
        std::atomic<bool> done = false;
        {
            const FewFiles few(2);  // which the sanitizers need
            StartDetached([&done] { done = true; });
            name.Connect("localhost", 1);
            QCOMPARE(name.ConnectResult(), Winsock::ConnectEnd::HostNotFound);
            QVERIFY(!done);
        }
        QTRY_VERIFY(done);
    }

    // The system's listener is given up when there is none left for who comes.
    void aSecondStartIsHeardWhenThereAreFilesAgain() {
        const QTemporaryDir folder;
        TestClock clock;
        FolderClaim claim(folder.path());
        QVERIFY(claim.Take());
        claim.Listen(clock, false);
        const auto answer = [&claim] {
            std::optional<FolderClaim::Answer> got;
            std::atomic<bool> there = false;
            const std::jthread second([&] {
                got = claim.Ask();
                there = true;
            });
            (void)QTest::qWaitFor([&there] { return there.load(); });
            return got;
        };
        // After this the sanitizers have looked at all types, for which they need pipes.
        QCOMPARE(answer(), FolderClaim::Answer::Hidden);
        QCoreApplication::processEvents();
        {
            const FewFiles one(1);
            QCOMPARE(answer(), FolderClaim::Answer::None);
        }
        clock.Advance(10'000);
        QCOMPARE(answer(), FolderClaim::Answer::Hidden);
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
