#include "net/sftp/host_keys.h"
#include "net/sftp/password_teller.h"
#include "net/sftp_bench.h"
#include "support/data_rows.h"
#include "support/real_ftp_server.h"

#include <QDir>
#include <QProcess>

using enum ServerAnswer::Fault;

namespace {

const QString User = QStringLiteral("cam");
const QString Password = QStringLiteral(" p$@:!§ü \"x\" ");

QString OutputOf(const QStringList& arguments) {
    QProcess program;
    program.start("ssh-keygen", arguments);
    program.waitForFinished();
    return QString::fromLatin1(program.readAll());
}

// The system's OpenSSH and its server; nothing of the user's own counts.
struct SshBench : SftpBench {
    SshBench() : SftpBench({"ssh", {"-F", "none"}}) {}

    [[nodiscard]] ServerAccess Access(const QString& trusted) const {
        return {.Server = "127.0.0.1", .Port = Real.Port(), .User = User, .Trusted = trusted};
    }
    [[nodiscard]] ServerAccess ByKey() const {
        ServerAccess access = Access(HostKey());
        access.KeyFile = Real.Own("key");
        return access;
    }
    // As OpenSSH shows it.
    [[nodiscard]] QString HostKey() const {
        return OutputOf({"-lf", Real.Own("hostkey.pub")}).section(u' ', 1, 1);
    }
    [[nodiscard]] QByteArray Public(const QString& name) const {
        return ReadBytes(Real.Root() + name);
    }

    RealFtpServer Real{RealFtpServer::Kind::Sshd, User, Password};
};

// Bytes that no text mode would leave alone.
QByteArray Content(qsizetype size) {
    QByteArray bytes(size, '\0');
    for (qsizetype i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7919 >> 3);
    return bytes;
}

}  // namespace

// The client against OpenSSH, by OpenSSH.
class TestSftpServer : public QObject {
    Q_OBJECT

  private slots:
    void PublishesPictures() {
        SshBench bench;
        if (!bench.Real.Start()) QSKIP(qPrintable(bench.Real.WhyNot()));
        ServerAccess access = bench.ByKey();
        access.Folder = "a $@:!§ü b";
        QVERIFY(QDir(bench.Real.Root()).mkdir(access.Folder));
        QVERIFY(
            QFile::setPermissions(bench.Real.Root() + access.Folder, QFile::Permissions(0x7777)));
        QCOMPARE(bench.Open(access), ServerAnswer());
        const QString folder = access.Folder + u'/';
        PictureServer& server = bench.Server;
        for (const int size : {0, 1, 32'768, 5'000'000}) {
            QCOMPARE(bench.Send(Content(size), "1pw.jpg"), ServerAnswer());
            QCOMPARE(server.RenameFile("1pw.jpg", "pw.jpg"), ServerAnswer());
            QVERIFY(bench.Public(folder + "pw.jpg") == Content(size));
            // From the second time on there is one in the way.
            QCOMPARE(server.KeepFile("pw.jpg", "pw1.jpg"), ServerAnswer());
            QVERIFY(bench.Public(folder + "pw.jpg") == Content(size));
        }
        QVERIFY(bench.Public(folder + "pw1.jpg") == Content(5'000'000));
        QByteArray beginning;
        QCOMPARE(server.LookAt("pw1.jpg", beginning), ServerAnswer());
        QVERIFY(beginning == Content(5'000'000).left(4096));
        QCOMPARE(server.LookAt("none", beginning).Is, FileMissing);
        QCOMPARE(server.ChangeMode("pw.jpg", "600"), true);
        constexpr auto readers = QFile::ReadOwner | QFile::ReadGroup;
        QCOMPARE(QFile::permissions(bench.Real.Root() + folder + "pw.jpg") & readers,
                 QFile::ReadOwner);
        QCOMPARE(server.ChangeMode("none", "600"), false);
        QCOMPARE(server.RenameFile("none", "pw.jpg").Is, FileMissing);
        QCOMPARE(server.DeleteFile("pw.jpg").Is, None);
        QCOMPARE(QDir(bench.Real.Root() + folder).entryList(QDir::Files), QStringList("pw1.jpg"));
    }

    void ComesBackWithTheServer() {
        SshBench bench;
        if (!bench.Real.Start()) QSKIP(qPrintable(bench.Real.WhyNot()));
        QCOMPARE(bench.Open(bench.ByKey()), ServerAnswer());
        bench.Real.Stop();
        QVERIFY(bench.Time.RunUntil([&] { return !bench.Server.IsOpen(); }));
        QCOMPARE(bench.Send("a", "1pw.jpg").Is, ConnectionLost);
        QCOMPARE(bench.Open(bench.ByKey()).Is, Refused);
        QVERIFY(bench.Real.Start());
        QCOMPARE(bench.Open(bench.ByKey()), ServerAnswer());
        QCOMPARE(bench.Send("a", "1pw.jpg"), ServerAnswer());
    }

    void LetsNobodyPassForTheServer() {
        SshBench bench;
        if (!bench.Real.Start()) QSKIP(qPrintable(bench.Real.WhyNot()));
        ServerAccess access = bench.ByKey();
        const QString first = access.Trusted;
        access.Trusted = "";
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyUnknown, first}));
        // What stands in the setting for another way is no host key.
        access.Trusted = "AB:CD";
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyUnknown, first}));
        access.Trusted = first;
        QCOMPARE(bench.Open(access), ServerAnswer());
        const QString kept = bench.Folder.filePath("known_hosts");
        QCOMPARE(HostKeys::FingerprintOf(ReadBytes(kept)), first);

        bench.Real.Stop();
        QVERIFY(QFile::remove(bench.Real.Own("hostkey")));
        QVERIFY(QFile::remove(bench.Real.Own("hostkey.pub")));
        QVERIFY(bench.Real.Start());
        const QString second = bench.HostKey();
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyChanged, second}));
        // The file is gone, and the key is not the one that was accepted.
        QVERIFY(QFile::remove(kept));
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyChanged, second}));
        QVERIFY(!QFile::exists(kept));
        access.Trusted = second;
        QVERIFY(QDir().mkdir(kept));  // no file can take its place
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyNotKept, kept}));
        QVERIFY(QDir().rmdir(kept));
        QCOMPARE(bench.Open(access), ServerAnswer());
        access.Trusted = first;
        QCOMPARE(bench.Open(access), (ServerAnswer{HostKeyChanged, second}));
    }

    void LogsIn_data() {
        const Rows<QString, QString, QString, ServerFault> row;  // password, key file, folder
        row("password", Password, "", "", None);
        row("wrong password", "other", "", "", LoginRefused);
        row("no password", "", "", "", LoginRefused);
        row("key", "", "key", "", None);
        row("no key file", "", "none", "", KeyNotUsable);
        row("no key in the file", "", "passwd", "", KeyNotUsable);
        row("key that others may read", "", "open", "", KeyNotUsable);
        row("no key file, but the password", Password, "none", "", None);
        row("key with a passphrase", "phrase", "locked", "", None);
        row("no passphrase", "", "locked", "", KeyNeedsPassphrase);
        row("wrong passphrase", "other", "locked", "", KeyNeedsPassphrase);
        row("folder", "", "key", "/tmp", None);
        row("no folder", "", "key", "none", FolderMissing);
        row("a file", "", "key", "/etc/passwd", FolderMissing);
        row("folder of others", "", "key", "closed/inner", FolderRefused);
    }
    void LogsIn() {
        const auto [password, keyFile, folder, fault] =
            Row<QString, QString, QString, ServerFault>();
        SshBench bench;
        if (!bench.Real.Start()) QSKIP(qPrintable(bench.Real.WhyNot()));
        const QString key = bench.Real.Own(keyFile);
        if (keyFile == "open" || keyFile == "locked")
            QVERIFY(QFile::copy(bench.Real.Own("key"), key));
        if (keyFile == "open") QVERIFY(QFile::setPermissions(key, QFile::Permissions(0x6644)));
        if (keyFile == "locked")
            static_cast<void>(OutputOf({"-q", "-p", "-N", "phrase", "-f", key}));
        const QString closed = bench.Real.Root() + "closed";
        QVERIFY(QDir().mkpath(closed + "/inner") && QFile::setPermissions(closed, {}));
        ServerAccess access = bench.ByKey();
        access.Password = password;
        access.KeyFile = keyFile.isEmpty() ? QString() : key;
        access.Folder = folder;
        QCOMPARE(bench.Open(access).Is, fault);
        QVERIFY(password.isEmpty() || !bench.Said.join(u'\n').contains(password));
    }
};

// Started by OpenSSH for a question, it answers as the program does.
int main(int argc, char** argv) {
    if (PasswordHelper::Wanted()) return PasswordHelper::Run(argc, argv);
    const QCoreApplication application(argc, argv);
    TestSftpServer test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_sftp_server.moc"
