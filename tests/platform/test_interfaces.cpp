#include "platform/linux/interfaces.h"
#include "support/data_rows.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <sched.h>

using Links = OnlineState::Links;

namespace {

// Runs a command of iproute2 in this program's own network namespace.
bool Ip(const QString& arguments) {
    QProcess ip;
    ip.start("ip", arguments.split(' '));
    return ip.waitForFinished() && ip.exitStatus() == QProcess::NormalExit && ip.exitCode() == 0;
}

bool alone = false;  // in a network namespace of its own

}  // namespace

class TestInterfaces : public QObject {
    Q_OBJECT

  private slots:
    void kinds_data() {
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
    void kinds() {
        const auto [interfaces, links] = Row<QList<NetworkInterface>, Links>();
        QCOMPARE(LinksOf(interfaces), links);
    }

    void followsTheKernel() {
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
};

// The namespace has to be made before Qt starts its first thread.
int main(int argc, char** argv) {
    alone = unshare(CLONE_NEWNET) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNET) == 0;
    const QCoreApplication application(argc, argv);
    TestInterfaces test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_interfaces.moc"
