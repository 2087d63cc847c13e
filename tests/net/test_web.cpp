#include "net/server_access.h"
#include "net/web/http_answer.h"
#include "net/web/http_password.h"
#include "net/web/web_place.h"
#include "support/data_rows.h"

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
};

QTEST_GUILESS_MAIN(TestWeb)
#include "test_web.moc"
