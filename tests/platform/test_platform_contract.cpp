#include "platform/platform.h"
#include "platform/program_start.h"
#include "platform/service_contracts.h"
#include "platform/socket_options.h"
#include "platform/termination.h"
#include "platform/user_section.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/test_platform.h"

#include <QNetworkProxy>
#include <QProcess>
#include <QScopeGuard>
#include <QSettings>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace {

using AutostartText = std::function<QString(AutostartEntry&)>;

class TestServices : public PlayedModem, public PlayedNetwork {
  public:
    TestServices() {
        dialer.EntryList = {"Stick", "Spare"};
        dialer.Answers = false;
    }

    Dialer& Phone() override { return dialer; }
    QStringList Dialled() override { return dialer.Dialled; }
    QStringList HungUp() override {
        QStringList entries;
        for (const int handle : dialer.HungUp) entries << dialer.Dialled.value(handle - 1);
        return entries;
    }
    void Answer(bool stands) override { dialer.Answer(stands); }
    void Cut() override { dialer.Cut(); }

    OnlineState& State() override { return online; }
    void Set(bool connected, OnlineState::Links links) override { online.Set(connected, links); }

  private:
    TestDialer dialer;
    TestOnlineState online;
};

// The tests' services, with all that a camera can have.
Platform WithCamera() {
    TestPlatform platform = MakeTestPlatform();
    platform.Cameras.Devices = {{.Name = "a", .Connection = "1", .Input = "a", .Address = "1"}};
    platform.Cameras.DeviceFormats = {CaptureFormat()};
    platform.Controls.Controls = {{.Id = "Gain", .Name = "Gain"}};
    platform.Controls.OwnPages = [] {};
    return std::move(platform.Services);
}

// What the system finds at the entry's place: a desktop file, or a value of the registry.
QString SystemsAutostart(AutostartEntry& entry) {
    const QString place = entry.Place();
    if (!place.startsWith("HKEY_")) return QString::fromUtf8(ReadBytes(place));
    const qsizetype end = place.lastIndexOf(u'\\');
    const QSettings registry(place.left(end), QSettings::NativeFormat);
    return registry.value(place.mid(end + 1)).toString();
}

QString TestsAutostart(AutostartEntry& entry) {
    return static_cast<RecordingAutostart&>(entry).Line.join(u' ');
}

}  // namespace

// What every set of services promises, asked of this system's and of the tests' own.
class TestPlatformContract : public ServiceContracts {
    Q_OBJECT

  private slots:
    void initTestCase() {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    }

    void services_data() {
        const Rows<std::function<Platform()>> row;
        row("this system", MakePlatform);
        row("tests", WithCamera);
    }
    void services() {
        const auto [make] = Row<std::function<Platform()>>();
        const Platform platform = make();
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

    void autostartEntryIsReplacedAndRemoved_data() {
        const Rows<std::function<Platform()>, AutostartText> row;
        row("this system", MakePlatform, SystemsAutostart);
        row("tests", WithCamera, TestsAutostart);
    }
    void autostartEntryIsReplacedAndRemoved() {
        const auto [make, text] = Row<std::function<Platform()>, AutostartText>();
        const Platform platform = make();
        AutostartEntry& entry = *platform.Autostart;
        const auto removed = qScopeGuard([&entry] { (void)entry.Remove(); });
        QVERIFY(entry.Remove());
        QVERIFY(entry.Write("/one", {"/first"}));
        QVERIFY(text(entry).contains("one") && text(entry).contains("/first"));
        QVERIFY(entry.Write("/two", {}));
        QVERIFY(text(entry).contains("two") && !text(entry).contains("/first"));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(entry.Remove());
            QCOMPARE(text(entry), QString());
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

    void userStoreKeepsValues_data() {
        const Rows<QString> row;
        row("section", "a");
        row("a NUL for a section", QString(QChar(u'\0')));
    }
    void userStoreKeepsValues() {
        const auto [section] = Row<QString>();
        const QString application = "Contract test";
        const QString text = "überschritten \"x\"\r\n";
        for (const QString& value : {QString("1"), text})
            OpenUserSection(application, section)->setValue("A", value);
        QCOMPARE(OpenUserSection(application, section)->value("A"), text);
        QVERIFY(!OpenUserSection("No such application", section)->contains("A"));
    }

    void terminationComesAndGoes() {
        for (int i = 0; i < 2; ++i) QVERIFY(Termination::Create() != nullptr);
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
    std::unique_ptr<PlayedModem> Modem() override { return std::make_unique<TestServices>(); }
    std::unique_ptr<PlayedNetwork> Network() override { return std::make_unique<TestServices>(); }

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
