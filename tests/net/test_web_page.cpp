#include "net/publishing/page_placing.h"
#include "net/publishing/web_page.h"
#include "net/trial_bench.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/scripted_web_server.h"

#include <QCryptographicHash>

using enum PageThere;
using enum ServerAnswer::Fault;

namespace {

QByteArray Shipped() {
    return ReadBytes(QStringLiteral(STILLPOST_PAGE)).replace("\r\n", "\n");
}

QByteArray Between(const QByteArray& text, const QByteArray& before, const QByteArray& end) {
    const qsizetype begin = text.indexOf(before) + before.size();
    return text.mid(begin, text.indexOf(end, begin) - begin);
}

// Puts a page, and keeps what it was asked.
struct PageBench : TrialBench {
    PagePlacing Placing{Wait, Log};
    QList<PageThere> Asked;

    ServerFault Put(const ServerAccess& access, bool replace) {
        return Placing
            .Run(access, {"our cam.html", FilledPage(Shipped(), {}), "644"},
                 [&](PageThere there) {
                     Asked << there;
                     return replace;
                 })
            .Is;
    }
};

}  // namespace

class TestWebPage : public QObject {
    Q_OBJECT

  private slots:
    // Browsers run only the script that the page itself names.
    void IsShippedWhole() {
        const QByteArray page = Shipped();
        QVERIFY(page.size() < 15'000 && IsOurPage(page.left(4096)));
        const QByteArray script = Between(page, "<script>", "</script>");
        QCOMPARE(Between(page, "script-src 'sha256-", "'"),
                 QCryptographicHash::hash(script, QCryptographicHash::Sha256).toBase64());
    }

    void IsFilledIn() {
        const QByteArray page = FilledPage(Shipped(), {.Title = "A \"b\" <c> & ü",
                                                       .Picture = "pw.jpg",
                                                       .Seconds = 90,
                                                       .Earlier = {"pw1.jpg", "pw2.jpg"},
                                                       .EarlierWords = "Frühere Bilder:",
                                                       .Language = "de"});
        const QByteArray title = "A &quot;b&quot; &lt;c&gt; &amp; ü";
        for (const QByteArray& part :
             {"<html lang=\"de\" data-name=\"" + title +
                  "\" data-picture=\"pw.jpg\" data-interval=\"90\" data-history=\"2\"",
              "<title>" + title + "</title>", "<h1>" + title + "</h1>",
              QByteArray("http-equiv=\"refresh\" content=\"90\""),
              "<img src=\"pw.jpg\" alt=\"" + title + "\">",
              QByteArray(
                  "Frühere Bilder: <a href=\"pw1.jpg\">1</a> <a href=\"pw2.jpg\">2</a></p>")})
            QVERIFY2(page.contains(part), part.constData());
        QCOMPARE(Between(page, "<script>", "</script>"),
                 Between(Shipped(), "<script>", "</script>"));
        QVERIFY(IsOurPage(page.left(4096)));
        // Filling it in again changes nothing but what is another.
        QCOMPARE(FilledPage(Shipped(), {}).count("<a "), 0);
        QCOMPARE(FilledPage({}, {}), QByteArray());
    }

    void AsksBeforeItReplaces_data() {
        const Rows<QByteArray, WebFault, bool, QList<PageThere>, bool> row;
        row("nothing there", "", {}, false, {}, true);
        row("its own", Shipped(), {}, false, {}, true);
        row("another, which stays", "mine", {}, false, {Another}, false);
        row("another", "mine", {}, true, {Another}, true);
        row("one that may not be read", "mine", {"GET", "403 No"}, false, {Unknown}, false);
        row("a server that hangs up", "mine", {.Verb = "GET", .Silent = true, .Close = true}, true,
            {Unknown}, true);
    }
    void AsksBeforeItReplaces() {
        const auto [before, fault, replace, asked, put] =
            Row<QByteArray, WebFault, bool, QList<PageThere>, bool>();
        PageBench bench;
        ScriptedWebServer server;
        const QByteArray file = "/cam/our%20cam.html";
        if (!before.isEmpty()) server.Files[file] = before;
        server.Script = {fault};
        const ServerAccess access{.Way = Protocol::Http,
                                  .Server = "127.0.0.1",
                                  .Port = server.serverPort(),
                                  .Folder = "cam"};
        QCOMPARE(bench.Put(access, replace), put ? None : Cancelled);
        QCOMPARE(bench.Asked, asked);
        QVERIFY(server.Files.value(file) == (put ? FilledPage(Shipped(), {}) : before));
        QCOMPARE(server.Files.size(), 1);
        // The same in a folder of this computer.
        if (!fault.Verb.isEmpty()) return;
        const QTemporaryDir folder;
        const QString path = folder.filePath("our cam.html");
        if (!before.isEmpty()) QVERIFY(WriteBytes(path, before));
        bench.Asked.clear();
        QCOMPARE(bench.Put({.Folder = folder.path(), .Local = true}, replace),
                 put ? None : Cancelled);
        QCOMPARE(bench.Asked, asked);
        QVERIFY(ReadBytes(path) == (put ? FilledPage(Shipped(), {}) : before));
    }

    void AsksFtpServers_data() {
        const Rows<Script, QList<PageThere>, ServerFault> row;
        row("nothing there", {Says("SIZE", {"550 none\r\n"})}, {}, None);
        row("no SIZE", {Says("MDTM", {"550 none\r\n"})}, {}, None);
        row("neither", {}, {Unknown}, None);
        row("too large", {Says("SIZE", {"213 99999999\r\n"})}, {Another}, None);
        row("unreadable", {Says("SIZE", {"213 5\r\n"})}, {Another}, None);
        row("SIZE refused",
            {Says("SIZE", {"550 no\r\n"}), Says("MDTM", {"213 20260101000000\r\n"})}, {Another},
            None);
        row("no folder", {Says("CWD", {"550 none\r\n"})}, {}, FolderMissing);
        row("may not store", {Says("STOR", {"553 no\r\n"})}, {Unknown}, MayNotStore);
        row("silent", {{.Verb = "STOR", .Silent = true, .NoDataConnection = true}}, {Unknown},
            DataBlocked);
        row("hangs", {{.Verb = "SIZE", .Silent = true}}, {Unknown}, None);
    }
    void AsksFtpServers() {
        const auto [script, asked, result] = Row<Script, QList<PageThere>, ServerFault>();
        PageBench bench;
        bench.Server.RefuseRenameOver = true;
        bench.Server.Files = {{"our cam.html", "mine"}};
        bench.Server.Script = script;
        const qint64 start = bench.Time.Milliseconds();
        QCOMPARE(bench.Put(bench.Access(), true), result);
        QCOMPARE(bench.Asked, asked);
        QVERIFY(bench.Time.Milliseconds() - start < 120'000);
        const bool put = result == None;
        QCOMPARE(bench.Server.Files.keys(), QStringList("our cam.html"));
        QVERIFY((bench.Server.Files.value("our cam.html") != "mine") == put);
        const bool read = QTest::currentDataTag() == QByteArray("unreadable");
        QCOMPARE(bench.Server.Commands.filter("RETR").size(), read ? 1 : 0);
        QCOMPARE(!bench.Server.Commands.filter("SITE CHMOD 644 our cam.html").isEmpty(), put);
    }

  private:
    using Script = QList<FtpFault>;
};

QTEST_GUILESS_MAIN(TestWebPage)
#include "test_web_page.moc"
