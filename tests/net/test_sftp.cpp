#include "net/sftp/host_keys.h"
#include "net/sftp/password_teller.h"
#include "net/sftp/sftp_conversation.h"
#include "net/sftp/ssh_words.h"
#include "net/sftp_bench.h"
#include "support/data_rows.h"

#include <QSignalSpy>

using enum ServerAnswer::Fault;
using Question = PasswordTeller::Question;

namespace {

const QString Password = QStringLiteral("sécret \"x");

QByteArray Bytes(const char* hex) {
    return QByteArray::fromHex(hex);
}

QString StandIn() {
    return QCoreApplication::applicationDirPath() + "/stand_in_ssh";
}

struct ServedFolder {
    QTemporaryDir Served;
};

// A server that is no more than a program on this computer, with these manners.
struct StandInBench : ServedFolder, SftpBench {
    explicit StandInBench(const char* manners)
        : SftpBench({StandIn(), {QString::fromLatin1(manners), Served.path()}}) {}

    // From now on it says nothing that is worth waiting for.
    void FallSilent() { Time.SetQuiet(60); }

    [[nodiscard]] ServerAnswer Enter() {
        return Open({.Server = "127.0.0.1", .Port = 0, .User = "cam", .Password = password});
    }
    [[nodiscard]] QByteArray Public(const QString& name) const {
        return ReadBytes(Served.filePath(name));
    }
    QString password = Password;
};

}  // namespace

class TestSftp : public QObject {
    Q_OBJECT

  private slots:
    void CutsRepliesOutOfAnyBytes_data() {
        const Rows<QByteArray, int, bool> row;
        row("two in one chunk",
            Bytes("00000005 02 00000003"
                  "0000000d 65 00000001 00000004 00000000"),
            2, false);
        row("status without words", Bytes("00000009 65 00000001 00000000"), 1, false);
        row("in the middle", Bytes("00000009 65 000000"), 0, false);
        row("no length yet", Bytes("0000"), 0, false);
        row("empty", Bytes("00000000"), 0, true);
        row("giant", Bytes("fffffff0 65"), 0, true);
        row("text instead", "Welcome", 0, true);
        row("kind that nobody asked for", Bytes("00000005 68 00000001"), 0, true);
        row("words beyond the end", Bytes("0000000d 65 00000001 00000004 ffffffff"), 0, true);
        row("attributes cut off", Bytes("00000009 69 00000001 00000005"), 0, true);
        row("handle too long", Bytes("0000010a 66 00000001 00000101") + QByteArray(0x101, 'x'), 0,
            true);
    }
    void CutsRepliesOutOfAnyBytes() {
        const auto [bytes, count, broken] = Row<QByteArray, int, bool>();
        // All at once, and byte by byte.
        for (const qsizetype step : {bytes.size(), qsizetype{1}}) {
            Sftp::Replies replies;
            int found = 0;
            for (qsizetype at = 0; at < bytes.size(); at += step) {
                replies.Add(bytes.mid(at, step));
                while (replies.Next()) ++found;
            }
            QCOMPARE(found, count);
            QCOMPARE(replies.Broken(), broken);
        }
    }

    void KeepsTheConversationInOrder() {
        QByteArray said;
        SftpConversation talk([&](const QByteArray& bytes) { said = bytes; });
        talk.Begin();
        QCOMPARE(said, Bytes("00000005 01 00000003"));
        talk.Receive(Bytes("00000005 02 00000003"));
        const Sftp::Request open = talk.New(Sftp::Kind::Open).Text("a").Number(2).LongNumber(1);
        talk.Ask(open);
        QCOMPARE(said, Bytes("00000016 03 00000001 00000001 61 00000002 0000000000000001"));
        talk.Forget();
        // The file is open, and nobody waits for it any more.
        talk.Receive(Bytes("0000000a 66 00000001 00000001 68"));
        QCOMPARE(said, Bytes("0000000a 04 00000002 00000001 68"));
        QVERIFY(!talk.Broken());
        talk.Receive(Bytes("00000009 65 00000007 00000000"));
        QVERIFY(talk.Broken());
    }

    void UnderstandsWhatOpenSshSays_data() {
        const Rows<QString, ServerFault, QString> row;
        const QString denied = "\ncam@host: Permission denied (publickey,password).";
        row("refused", "ssh: connect to host 127.0.0.1 port 1: Connection refused", Refused,
            "ssh: ");
        row("timed out", "ssh: connect to host h port 22: Connection timed out", NoAnswer, "ssh: ");
        row("no route", "ssh: connect to host h port 22: No route to host", Unreachable, "ssh: ");
        row("no name", "ssh: Could not resolve hostname h: Name or service not known", HostNotFound,
            "ssh: ");
        row("no greeting",
            "Connection timed out during banner exchange\nConnection to h port 21 timed out",
            NotThisWay, "Connection");
        row("new",
            "No ED25519 host key is known for [h]:2 and you have requested strict checking.\n"
            "Host key verification failed.",
            HostKeyUnknown, "");
        row("changed",
            "@    WARNING: REMOTE HOST IDENTIFICATION HAS CHANGED!     @\nsent by the remote host "
            "is\n"
            "SHA256:+I5xXCYG1q7OSIwKjpJCkoN/5TNXUjRZSTtHFY38N6/.\nHost key verification failed.",
            HostKeyChanged, "SHA256:+I5xXCYG1q7OSIwKjpJCkoN/5TNXUjRZSTtHFY38N6/");
        row("of a machine on the way",
            "Host key verification failed.\nConnection closed by UNKNOWN port 65535", SshFailed,
            "Host key");
        row("wrong password", "Banner" + denied, LoginRefused, "cam@host: ");
        row("no key file", "Warning: Identity file k not accessible: No such file." + denied,
            KeyNotUsable, "Warning");
        row("bad key file", "Load key \"k\": error in libcrypto" + denied, KeyNotUsable, "Load");
        row("no cipher", "Unable to negotiate with h port 22: no matching cipher found.",
            EncryptionBroken, "Unable");
        row("no file transfer", "subsystem request failed on channel 0", ServerRefused,
            "subsystem");
        row("closes at once", "kex_exchange_identification: read: Connection reset by peer",
            ServerRefused, "kex");
        row("option", "command-line: line 0: Bad configuration option: foo", SshFailed,
            "command-line");
        row("nothing", "", SshFailed, "");
    }
    void UnderstandsWhatOpenSshSays() {
        const auto [words, fault, reply] = Row<QString, ServerFault, QString>();
        const ServerAnswer answer = SshWords::Judge(words.split(u'\n'), true);
        QCOMPARE(answer.Is, fault);
        QCOMPARE(answer.Reply.left(reply.size()), reply);
    }

    void TellsThePasswordOnlyToItsServer_data() {
        const Rows<QString, Question> row;
        row("password", "cam@host's password: ", Question::Password);
        row("in the server's words", "(cam@Host) Kennwort: ", Question::Password);
        row("older OpenSSH", "Password: ", Question::Password);
        row("another server", "cam@jump's password: ", Question::Foreign);
        row("another server's words", "(cam@jump) Password: ", Question::Foreign);
        row("host key", "The authenticity of host 'host' can't be established.\n(yes/no)? ",
            Question::Foreign);
        row("key", "Enter passphrase for key '/k': ", Question::Passphrase);
    }
    void TellsThePasswordOnlyToItsServer() {
        const auto [words, question] = Row<QString, Question>();
        const SshLogin login = SshLogin::Of("user cam\nhostname host\nproxyjump none\n");
        QCOMPARE(PasswordTeller::Understand(words, login), question);
        // With others on the way only who says his name may ask.
        const SshLogin far =
            SshLogin::Of("user cam\nhostname other\nhostkeyalias host\nproxyjump jump\n");
        const bool nameless = question == Question::Password && !words.contains(u'@');
        QCOMPARE(PasswordTeller::Understand(words, far), nameless ? Question::Foreign : question);
    }

    void NamesKeysAsOpenSshDoes() {
        const QByteArray key =
            " ssh-ed25519 AAAAC3NzaC1lZDI1NTE5AAAAIAEOrqu9DupFXKMwNumcIoZMuXmsCgd6O2tvQCeY8rrZ";
        QCOMPARE(HostKeys::FingerprintOf("[127.0.0.1]:2299" + key + "\n"),
                 "SHA256:tI5xXCYG1q7OSIwKjpJCkoN/5TNXUjRZSTtHFY38N6E");
        QCOMPARE(HostKeys::FingerprintOf("nonsense\n"), "");
    }

    void EndsWhateverTheServerDoes_data() {
        const Rows<ServerFault, ServerFault, ServerFault> row;  // of Open, SendFile, RenameFile
        row("plain", None, None, None);
        row("old", None, None, ReplaceRefused);
        row("silent", NoAnswer, None, None);
        row("shouts", NotThisWay, None, None);
        row("giant", NotThisWay, None, None);
        row("ancient", NotThisWay, None, None);
        row("closed", None, MayNotStore, None);
        row("full", None, NoRoom, None);
        row("cut", None, ConnectionLost, None);
        row("stuck", None, NoAnswer, None);
        row("gone", None, None, ConnectionLost);
        row("killed", SshFailed, None, None);
        row("killed later", None, ConnectionLost, None);
    }
    void EndsWhateverTheServerDoes() {
        const auto [open, send, rename] = Row<ServerFault, ServerFault, ServerFault>();
        StandInBench bench(QTest::currentDataTag());
        QVERIFY(WriteBytes(bench.Served.filePath("pw.jpg"), "old"));
        const qint64 start = bench.Time.Milliseconds();
        if (open == NoAnswer) bench.FallSilent();
        QCOMPARE(bench.Enter().Is, open);
        if (send == NoAnswer) bench.FallSilent();
        if (open == None) {
            QCOMPARE(bench.Send(QByteArray(100'000, 'x'), "1pw.jpg").Is, send);
            QCOMPARE(bench.Server.IsOpen(), send != ConnectionLost && send != NoAnswer);
        }
        if (open == None && send == None)
            QCOMPARE(bench.Server.RenameFile("1pw.jpg", "pw.jpg").Is, rename);
        const bool replaced = open == None && send == None && rename == None;
        QCOMPARE(bench.Public("pw.jpg"), replaced ? QByteArray(100'000, 'x') : QByteArray("old"));
        QVERIFY(bench.Time.Milliseconds() - start < 80'000);
    }

    void KeepsThePublicPictureWhileTheHistoryMoves_data() {
        const Rows<bool> row;  // the picture has both names
        row("plain", true);
        row("old", false);
    }
    void KeepsThePublicPictureWhileTheHistoryMoves() {
        const auto [both] = Row<bool>();
        StandInBench bench(QTest::currentDataTag());
        QVERIFY(bench.Enter().Fine());
        QVERIFY(bench.Send("a", "pw.jpg").Fine());
        if (both) QVERIFY(bench.Send("older", "pw1.jpg").Fine());
        QVERIFY(bench.Server.KeepFile("pw.jpg", "pw1.jpg").Fine());
        QCOMPARE(bench.Public("pw1.jpg"), "a");
        QCOMPARE(bench.Public("pw.jpg"), both ? "a" : "");
        QCOMPARE(bench.Server.KeepFile("pw2.jpg", "pw3.jpg").Is, FileMissing);
        QCOMPARE(bench.Server.DeleteFile("pw1.jpg").Is, None);
        QCOMPARE(bench.Server.DeleteFile("pw1.jpg").Is, FileMissing);
        QCOMPARE(bench.Server.ChangeMode("pw.jpg", "644"), true);
    }

    void TellsThePasswordToNobodyElse_data() {
        const Rows<QString, ServerFault> row;
        row("right", Password, None);
        row("wrong", "other", LoginRefused);
    }
    void TellsThePasswordToNobodyElse() {
        const auto [password, fault] = Row<QString, ServerFault>();
        StandInBench bench("asks");
        bench.password = password;
        QCOMPARE(bench.Enter().Is, fault);
        QVERIFY(!bench.Said.join(u'\n').contains(password));
    }

    void LetsGoWithinASecond() {
        StandInBench bench("stuck");
        QVERIFY(bench.Enter().Fine());
        bench.FallSilent();
        const qint64 start = bench.Time.Milliseconds();
        Timer operatorsHand(bench.Time, 5000);
        connect(&operatorsHand, &Timer::Tick, &bench.Server, &PictureServer::Cancel);
        operatorsHand.SetEnabled(true);
        QCOMPARE(bench.Send(QByteArray(5'000'000, 'x'), "1pw.jpg").Is, Cancelled);
        QVERIFY(bench.Time.Milliseconds() - start <= 6000);
        // What is asked next does not wait for it.
        QVERIFY(bench.Server.IsOpen());
    }

    void SaysWhyOpenSshDoesNotStart_data() {
        const Rows<SshProgram, ServerFault> row;
        row("missing", {"/nowhere/ssh", {}}, NoSsh);
        // Made below: the system refuses to start it, as without memory or processes.
        row("refused", {}, SshFailed);
    }
    void SaysWhyOpenSshDoesNotStart() {
        auto [program, fault] = Row<SshProgram, ServerFault>();
        const QTemporaryDir folder;
        if (program.Path.isEmpty()) {
            program.Path = folder.filePath("no.exe");
            QVERIFY(WriteBytes(program.Path, "no program"));
            QVERIFY(QFile::setPermissions(program.Path, QFile::ReadOwner | QFile::ExeOwner));
        }
        SftpBench bench(program);
        const ServerAnswer answer = bench.Open({.Server = "127.0.0.1"});
        QCOMPARE(answer.Is, fault);
        QCOMPARE(answer.Reply.isEmpty(), fault == NoSsh);
        QVERIFY(!bench.Server.IsOpen());
    }
};

// Started by OpenSSH for a question, it answers as the program does.
int main(int argc, char** argv) {
    if (PasswordHelper::Wanted()) return PasswordHelper::Run(argc, argv);
    const QCoreApplication application(argc, argv);
    TestSftp test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_sftp.moc"
