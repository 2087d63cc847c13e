#include "net/ftp_bench.h"
#include "support/data_rows.h"
#include "support/test_certificates.h"

#include <QSslConfiguration>

using Script = QList<FtpFault>;
using enum ServerAnswer::Fault;

namespace {
const QString NameTimeOut = QStringLiteral("Zeitlimit beim Ausführen von \"%1\" überschritten");
const QString Failed = QStringLiteral("Der Befehl \"%1\" ist fehlgeschlagen.");
const QString NoConnection = QStringLiteral(
    "Die Operation \"%1\" konnte nicht ausgeführt werden, keine aktive Verbindung vorhanden.");
const QString Unreached = QStringLiteral("Verbindungsanfrage hat das Zeitlimit überschritten");
const QString InStore = QStringLiteral("in the system's store");

QString FingerprintOf(const QByteArray& certificate) {
    return Certificates::Fingerprint(QSslCertificate(certificate));
}
}  // namespace

class TestFtpControl : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        bench = std::make_unique<ScriptedFtpBench>();
        server = &bench->Server;
    }

    void LogsIn_data() {
        const Rows<Script, QString, QString> rows;
        const auto row = [&rows](const char* name, const Script& script, const QString& code = "0",
                                 const QString& text = {}) { rows(name, script, code, text); };
        const FtpFault refused = Says("PASS", {"530 no 230\r\n"});
        row("ordinary", {});
        row("greeting late", {{.Verb = "CONNECT", .DelayMilliseconds = 29'000}});
        row("greeting in pieces", {Says("CONNECT", {"2", "2", "0 a", "\r\n"})});
        row("greeting of two chunks",
            {Says("CONNECT", {"220-Wait, 230 users\r\n", "b\r\n530 c\r\n220 b 230\r\n"})});
        row("other greeting", {Says("CONNECT", {"hello\r\n"})}, "1510", Unreached);
        row("user needs no password", {Says("USER", {"230 in\r\n"})}, "230", Failed.arg("USER"));
        row("user refused", {Says("USER", {"530 who?\r\n"})}, "530", "530 who?\r\n cam");
        row("230 in the name, login refused", {Says("USER", {"331 for cam230\r\n"}), refused},
            "530", "530 no 230\r\n cam");
        row("password late by an hour", {{.Verb = "PASS", .DelayMilliseconds = 3'600'000}});
        row("refused in pieces", {Says("PASS", {"5", "30 no\r\n"})}, "530", "530 no\r\n cam");
        row("refused in lines", {Says("PASS", {"530-no\r\n", "530 way\r\n"})}, "530",
            "530-no\r\n530 way\r\n cam");
        row("refused in UTF-8, cut, and Latin-1",
            {Says("PASS", {"530-b\u00c3", "\u00a4r\r\n530 b\u00e4", "\r\n"})}, "530",
            "530-b\u00e4r\r\n530 b\u00e4\r\n cam");
        row("greeting never closed", {Says("CONNECT", {"220-a\r\n"})});
        row("refusal never closed", {Says("PASS", {"530-a\r\n"})}, "530", "530-a\r\n cam");
        row("user in lines, login never closed",
            {Says("USER", {"331-230 a\r\n", "331 b\r\n"}), Says("PASS", {"2", "30-c\r\n"})});
        const QString endless = "530-" + QString(70'000, u'x');
        row("refused at great length", {Says("PASS", {endless, endless + "\r\n530 a\r\n"})}, "530",
            endless.left(65536) + " cam");
        row("closed at the password", {Closes("PASS")}, "1510", Unreached);
    }
    void LogsIn() {
        const auto [script, code, text] = Row<Script, QString, QString>();
        const bool connected = code == "0" || code == "230";
        server->Script = script;
        QCOMPARE(bench->Client.Connect(), connected);
        QCOMPARE(bench->Client.IsConnected(), connected);
        QCOMPARE(bench->Client.GetLastErrorCode(), code);
        QCOMPARE(bench->Client.GetLastErrorString(), text);
        for (const auto& command : bench->Sent)
            QVERIFY(!command.first().toString().contains("PASS"));
        if (!connected) return;
        QVERIFY(bench->Clock.RunUntil([this] { return server->Commands.size() >= 2; }, 1000));
        QCOMPARE(server->Commands.mid(0, 2), (QStringList{"USER cam", "PASS secret"}));
        QVERIFY(!bench->Display.LabelVisible && !bench->Display.GaugeVisible);
        if (!script.isEmpty() && script.first().Verb == "USER") return;
        // No late line of the login is taken for the reply to the next command.
        server->Files["a"] = "x";
        QVERIFY(bench->Client.KillFile({}, "a"));
    }

    void Encrypts_data() {
        const Rows<Script, QByteArray, QString, bool, ServerFault> row;
        using namespace TestCertificates;
        const QString good = FingerprintOf(Good);
        row("accepted", {}, Good, good.toLower().remove(u':'), false, None);
        row("accepted, at once", {}, Good, good, true, None);
        row("vouched for", {}, Good, InStore, false, None);
        row("nobody vouches", {}, Good, {}, false, CertificateUnknown);
        row("another name", {}, Elsewhere, InStore, false, CertificateWrongName);
        row("expired", {}, Expired, InStore, true, CertificateExpired);
        row("changed", {}, Elsewhere, good, false, CertificateChanged);
        row("changed to a vouched one", {}, Good, InStore + FingerprintOf(Elsewhere), false,
            CertificateChanged);
        row("no TLS", {}, {}, good, false, NoEncryption);
        row("no TLS at once", {}, {}, good, true, NotThisWay);
        row("no TLS for data", {Says("PROT", {"536 no\r\n"})}, Good, good, false, NoEncryption);
        row("words in the clear", {Says("AUTH", {"234 go\r\n220 b\r\n"})}, Good, good, false,
            EncryptionBroken);
        const auto ends = [](const QStringList& chunks, bool closes) {
            return FtpFault{
                .Verb = "AUTH", .Chunks = chunks, .CloseControl = closes, .NoDataConnection = true};
        };
        row("nonsense", {ends({"234 go\r\n", "230 b\r\n"}, false)}, Good, good, false,
            EncryptionBroken);
        row("silence", {ends({"234 go\r\n"}, false)}, Good, good, false, EncryptionBroken);
        row("closed", {ends({"234 go\r\n"}, true)}, Good, good, false, EncryptionBroken);
    }
    void Encrypts() {
        const auto [script, certificate, trusted, atOnce, fault] =
            Row<Script, QByteArray, QString, bool, ServerFault>();
        const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
        if (trusted.startsWith(InStore)) {
            QSslConfiguration vouching = usual;
            vouching.addCaCertificate(QSslCertificate(certificate));
            QSslConfiguration::setDefaultConfiguration(vouching);
        }
        server->Script = script;
        if (!certificate.isEmpty()) server->SetTls(certificate, atOnce);
        bench->Client.SetSecurity(atOnce ? FtpSecurity::Implicit : FtpSecurity::Explicit);
        bench->Client.SetTrusted(QString(trusted).remove(InStore));
        QCOMPARE(bench->Client.Connect(), fault == None);
        QSslConfiguration::setDefaultConfiguration(usual);
        QCOMPARE(bench->Client.IsConnected(), fault == None);
        QCOMPARE(bench->Client.Fault().Is, fault);
        QCOMPARE(bench->Errors.count(), fault == None ? 0 : 1);
        const QString shown = certificate.isEmpty() ? QString() : FingerprintOf(certificate);
        const bool ofCertificate = fault >= CertificateUnknown && fault <= CertificateChanged;
        QVERIFY(!ofCertificate || bench->Client.Fault().Reply == shown);
        const bool loggedIn = fault == None || server->Script.value(0).Verb == "PROT";
        const QStringList exchange{"USER cam", "PASS secret", "PBSZ 0", "PROT P"};
        if (!atOnce) QCOMPARE(server->Commands.value(0), QString("AUTH TLS"));
        QCOMPARE(server->Commands.mid(atOnce ? 0 : 1, 4), loggedIn ? exchange : QStringList());
    }

    void EncryptsData_data() {
        const Rows<Script, QByteArray, bool, ServerFault> row;
        using namespace TestCertificates;
        row("active", {}, Good, false, None);
        row("passive", {}, Good, true, None);
        row("in the clear", {}, {}, true, EncryptionBroken);
        row("another server", {}, Elsewhere, false, EncryptionBroken);
        row("session wanted", {Says("DONE", {"522 reuse required\r\n"})}, Good, false,
            SessionNotResumed);
        row("session wanted, said otherwise",
            {Says("DONE", {"425 a: Operation not permitted\r\n"})}, Good, false, SessionNotResumed);
        row("refused", {Says("STOR", {"553 no\r\n"})}, Good, true, None);
    }
    void EncryptsData() {
        const auto [script, certificate, passive, fault] =
            Row<Script, QByteArray, bool, ServerFault>();
        server->Script = script;
        server->SetTls(TestCertificates::Good, false);
        server->DataCertificate = certificate;
        bench->Trust(TestCertificates::Good);
        bench->Client.SetPassive(passive);
        QVERIFY(bench->Client.Connect());
        const bool sent = bench->Put(Content(100'000)) == 226;
        QCOMPARE(sent, fault == None && script.isEmpty());
        QCOMPARE(bench->Client.Fault().Is, fault);
        QVERIFY(!sent || server->Files["a"] == Content(100'000));
    }

    void CountsDown() {
        server->Script = {{.Verb = "CONNECT", .Silent = true}};
        const qint64 start = bench->Clock.Milliseconds();
        QVERIFY(!bench->Client.Connect());
        QCOMPARE(bench->Clock.Milliseconds() - start, 31'000);
        QCOMPARE(bench->Client.GetLastErrorString(), Unreached);
        QList<int> seconds;
        for (int second = 25; second >= 0; --second) seconds << second;
        QCOMPARE(bench->Display.LabelSeconds, seconds);
        QCOMPARE(bench->Display.GaugeSeconds, seconds);
        QCOMPARE(bench->Display.Statuses, QStringList{"Time out !"});
        QVERIFY(!bench->Display.LabelVisible && !bench->Display.GaugeVisible);
    }

    void Exchanges_data() {
        const Rows<Script, QString, QString> rows;
        const auto row = [&rows](const char* name, const Script& script, const QString& code = "0",
                                 const QString& text = {}) { rows(name, script, code, text); };
        const auto says = [](const QStringList& chunks, int occurrence = 1) {
            return FtpFault{.Verb = "DELE", .Occurrence = occurrence, .Chunks = chunks};
        };
        const QString failed = Failed.arg("DELE");
        const QString tooLate = NameTimeOut.arg("DELE");
        row("prompt", {});
        row("too late", {{.Verb = "DELE", .DelayMilliseconds = 31'500}}, "500", tooLate);
        row("missing", {{.Verb = "DELE", .Silent = true}}, "500", tooLate);
        row("cut in the code", {says({"2", "50 a\r\n"})});
        row("with another reply", {says({"250 a\r\n226 b\r\n"})});
        row("several lines in several chunks", {says({"250-a\r\n", "226 b\r\n25", "0 c\r\n"})});
        row("never closed", {says({"250-a\r\n"})});
        row("closed late", {says({"250-a\r\n"}), says({"250 late\r\n", "550 no\r\n"}, 2)});
        row("refusal never closed", {says({"550-a\r\n"})}, "550", failed);
        row("421 and closed", {{.Verb = "DELE", .Chunks = {"421 a\r\n"}, .CloseControl = true}},
            "421", failed);
        row("closed without a word", {Closes("DELE")}, "500", NoConnection.arg("DELE"));
    }
    void Exchanges() {
        const auto [script, code, text] = Row<Script, QString, QString>();
        server->Files["a b.jpg"] = "x";
        server->Script = script;
        QVERIFY(bench->Client.Connect());
        bench->Sent.clear();
        QCOMPARE(bench->Client.KillFile({}, "a b.jpg"), code == "0");
        QCOMPARE(bench->Client.GetLastErrorCode(), code);
        QCOMPARE(bench->Client.GetLastErrorString(), text);
        QCOMPARE(bench->Errors.count(), code == "0" ? 0 : 1);
        QCOMPARE(bench->Sent, (QList<QVariantList>{{"DELE a b.jpg"}}));
        QCOMPARE(server->Commands.last(), QStringLiteral("DELE a b.jpg"));
        if (code == "500" || code == "421") return;
        // Nothing of it is left for the next command.
        const qint64 start = bench->Clock.Milliseconds();
        QVERIFY(!bench->Client.KillFile({}, "none"));
        QCOMPARE(bench->Client.GetLastErrorCode(), QStringLiteral("550"));
        QVERIFY(bench->Clock.Milliseconds() - start < 6000);
    }

    void Executes_data() {
        const Rows<FtpFault, QString, QString, int> row;
        row("reply", {}, "NOOP", "200 fine\r\n", 200);
        row("refusal", {}, "cwd nowhere", "550 no such folder\r\n", 550);
        row("several lines", Says("NOOP", {"200-a\r\n", "550 b\r\n200 c\r\n"}), "NOOP",
            "200-a\r\n550 b\r\n200 c\r\n", 200);
        row("never closed", Says("NOOP", {"200-a\r\n"}), "NOOP", "200-a\r\n", 200);
        row("silent", {.Verb = "NOOP", .Silent = true}, "NOOP",
            "500 Der Server hat das Zeitlimit überschritten.", 0);
        row("closed", Closes("NOOP"), "NOOP", "500 nicht verbunden!", 0);
        row("two commands", {}, "NOOP\r\nDELE a", "500 Steuerzeichen sind nicht erlaubt.", 0);
    }
    void Executes() {
        const auto [fault, line, response, code] = Row<FtpFault, QString, QString, int>();
        QString answer;
        QVERIFY(!bench->Client.Execute(line, answer));
        QCOMPARE(answer, QStringLiteral("500 nicht verbunden!"));
        QCOMPARE(bench->Client.Ask(line), 0);
        server->Script = {fault};
        QVERIFY(bench->Client.Connect());
        bench->Sent.clear();
        const qint64 start = bench->Clock.Milliseconds();
        QCOMPARE(bench->Client.Ask(line), code);
        QVERIFY(bench->Clock.Milliseconds() - start <= 15'000);
        QCOMPARE(bench->Sent.count(), line.contains(u'\r') ? 0 : 1);
        bench->Sent.clear();
        // Who has not answered must not pass its late word for the reply to the next command.
        const bool lost = code == 0 && !line.contains(u'\r');
        QCOMPARE(bench->Client.IsConnected(), !lost);
        if (lost) QVERIFY(bench->Client.Connect());
        bench->Sent.clear();
        QCOMPARE(bench->Client.Execute(line, answer), !response.startsWith(u"500"));
        QCOMPARE(answer, response);
        QCOMPARE(bench->Sent.count() + bench->Errors.count(), 0);
    }

    void RefusesControlCharacters() {
        FTP& client = bench->Client;
        const QString bad = QStringLiteral("a\r\nDELE b");
        for (auto set : {&FTP::SetRemoteHost, &FTP::SetUserName, &FTP::SetPassword}) {
            (client.*set)(bad);
            QVERIFY(!client.Connect());
            (client.*set)(QStringLiteral("127.0.0.1"));
        }
        QCOMPARE(server->Connections, 0);
        QVERIFY(client.Connect());
        const QStringList before = server->Commands;
        const QString local = bench->Local("x");
        for (const QString& name : {bad, QString("a\t"), "a" + QString(QChar(0))}) {
            QVERIFY(!client.PutFile(name, "a", local, false));
            QVERIFY(!client.PutFile({}, name, local, false));
            QVERIFY(!client.KillFile({}, name));
            QVERIFY(!client.Rename({}, "a", name));
        }
        QCOMPARE(server->Commands, before);
    }

  private:
    std::unique_ptr<ScriptedFtpBench> bench;
    ScriptedFtpServer* server = nullptr;
};

QTEST_GUILESS_MAIN(TestFtpControl)
#include "test_ftp_control.moc"
