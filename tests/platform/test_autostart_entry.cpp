#include "platform/linux/autostart_entry.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

// The desktop's own launcher is asked what it makes of the entry.
class TestAutostartEntry : public QObject {
    Q_OBJECT

  private slots:
    void StartsTheProgramAsItWasGiven_data() {
        const Rows<QString> row;
        row("plain", "folder");
        row("blanks", "a b  c");
        row("umlauts", "Bücher für Zoë");
        row("per cent", "100% %f %%");
        row("quotes and dollars", "a\"b'c`d$HOME\\e\\\\f");
        row("shell", "x; y & z | *? ~ #=<>()");
    }
    void StartsTheProgramAsItWasGiven() {
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

    void IsNotWrittenWithoutAFolder() {
        const QTemporaryDir home;
        QVERIFY(WriteBytes(home.filePath("file"), "no folder"));
        QVERIFY(!LinuxAutostartEntry(home.filePath("file")).Write("/one", {}));
        LinuxAutostartEntry entry(home.filePath("new"));
        QVERIFY(entry.Write("/two", {"/autostarter"}));
        const QByteArray text = ReadBytes(home.filePath("new/autostart/stillpost.desktop"));
        QVERIFY(text.contains("\nExec=/two /autostarter\n"));
    }
};

QTEST_GUILESS_MAIN(TestAutostartEntry)
#include "test_autostart_entry.moc"
