#include "platform/platform.h"
#include "platform/program_start.h"
#include "platform/termination.h"
#include "platform/test/test_platform.h"
#include "platform/user_store.h"
#include "support/data_rows.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

// What every set of services promises, asked of this system's and of the tests' own.
class TestPlatformContract : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    }

    void services_data() {
        const Rows<std::function<Platform()>> row;
        row("this system", MakePlatform);
        row("tests", [] { return std::move(MakeTestPlatform().Services); });
    }
    void services() {
        const auto [make] = Row<std::function<Platform()>>();
        const Platform platform = make();
        // Cameras keep their order, and one that is not there offers nothing.
        const QList<CaptureDevice> cameras = platform.Cameras->List();
        QCOMPARE(platform.Cameras->List(), cameras);
        for (const CaptureDevice& camera : cameras) QVERIFY(!camera.Name.isEmpty());
        CaptureDevice missing{.Name = "x", .Connection = "x", .Input = "x", .Address = "x"};
        QVERIFY(platform.Cameras->Formats(missing).isEmpty());
        // A dial is reported by the event loop only, and never when there is no such entry.
        bool dialled = false;
        QVERIFY(!platform.Dial->Entries().contains("no such entry"));
        platform.Dial->Dial("no such entry", [&dialled](int handle) { dialled = handle != 0; });
        QVERIFY(!dialled);
        platform.Dial->HangUp(4711);
        // Things that are missing are no fault.
        platform.Online->ForceOnline();
        platform.Sounds->Play(folder.filePath("missing.wav"));
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
        UserStore::Write(application, section, {{"A", "1"}, {"B", text}});
        UserStore::Write(application, section, {{"A", "2"}});
        QCOMPARE(UserStore::Read(application, section, "A"), "2");
        QCOMPARE(UserStore::Read(application, section, "B"), text);
        QCOMPARE(UserStore::Read(application, section, "C"), "");
        QCOMPARE(UserStore::Read("No such application", section, "A"), "");
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
