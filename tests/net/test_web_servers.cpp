#include "net/certificates.h"
#include "net/web_bench.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/real_server.h"
#include "support/scripted_web_server.h"

#include <QDir>
#include <QSslCertificate>

using enum ServerAnswer::Fault;

namespace {

const QString User = "k@m $!§ü";
const QString Password = " p$@:!§ü \"x\\ ";
const QString AccessKey = "AKIDEXAMPLE";
const QString SecretKey = "wJalrXUtnFEMI/K7MDENG+bPxRfiCYEXAMPLEKEY";

RealServer* Apache(const QString& scheme, bool encrypted) {
    QStringList arguments{User, Password, scheme};
    if (encrypted) arguments << TestCertificate("server.pem") << TestCertificate("key.pem");
    return new RealServer("apache-server", arguments);
}

ServerAccess To(const RealServer& server, bool encrypted) {
    const auto certificate = QSslCertificate::fromPath(TestCertificate("server.pem")).value(0);
    return {.Way = encrypted ? Protocol::Https : Protocol::Http,
            .Server = "127.0.0.1",
            .Port = server.Port(),
            .User = User,
            .Password = Password,
            .Folder = "a #%?ü b",
            .Trusted = encrypted ? Certificates::Fingerprint(certificate) : QString()};
}

}  // namespace

// Pictures on the servers that are in use.
class TestWebServers : public QObject {
    Q_OBJECT

  private slots:
    void Apache_data() {
        const Rows<QString, bool> row;
        row("basic", "basic", false);
        row("digest", "digest", false);
        row("encrypted", "basic", true);
    }
    void Apache() {
        const auto [scheme, encrypted] = Row<QString, bool>();
        const std::unique_ptr<RealServer> server(::Apache(scheme, encrypted));
        if (!server->Start()) QSKIP(qPrintable(server->WhyNot()));
        const QString folder = server->Root() + "a #%?ü b";
        QVERIFY(QDir().mkpath(folder) && QFile::setPermissions(folder, QFile::Permissions(0x7777)));
        ServerAccess access = To(*server, encrypted);
        WebBench bench(access, TestClock::Patient);
        for (const int size : {1, 100'000, 5'000'000}) {
            const QByteArray content(size, static_cast<char>(size % 251));
            QCOMPARE(bench.Publish(content), ServerAnswer());
            QVERIFY(ReadBytes(folder + "/pw.jpg") == content);
        }
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList("pw.jpg"));
        QCOMPARE(bench.Server->DeleteFile("none").Is, FileMissing);
        QByteArray beginning;
        QCOMPARE(bench.Server->LookAt("none", beginning).Is, FileMissing);
        QCOMPARE(bench.Server->LookAt("pw.jpg", beginning), ServerAnswer());
        QCOMPARE(beginning, QByteArray(4096, static_cast<char>(5'000'000 % 251)));
        QCOMPARE(bench.Talk.filter("401").size(), encrypted ? 0 : 1);
        // Gone and back.
        server->Stop();
        const ServerFault gone = bench.Publish("picture").Is;
        QVERIFY(gone == ConnectionLost || gone == Refused);
        QCOMPARE(bench.Publish("picture").Is, Refused);
        QVERIFY(server->Start());
        QCOMPARE(bench.Publish("picture"), ServerAnswer());
        // What is wrong with the settings.
        access.Password = "other";
        QCOMPARE(WebBench(access, TestClock::Patient).Publish("picture").Is, LoginRefused);
        access = To(*server, encrypted);
        access.Folder = "none";
        QCOMPARE(WebBench(access, TestClock::Patient).Publish("picture").Is, FolderMissing);
        access.Folder = "still";
        QCOMPARE(WebBench(access, TestClock::Patient).Publish("picture").Is, Forbidden);
        access.Way = encrypted ? Protocol::Http : Protocol::Https;
        QCOMPARE(WebBench(access, TestClock::Patient).Publish("picture").Is,
                 encrypted ? EncryptionNeeded : NoEncryption);
    }

    void Storage() {
        RealServer server("s3-server", {AccessKey, SecretKey, "eu-1"});
        if (!server.Start()) QSKIP(qPrintable(server.WhyNot()));
        const ServerAccess access{.Way = Protocol::S3,
                                  .Server = QString("http://127.0.0.1:%1").arg(server.Port()),
                                  .User = AccessKey,
                                  .Password = SecretKey,
                                  .Folder = "a #%?ü+b",
                                  .Region = "eu-1",
                                  .Bucket = "cam",
                                  .CacheSeconds = 5};
        const auto tried = [](const ServerAccess& with, int hours = 0) {
            WebBench bench(with, TestClock::Patient);
            bench.Time.SetNow(QDateTime::currentDateTime().addSecs(hours * 3600));
            return bench.Publish("picture");
        };
        WebBench bench(access, TestClock::Patient);
        bench.Time.SetNow(QDateTime::currentDateTime());
        for (const int size : {1, 100'000, 5'000'000}) {
            const QByteArray content(size, 'x');
            QCOMPARE(bench.Publish(content), ServerAnswer());
            QCOMPARE(bench.Server->RenameFile("pw.jpg", "ü 1.jpg"), ServerAnswer());
            const QStringList files = QDir(server.Root()).entryList(QDir::Files);
            QCOMPARE(files, QStringList("a%20%23%25%3F%C3%BC%2Bb%2F%C3%BC%201.jpg"));
            QVERIFY(ReadBytes(server.Root() + files.first()) == content);
        }
        QCOMPARE(bench.Server->KeepFile("none", "kept").Is, FileMissing);
        QByteArray beginning;
        QCOMPARE(bench.Server->LookAt("none", beginning).Is, FileMissing);
        QCOMPARE(bench.Server->LookAt("ü 1.jpg", beginning), ServerAnswer());
        QVERIFY(beginning.startsWith(QByteArray(4096, 'x')));
        ServerAccess wrong = access;
        wrong.Password += "x";
        QCOMPARE(tried(wrong).Is, SignatureRefused);
        wrong = access;
        wrong.User += "x";
        QCOMPARE(tried(wrong).Is, LoginRefused);
        wrong = access;
        wrong.Region = "";
        QCOMPARE(tried(wrong), (ServerAnswer{WrongRegion, "eu-1"}));
        wrong = access;
        wrong.Bucket = "none";
        QCOMPARE(tried(wrong).Is, BucketMissing);
        QCOMPARE(tried(access, 1).Is, ClockWrong);
        QCOMPARE(tried(access), ServerAnswer());
    }
};

QTEST_GUILESS_MAIN(TestWebServers)
#include "test_web_servers.moc"
