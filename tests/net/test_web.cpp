#include "net/certificates.h"
#include "net/web/http_password.h"
#include "net/web_bench.h"
#include "support/data_rows.h"
#include "support/dead_address.h"
#include "support/scripted_web_server.h"

#include <QSslCertificate>
#include <QSslConfiguration>

using enum ServerAnswer::Fault;
using Read = HttpAnswerReader::State;

// Pictures on web servers, against a server in this process.
class TestWeb : public QObject {
    Q_OBJECT

  private slots:
    void ReadsAnswers_data() {
        const Rows<QByteArray, Read, int, QByteArray, bool> row;
        const QByteArray head = "HTTP/1.1 200 OK\r\n";
        row("length", head + "content-LENGTH: 3\r\n\r\nabc", Read::Whole, 200, "abc", true);
        row("chunks",
            head +
                "Transfer-Encoding: gzip, Chunked\r\n\r\n2;x=y\r\nab\r\n1\r\nc\r\n0\r\nT: "
                "1\r\n\r\n",
            Read::Whole, 200, "abc", true);
        row("to the end", head + "\r\nabc", Read::Whole, 200, "abc", false);
        row("none", "HTTP/1.1 204 No Content\r\nContent-Length: 5\r\n\r\n", Read::Whole, 204, "",
            true);
        row("after 100", "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 201\n\n", Read::Whole, 201, "",
            false);
        row("closes", head + "Connection: Close\r\nContent-Length: 0\r\n\r\n", Read::Whole, 200, "",
            false);
        row("old", "HTTP/1.0 200 OK\r\nContent-Length: 0\r\n\r\n", Read::Whole, 200, "", false);
        row("two at once", head + "Content-Length: 0\r\n\r\n" + head, Read::Whole, 200, "", false);
        row("long", head + "Content-Length: 70000\r\n\r\n" + QByteArray(70'000, 'x'), Read::Whole,
            200, QByteArray(65'536, 'x'), true);
        row("cut head", "HTTP/1.1 200 OK\r\nContent-Le", Read::Cut, 200, "", false);
        row("cut body", head + "Content-Length: 4\r\n\r\nabc", Read::Cut, 200, "abc", false);
        row("cut chunk", head + "Transfer-Encoding: chunked\r\n\r\n5\r\nabc", Read::Cut, 200, "abc",
            false);
        row("another protocol", "SSH-2.0-OpenSSH_9.2\r\n", Read::Nonsense, 0, "", false);
        row("no number", "HTTP/1.1 abc\r\n\r\n", Read::Nonsense, 0, "", false);
        row("short", "HTTP/1.1\r\n\r\n", Read::Nonsense, 0, "", false);
        row("negative", head + "Content-Length: -1\r\n\r\n", Read::Nonsense, 200, "", false);
        row("giant", head + "Content-Length: 99999999999999999999\r\n\r\n", Read::Nonsense, 200, "",
            false);
        row("two lengths", head + "Content-Length: 1\r\nContent-Length: 2\r\n\r\nab",
            Read::Nonsense, 200, "", false);
        row("chunk without number", head + "Transfer-Encoding: chunked\r\n\r\nxyz\r\n",
            Read::Nonsense, 200, "", false);
        row("chunk longer than it says", head + "Transfer-Encoding: chunked\r\n\r\n2\r\nabc\r\n",
            Read::Nonsense, 200, "ab", false);
        row("endless line", head + "X: " + QByteArray(66'000, 'x'), Read::Nonsense, 200, "", false);
        row("endless head", head + QByteArray("X: 1\r\n").repeated(30'000), Read::Nonsense, 200, "",
            false);
    }
    void ReadsAnswers() {
        const auto [bytes, state, status, body, keeps] =
            Row<QByteArray, Read, int, QByteArray, bool>();
        for (const qsizetype step : {bytes.size(), qsizetype(1), qsizetype(7)}) {
            HttpAnswerReader reader;
            for (qsizetype at = 0; at < bytes.size(); at += step) reader.Feed(bytes.mid(at, step));
            reader.End();
            QCOMPARE(reader.Is(), state);
            QCOMPARE(reader.Answer().Status, status);
            QCOMPARE(reader.Answer().Body, body);
            QCOMPARE(reader.KeepsLine(), keeps);
        }
    }

    void Addresses_data() {
        const Rows<Protocol, QString, int, QByteArray> row;
        row("http", Protocol::Http, "dav.example.org", 21,
            "http://dav.example.org/a%20%23%25%C3%BC/");
        row("https", Protocol::Https, " dav.example.org ", 0,
            "https://dav.example.org/a%20%23%25%C3%BC/");
        row("port", Protocol::Https, "dav.example.org", 8443,
            "https://dav.example.org:8443/a%20%23%25%C3%BC/");
        row("written port", Protocol::Https, "dav.example.org:9", 8443,
            "https://dav.example.org:9/a%20%23%25%C3%BC/");
        row("written scheme", Protocol::Https, "http://127.0.0.1:9000", 21,
            "http://127.0.0.1:9000/a%20%23%25%C3%BC/");
        row("path", Protocol::Http, "https://dav.example.org/remote.php//dav b/", 21,
            "https://dav.example.org/remote.php/dav%20b/a%20%23%25%C3%BC/");
        row("IPv6", Protocol::Http, "::1", 81, "http://[::1]:81/a%20%23%25%C3%BC/");
        row("zone", Protocol::Http, "fe80::1%eth0", 81, "http://[fe80::1]:81/a%20%23%25%C3%BC/");
        row("no zone", Protocol::Http, "::%]", 81, "");
        row("address of no kind", Protocol::Http, "[v9..a]", 81, "");
        row("other scheme", Protocol::Http, "ftp://dav.example.org", 21, "");
        row("blank", Protocol::Http, "dav example", 21, "");
        row("nothing", Protocol::Http, "", 21, "");
    }
    void Addresses() {
        const auto [way, server, port, address] = Row<Protocol, QString, int, QByteArray>();
        const WebPlace place =
            WebPlace::Of({.Way = way, .Server = server, .Port = port}).Below("/a #%ü");
        QCOMPARE(place.Host.isEmpty() ? QByteArray() : place.Address(place.Path), address);
    }
    // The examples of the standards.
    void Digests_data() {
        const Rows<QByteArray, QString, QByteArray, QByteArray> row;
        const QByteArray old =
            "Basic realm=\"x\", Digest realm=\"testrealm@host.com\", qop=\"auth,auth-int\", "
            "nonce=\"dcd98b7102dd2f0e8b11d0f600bfb0c093\", "
            "opaque=\"5ccc069c403ebaf9f0171e9517f40e41\"";
        row("RFC 2617", old, "Circle Of Life", "0a4f113b", "6629fae49393a05397450978507c4ef1");
        const QByteArray md5 =
            "Digest realm=\"http-auth@example.org\", qop=\"auth, auth-int\", algorithm=MD5, "
            "nonce=\"7ypf/xlj9XXwfDPEoM4URrv/xwf94BcCAzFZH4GiTo0v\", "
            "opaque=\"FQhe/qaU925kfnzjCev0ciny7QMkPqMAFRtzCUYo5tdS\"";
        const QByteArray own = "f2/wE4q74E6zIJEtWaHKaf5wv/H5QzzpXusqGemxURZJ";
        row("RFC 7616", md5, "Circle of Life", own, "8ca523f5e9506fed4657c9700eebdbec");
        QByteArray sha = md5;
        sha.replace("=MD5", "=SHA-256");
        row("RFC 7616, SHA-256", md5 + ", " + sha, "Circle of Life", own,
            "753927fa0e85d155564e2e272a28d1802ca10daf4496794697cf8db5856cb6c1");
    }
    void Digests() {
        const auto [challenge, secret, own, response] =
            Row<QByteArray, QString, QByteArray, QByteArray>();
        HttpPassword password;
        password.Set("Mufasa", secret, false);
        QCOMPARE(password.For("GET", "/dir/index.html"), QByteArray());
        QVERIFY(password.Learn({challenge}));
        password.OwnNonce = own;
        const QByteArray value = password.For("GET", "/dir/index.html");
        QVERIFY2(value.contains("response=\"" + response + "\""), value.constData());
        QVERIFY(value.contains("nc=00000001"));
        QVERIFY(!password.Learn({challenge}));
    }
    void ADeadAddressCostsTwoSeconds() {
        ScriptedWebServer server;
        DeadAddress dead;
        QVERIFY(dead.Begin(server.serverPort()));
        TestClock time;
        AddressRace race(time);
        const QSignalSpy won(&race, &AddressRace::Won);
        const qint64 start = time.Milliseconds();
        race.Begin({dead.Address, QHostAddress::LocalHost}, server.serverPort(), {});
        QVERIFY(time.RunUntil([&] { return !won.isEmpty(); }));
        QCOMPARE((time.Milliseconds() - start) / 100 * 100, 2000);
        const QHostAddress other("10.0.0.1");
        const QList found{QHostAddress("::1"), QHostAddress("::2"), other};
        QCOMPARE(AddressRace::ByTurns(found), QList({found[0], other, found[1]}));
    }

    void PublishesByMoving() {
        ScriptedWebServer server;
        WebBench bench(To(server));
        const QSignalSpy progress(bench.Server.get(), &PictureServer::SendProgress);
        const QByteArray picture(100'000, 'p');
        QCOMPARE(bench.Publish(picture), ServerAnswer());
        QCOMPARE(progress.last(), QVariantList({100'000, 100'000}));
        QCOMPARE(server.Files.keys(), {"/dav/my%20cam/pw.jpg"});
        QVERIFY(server.Files.first() == picture);
        // The server hangs up, as it may after some seconds: the next picture needs no new start.
        server.DropAll();
        bench.Time.Advance(1000);
        QVERIFY(bench.Server->IsOpen());
        QCOMPARE(bench.Publish("two"), ServerAnswer());
        bench.Server->Close();
        QCOMPARE(bench.Publish("three"), ServerAnswer());
        QCOMPARE(server.Connections, 3);
        server.Script = {{"PUT", "HTTP/1.1 204 None\r\nConnection: close\r\n\r\n"}};
        QCOMPARE(bench.Server->SendFile(bench.Local("four"), "pw.jpg"), ServerAnswer());
        QCOMPARE(bench.Server->DeleteFile("pw.jpg"), ServerAnswer());
        QCOMPARE(server.Connections, 4);
        server.Questions.remove(server.Questions.size() - 2, 2);
        const QStringList turns{"PUT /dav/my%20cam/1pw.jpg", "MOVE /dav/my%20cam/1pw.jpg",
                                "COPY /dav/my%20cam/pw.jpg", "DELETE /dav/my%20cam/pw1.jpg"};
        QCOMPARE(server.Said(), QStringList("PROPFIND /dav/my%20cam/") + turns + turns + turns);
        QCOMPARE(server.Questions[1].Headers["content-type"], "image/jpeg");
        QVERIFY(!server.Questions[1].Headers.contains("cache-control"));
        QCOMPARE(server.Questions[2].Headers["overwrite"], "T");
        // Unasked, the password does not go out unencrypted.
        for (const auto& asked : std::as_const(server.Questions))
            QVERIFY(!asked.Headers.contains("authorization"));
    }

    void SendsStraightWhereNothingCanBeRenamed_data() {
        Rows<QByteArray, int>({{"405 No", 1}, {"501 No", 1}, {"400 No", 2}, {"502 No", 2}});
    }
    void SendsStraightWhereNothingCanBeRenamed() {
        const auto [answer, moves] = Row<QByteArray, int>();
        ScriptedWebServer server;
        server.Script = {{.Verb = "MOVE", .Answer = answer}, {.Verb = "COPY", .Answer = "405 No"}};
        WebBench bench(To(server));
        for (int i = 0; i < 2; ++i) QCOMPARE(bench.Publish("picture").Is, NoCopies);
        QVERIFY(bench.Server->SendsWhole());
        QCOMPARE(bench.Remarks.size(), 1);
        QCOMPARE(server.Files.keys(), {"/dav/my%20cam/pw.jpg"});
        QCOMPARE(server.Said().filter("MOVE").size(), moves);
        QCOMPARE(server.Said().filter("1pw.jpg").size(), moves + 2);  // sent once, deleted
        QCOMPARE(bench.Server->RenameFile("pw1.jpg", "pw2.jpg").Is, NoCopies);
    }

    void LosesNoPictureByMovesOfApache_data() {
        Rows<QByteArray, bool>({{"apache.org/dav/propset/fs/1", true}, {"svn/1", false}});
    }
    void LosesNoPictureByMovesOfApache() {
        const auto [kind, straight] = Row<QByteArray, bool>();
        ScriptedWebServer server;
        server.Script = {{"PROPFIND", ScriptedWebServer::Full("207 Multi\r\nServer: Apache/2.4")},
                         {"OPTIONS", ScriptedWebServer::Full("200 OK\r\nDAV: 1,2\r\nDAV: <http://" +
                                                             kind + ">")}};
        WebBench bench(To(server));
        QCOMPARE(bench.Publish("picture"), ServerAnswer());
        QCOMPARE(server.Said().filter("MOVE").isEmpty(), straight);
        QCOMPARE(server.Files.keys(), {"/dav/my%20cam/pw.jpg"});
        QCOMPARE(bench.Remarks.size(), 0);
    }

    void MovesKeptPicturesByCopying_data() { Rows<QByteArray>({{""}, {"405 No"}, {"403 No"}}); }
    void MovesKeptPicturesByCopying() {
        const auto [refusal] = Row<QByteArray>();
        ScriptedWebServer server;
        server.Script = {{.Verb = "MOVE", .Answer = "405 No"}};
        WebBench bench(To(server));
        QCOMPARE(bench.Publish("picture"), ServerAnswer());
        QCOMPARE(bench.Server->RenameFile("pw1.jpg", "pw2.jpg").Is, FileMissing);
        if (!refusal.isEmpty()) server.Script << WebFault{.Verb = "DELETE", .Answer = refusal};
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(bench.Server->KeepFile("pw.jpg", "pw1.jpg"), ServerAnswer());
            QCOMPARE(bench.Server->RenameFile("pw1.jpg", "pw2.jpg"), ServerAnswer());
        }
        QVERIFY(server.Files.contains("/dav/my%20cam/pw2.jpg"));
        QCOMPARE(server.Files.size(), refusal.isEmpty() ? 2 : 3);
        QCOMPARE(bench.Remarks.count(ServerRemark::DeletesNothing), refusal.isEmpty() ? 0 : 1);
    }

    void NamesOnlyThePathBehindProxies() {
        ScriptedWebServer server;
        server.Script = {{.Verb = "MOVE", .Answer = "502 Bad Gateway", .Occurrence = 1}};
        WebBench bench(To(server));
        QCOMPARE(bench.Publish("picture"), ServerAnswer());
        QVERIFY(!bench.Server->SendsWhole());
        QCOMPARE(server.Questions[3].Headers["destination"], "/dav/my%20cam/pw.jpg");
    }

    void Faults_data() {
        const Rows<WebFault, ServerFault> row;
        row("no folder", {"PROPFIND", "404 No"}, FolderMissing);
        row("conflict", {"PROPFIND", "409 No"}, FolderMissing);
        row("no question of that kind", {"PROPFIND", "405 No", 1}, None);

        row("hangs up on the check", {.Verb = "PROPFIND", .Silent = true, .Close = true}, None);
        row("PUT 401", {"PUT", "401 No"}, LoginRefused);
        row("PUT 403", {"PUT", "403 No"}, Forbidden);
        row("PUT 404", {"PUT", "404 No"}, FolderMissing);
        row("PUT 405", {"PUT", "405 No"}, PutNotAllowed);
        row("PUT 409", {"PUT", "409 No"}, FolderMissing);
        row("PUT 413", {"PUT", "413 No"}, TooLarge);
        row("PUT 423", {"PUT", "423 No"}, Locked);
        row("PUT 500", {"PUT", "500 No"}, ServerRefused);
        row("PUT 501", {"PUT", "501 No"}, PutNotAllowed);
        row("PUT 507", {"PUT", "507 No"}, NoRoom);
        row("MOVE 403", {"MOVE", "403 No"}, Forbidden);
        row("MOVE 404", {"MOVE", "404 No"}, FileMissing);
        row("MOVE 412", {"MOVE", "412 No"}, ReplaceRefused);
        row("MOVE 423", {"MOVE", "423 No"}, Locked);
        row("MOVE 207", {"MOVE", "207 Some"}, ServerRefused);
        row("COPY 507", {"COPY", "507 No"}, NoRoom);
        row("COPY 405", {"COPY", "405 No"}, None);
        row("DELETE 404", {"DELETE", "404 No"}, FileMissing);
        row("DELETE 405", {"DELETE", "405 No"}, DeleteRefused);
        row("hangs up", {.Verb = "PUT", .Silent = true, .Close = true}, ConnectionLost);
        row("hangs up once", {.Verb = "PUT", .Occurrence = 1, .Silent = true, .Close = true}, None);
        row("hangs up in the answer",
            {.Verb = "MOVE", .Answer = "HTTP/1.1 204 No Co", .Close = true}, ConnectionLost);
        row("silent", {.Verb = "PUT", .Silent = true}, NoAnswer);
        row("silent check", {.Verb = "PROPFIND", .Silent = true}, NoAnswer);
        row("half an answer", {"PUT", "HTTP/1.1 201 Created\r\nContent-Length: 5\r\n\r\nab"},
            NoAnswer);
        row("another protocol", {"CONNECT", "220 ftp ready\r\n"}, NotThisWay);
        row("nonsense", {"PUT", "\x01\x02\x03"}, NotThisWay);
        row("endless head",
            {.Verb = "PUT",
             .Answer = "HTTP/1.1 200 OK\r\nX: 1\r\n" + QByteArray(9000, 'x'),
             .Endless = true},
            NotThisWay);
        row("wants encryption",
            {"PROPFIND",
             ScriptedWebServer::Full("400 Bad Request", "plain HTTP request to an HTTPS port")},
            EncryptionNeeded);
        row("wants encryption, silently",
            {"PROPFIND", QByteArray("\x15\x03\x01\x00\x02\x02\x46", 7)}, EncryptionNeeded);
    }
    void Faults() {
        const auto [fault, expected] = Row<WebFault, ServerFault>();
        ScriptedWebServer server;
        server.Script = {fault};
        WebBench bench(To(server));
        const qint64 begin = bench.Time.Milliseconds();
        const ServerFault found = bench.Publish("picture").Is;
        QCOMPARE(found, expected);
        QVERIFY(bench.Time.Milliseconds() - begin <= 47'000);
        const bool line = fault.Verb == "PROPFIND"
                              ? found != None
                              : found == ConnectionLost || found == NoAnswer ||
                                    found == NotThisWay || found == EncryptionNeeded;
        QCOMPARE(bench.Server->IsOpen(), !line);
    }

    void Redirections_data() {
        const Rows<QByteArray, ServerFault> row;
        row("same host", "/other%20place/", None);
        row("the same in full", "http://127.0.0.1:PORT/other%20place/", None);
        row("another host", "http://localhost:PORT/", RedirectedAway);
        row("another host, short", "//localhost/", RedirectedAway);
        row("nowhere", "", RedirectedAway);
        row("in a circle", "/dav/my%20cam/", None);  // the picture shows it
    }
    void Redirections() {
        const auto [where, expected] = Row<QByteArray, ServerFault>();
        ScriptedWebServer server;
        QByteArray target = where;
        target.replace("PORT", QByteArray::number(server.serverPort()));
        const QByteArray answer = ScriptedWebServer::Full("301 Moved\r\nLocation: " + target);
        server.Script = {
            {.Verb = "PROPFIND", .Answer = answer, .Occurrence = where.contains("dav") ? 0 : 1}};
        WebBench bench(To(server));
        const ServerAnswer found = bench.Publish("picture");
        QCOMPARE(found.Is, expected);
        if (expected != None) QCOMPARE(found.Reply, QString::fromLatin1(target));
        QVERIFY(server.Questions.size() <= 12);
        const QByteArray folder = where.contains("other") ? "/other%20place/" : "/dav/my%20cam/";
        if (expected == None) QCOMPARE(server.Files.keys(), {folder + "pw.jpg"});
    }

    void Passwords_data() {
        const Rows<QByteArray, QByteArray, ServerFault> row;
        row("basic", "Basic realm=\"x\"", "Basic Y2FtOnNlY3JldA==", None);
        row("digest", "Digest realm=\"x\", nonce=\"n\", qop=\"auth\"", "Digest username=\"cam\"",
            None);
        row("unknown", "Bearer realm=\"x\"", "", LoginRefused);
        row("broken", "Digest realm=\"x, nonce=,,==\"", "Digest", None);
    }
    void Passwords() {
        const auto [challenge, sent, expected] = Row<QByteArray, QByteArray, ServerFault>();
        ScriptedWebServer server;
        const QByteArray refusal =
            ScriptedWebServer::Full("401 No\r\nWWW-Authenticate: " + challenge);
        server.Script = {{.Verb = "PROPFIND", .Answer = refusal, .Occurrence = 1}};
        WebBench bench(To(server));
        QCOMPARE(bench.Publish("picture").Is, expected);
        for (qsizetype i = 1; i < server.Questions.size(); ++i)
            QVERIFY(server.Questions[i].Headers["authorization"].startsWith(sent));
        QVERIFY(!bench.Talk.join(' ').contains("Basic") && !bench.Talk.join(' ').contains("cam\""));
        // A wrong one is tried once.
        server.Script = {{.Verb = "PUT", .Answer = refusal}};
        const qsizetype before = server.Questions.size();
        if (expected == None) QCOMPARE(bench.Publish("picture").Is, LoginRefused);
        QVERIFY(server.Questions.size() <= before + 2);
    }

    void StaysInLimits_data() {
        Rows<QByteArray, int>(
            {{"PROPFIND", 30}, {"PUT", 45}, {"MOVE", 15}, {"COPY", 15}, {"DELETE", 30}});
    }
    void StaysInLimits() {
        const auto [verb, seconds] = Row<QByteArray, int>();
        ScriptedWebServer server;
        server.Script = {{.Verb = verb, .Silent = true}};
        WebBench bench(To(server));
        QCOMPARE(bench.Publish("picture").Is, NoAnswer);
        QCOMPARE(bench.Time.Milliseconds() - 1'000'000, seconds * 1000);
        // Given up by the operator, closed meanwhile, and at the program's end.
        Timer later(bench.Time, 2500);
        later.SetEnabled(true);
        connect(&later, &Timer::Tick, bench.Server.get(), &PictureServer::Cancel);
        const qint64 begin = bench.Time.Milliseconds();
        server.Script = {{.Verb = "PUT", .Silent = true}, {.Verb = "PROPFIND", .Silent = true}};
        QCOMPARE(bench.Publish("picture").Is, Cancelled);
        QVERIFY(bench.Time.Milliseconds() - begin <= 3500);
        later.disconnect();
        connect(&later, &Timer::Tick, bench.Server.get(), &PictureServer::Close);
        QCOMPARE(bench.Publish("picture").Is, ConnectionLost);
        bench.Wait.Close();
        QCOMPARE(bench.Publish("picture").Is, Cancelled);
    }

    void Certificates_data() {
        const Rows<QString, bool, QString, ServerFault> row;
        row("vouched for", "server.pem", true, "", None);
        row("self-signed", "server.pem", false, "", CertificateUnknown);
        row("accepted", "server.pem", false, "server.pem", None);
        row("changed", "server.pem", false, "expired.pem", CertificateChanged);
        row("changed, vouched for", "server.pem", true, "expired.pem", CertificateChanged);
        row("another's name", "other_name.pem", true, "", CertificateWrongName);
        row("expired", "expired.pem", true, "", CertificateExpired);
    }
    void Certificates() {
        const auto [presented, vouched, trusted, expected] =
            Row<QString, bool, QString, ServerFault>();
        const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
        QSslConfiguration configuration = usual;
        configuration.setCaCertificates(
            vouched ? QSslCertificate::fromPath(TestCertificate("authority.pem"))
                    : QList<QSslCertificate>());
        QSslConfiguration::setDefaultConfiguration(configuration);
        ScriptedWebServer server(presented);
        ServerAccess access = To(server, Protocol::Https);
        const auto print = [](const QString& name) {
            return ::Certificates::Fingerprint(
                QSslCertificate::fromPath(TestCertificate(name)).value(0));
        };
        if (!trusted.isEmpty()) access.Trusted = print(trusted).toLower().remove(':');
        WebBench bench(access);
        const ServerAnswer found = bench.Publish(QByteArray(300'000, 'p'));
        QSslConfiguration::setDefaultConfiguration(usual);
        QCOMPARE(found.Is, expected);
        if (expected != None) QCOMPARE(found.Reply, print(presented));
        QCOMPARE(server.Questions.isEmpty(), expected != None);
        if (expected != None) return;
        // Over encryption the password goes at once, and caches are told how long.
        QVERIFY(server.Questions[0].Headers["authorization"].startsWith("Basic "));
        QCOMPARE(server.Questions[1].Headers["cache-control"], "max-age=60");
    }

    void BrokenEncryption_data() {
        const Rows<WebFault, ServerFault> row;
        row("none", {.Verb = "CONNECT", .Answer = "HTTP/1.1 400 Bad Request\r\n\r\n"},
            NoEncryption);
        row("hangs up", {.Verb = "CONNECT", .Silent = true, .Close = true}, EncryptionBroken);
        row("alert", {.Verb = "CONNECT", .Answer = QByteArray("\x15\x03\x03\x00\x02\x02\x28", 7)},
            EncryptionBroken);
        row("broken in the middle", {.Verb = "PUT", .Answer = QByteArray(40, 'x'), .Raw = true},
            EncryptionBroken);
        row("silent", {.Verb = "CONNECT", .Silent = true}, NoAnswer);
    }
    void BrokenEncryption() {
        const auto [fault, expected] = Row<WebFault, ServerFault>();
        ScriptedWebServer server("server.pem");
        server.Script = {fault};
        ServerAccess access = To(server, Protocol::Https);
        access.Trusted = ::Certificates::Fingerprint(
            QSslCertificate::fromPath(TestCertificate("server.pem")).value(0));
        WebBench bench(access);
        QCOMPARE(bench.Publish("picture").Is, expected);
    }

    void NobodyThere() {
        ServerAccess access;
        {
            const ScriptedWebServer server;
            access = To(server);
        }
        QCOMPARE(WebBench(access).Publish("picture").Is, Refused);
        access.Server = "not a name";
        QCOMPARE(WebBench(access).Publish("picture").Is, HostNotFound);
        const ScriptedWebServer server;
        WebBench bench(To(server));
        QVERIFY(bench.Server->Open().Fine());
        QCOMPARE(bench.Server->SendFile(bench.Folder.filePath("none"), "pw.jpg").Is, NoLocalFile);
    }
};

QTEST_GUILESS_MAIN(TestWeb)
#include "test_web.moc"
