#include "platform/platform.h"
#include "platform/program_start.h"
#include "platform/socket_options.h"
#include "platform/user_section.h"
#include "support/file_bytes.h"

#include <QNetworkProxy>
#include <QProcess>
#include <QScopeGuard>
#include <QSettings>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace {

// What the system finds at the entry's place: a desktop file, or a value of the registry.
QString SystemsAutostart(AutostartEntry& entry) {
    const QString place = entry.Place();
    if (!place.startsWith("HKEY_")) return QString::fromUtf8(ReadBytes(place));
    const qsizetype end = place.lastIndexOf(u'\\');
    const QSettings registry(place.left(end), QSettings::NativeFormat);
    return registry.value(place.mid(end + 1)).toString();
}

}  // namespace

// What the services of every system promise.
class TestPlatformContract : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    }

    void services() {
        const Platform platform = MakePlatform();
        // Cameras keep their order, and one that is not there offers nothing.
        const QList<CaptureDevice> cameras = platform.Cameras->List();
        QCOMPARE(platform.Cameras->List(), cameras);
        for (const CaptureDevice& camera : cameras) QVERIFY(!camera.Name.isEmpty());
        const CaptureDevice missing{.Name = "x", .Connection = "x", .Input = "x", .Address = "x"};
        QVERIFY(platform.Cameras->Formats(missing).isEmpty());
        QVERIFY(platform.Controls->List(missing).isEmpty());
        QVERIFY(!platform.Controls->Set(missing, {.Id = "Gain", .Value = 1}));
        QVERIFY(!platform.Controls->HasOwnPages(missing));
        // A dial is never reported when there is no such entry.
        bool dialled = false;
        QVERIFY(!platform.Dial->Entries().contains("no such entry"));
        platform.Dial->Dial("no such entry", [&dialled](int) { dialled = true; });
        platform.Dial->HangUp(4711);
        QCoreApplication::processEvents();
        QVERIFY(!dialled);
        // Things that are missing are no fault.
        platform.Online->ForceOnline();
        for (const quint32 volume : {0U, 0x7C7C7C7CU}) platform.Sounds->SetVolume(volume);
        platform.Sounds->Play(folder.filePath("missing.wav"));
    }

    void autostartEntryIsReplacedAndRemoved() {
        const Platform platform = MakePlatform();
        AutostartEntry& entry = *platform.Autostart;
        const auto removed = qScopeGuard([&entry] { (void)entry.Remove(); });
        QVERIFY(entry.Remove());
        QVERIFY(entry.Write("/one", {"/first"}));
        QVERIFY(SystemsAutostart(entry).contains("one") &&
                SystemsAutostart(entry).contains("/first"));
        QVERIFY(entry.Write("/two", {}));
        QVERIFY(SystemsAutostart(entry).contains("two") &&
                !SystemsAutostart(entry).contains("/first"));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(entry.Remove());
            QCOMPARE(SystemsAutostart(entry), QString());
        }
    }

    void deadPeersAreLookedFor() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::NoProxy));
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QTcpSocket socket;
        socket.connectToHost(server.serverAddress(), server.serverPort());
        QVERIFY(socket.waitForConnected());
        QVERIFY(!socket.socketOption(QAbstractSocket::KeepAliveOption).toBool());
        SocketOptions::DetectDeadPeer(socket.socketDescriptor());
        QVERIFY(socket.socketOption(QAbstractSocket::KeepAliveOption).toBool());
    }

    void userStoreKeepsValues() {
        const QString section(QChar(u'\0'));  // which the program uses as a name
        const QString application = "Contract test";
        const QString text = "überschritten \"x\"\r\n";
        for (const QString& value : {QString("1"), text})
            OpenUserSection(application, section)->setValue("A", value);
        QCOMPARE(OpenUserSection(application, section)->value("A"), text);
        QVERIFY(!OpenUserSection("No such application", section)->contains("A"));
    }

    void argumentsKeepTheirCharacters() {
        const QStringList arguments{"--folder", "C:\\Users\\Jürgen Ω", "a \"b\"", "/autostarter"};
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(),
                      QStringList("--print-arguments") + arguments);
        QVERIFY(program.waitForFinished());
        const QString printed =
            QString::fromUtf8(QByteArray::fromHex(program.readAllStandardOutput().trimmed()));
        QCOMPARE(printed.split(u'\n').mid(1), arguments);
    }

  private:
    QTemporaryDir folder;
};

int main(int argc, char** argv) {
    const QStringList arguments = ProgramStart::Arguments(argc, argv);
    if (arguments.value(0) == "--print-arguments") {
        // In digits, which no code page changes.
        std::puts(arguments.join(u'\n').toUtf8().toHex().constData());
        return 0;
    }
    const QCoreApplication application(argc, argv);
    TestPlatformContract test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_platform_contract.moc"
