#include "base/profile_file.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Characters 0x80 and 0x81 of Windows-1252, the second one undefined there.
const QByteArray euroAndGap = "\x80\x81";
const QString euroAndGapText = QStringLiteral("\u20ac\u0081");

QByteArray Utf16(const QString& text, bool littleEndian) {
    QByteArray bytes = littleEndian ? "\xff\xfe" : "\xfe\xff";
    for (const QChar each : text) {
        const char low = static_cast<char>(each.cell());
        const char high = static_cast<char>(each.row());
        bytes.append(littleEndian ? low : high).append(littleEndian ? high : low);
    }
    return bytes;
}

}  // namespace

class TestProfileFile : public QObject {
    Q_OBJECT

  private slots:
    void Reads_data();
    void Reads();
    void Writes_data();
    void Writes();
    void ComesBack_data();
    void ComesBack();
    void Refuses_data();
    void Refuses();
    void CutsAt255Characters();
    void SeesEveryChange();
    void IsPrivate();
    void FollowsLinks();
    void Numbers_data();
    void Numbers();

  private:
    QTemporaryDir folder;
    int files = 0;

    [[nodiscard]] QString Name() { return folder.filePath(QString::number(++files) + ".ini"); }
    [[nodiscard]] QString NewFile(const QByteArray& content) {
        const QString path = Name();
        Put(path, content);
        return path;
    }
    static void Put(const QString& path, const QByteArray& content) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }
    static QByteArray Content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

void TestProfileFile::Reads_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("value");

    const auto row = [](const char* name, const QByteArray& content, const QString& value) {
        QTest::addRow("%s", name) << content << value;
    };
    row("plain", "[Sec]\nKey=value\n", "value");
    row("other case of the names", "[sEC]\nkEY=value", "value");
    row("blanks around everything", " \t[ Sec ]\n\t Key \t=  v a\tl \t\n", "v a\tl");
    row("blank that is no blank", "[Sec]\nKey=\xc2\xa0v\xc2\xa0", QStringLiteral("\u00a0v\u00a0"));
    row("double quotes", "[Sec]\nKey= \" v \" ", " v ");
    row("single quotes", "[Sec]\nKey='v'", "v");
    row("only one pair of quotes", "[Sec]\nKey=\"'v'\"", "'v'");
    row("quotes that do not match", "[Sec]\nKey=\"v'", "\"v'");
    row("a single quote sign", "[Sec]\nKey=\"", "\"");
    row("equals sign and semicolon in it", "[Sec]\nKey=a=b;c", "a=b;c");
    row("empty value", "[Sec]\nKey=\n", "");
    row("first of two keys", "[Sec]\nKey=1\nKey=2", "1");
    row("first of two sections", "[Sec]\nOther=1\n[Sec]\nKey=2", "");
    row("key of another section", "[Other]\nKey=1\n[Sec]\n", "");
    row("key in front of all sections", "Key=1\n[Sec]", "");
    row("section name only begins the same", "[Section]\nKey=1", "");
    row("commented out", "[Sec]\n;Key=1\n ; Key=2\nKey=3", "3");
    row("comment behind the section", "[Sec] ; [x]\nKey=1", "1");
    row("line without equals sign", "[Sec]\nKey\nKey=1", "1");
    row("line without a name", "[Sec]\n=2\nKey=1", "1");
    row("section without its bracket", "[Sec]\n[Other\nKey=1", "1");
    row("CRLF", "[Sec]\r\nKey=v\r\n", "v");
    row("CR alone", "[Sec]\rKey=v\r", "v");
    row("UTF-8", "[Sec]\nKey=\xc3\xbc", QStringLiteral("ü"));
    row("UTF-8 with mark", "\xef\xbb\xbf[Sec]\nKey=\xc3\xbc", QStringLiteral("ü"));
    row("Windows-1252", "[Sec]\nKey=\xfc" + euroAndGap, QStringLiteral("ü") + euroAndGapText);
    row("mark, but no UTF-8", "\xef\xbb\xbf[Sec]\nKey=\xfc", QStringLiteral("ü"));
    row("UTF-8 of surrogates is none", "[Sec]\nKey=\xed\xa0\x80",
        QStringLiteral("\u00ed\u00a0\u20ac"));
    row("UTF-16 little endian", Utf16("[Sec]\r\nKey=ü\r\n", true), QStringLiteral("ü"));
    row("UTF-16 big endian", Utf16("[Sec]\r\nKey=ü\r\n", false), QStringLiteral("ü"));
    row("NUL in the line", QByteArray("[Sec]\nKey=a\0b\nKey=c", 19), "c");
}

void TestProfileFile::Reads() {
    QFETCH(QByteArray, content);
    const QString file = NewFile(content);
    QTEST(ReadSetting(file, "Sec", "Key"), "value");
}

void TestProfileFile::Writes_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("after");

    const auto row = [](const char* name, const QByteArray& before, const QString& value,
                        const QByteArray& after) {
        QTest::addRow("%s", name) << before << value << after;
    };
    row("empty file", "", "v", "[Sec]\nKey=v\n");
    row("change", "[Sec]\n key =  old  \nX=1", "new", "[Sec]\n key =  new\nX=1");
    row("change to nothing", "[Sec]\nKey=old\n", "", "[Sec]\nKey=\n");
    row("change of the first only", "[Sec]\nKey=1\nKey=2\n[Sec]\nKey=3", "v",
        "[Sec]\nKey=v\nKey=2\n[Sec]\nKey=3");
    row("add before the blank lines", "[Sec]\nX=1\n\n \n[Other]\nKey=1\n", "v",
        "[Sec]\nX=1\nKey=v\n\n \n[Other]\nKey=1\n");
    row("add to an empty section", "[Sec]\n[Other]\n", "v", "[Sec]\nKey=v\n[Other]\n");
    row("add to the first of two sections", "[Sec]\n[Sec]\nKey=1", "v",
        "[Sec]\nKey=v\n[Sec]\nKey=1");
    row("add without a last line end", "[Sec]\r\nX=1", "v", "[Sec]\r\nX=1\r\nKey=v\r\n");
    row("add a section", "; hello\r\n\r\n[Other]\r\nX=1", "v",
        "; hello\r\n\r\n[Other]\r\nX=1\r\n\r\n[Sec]\r\nKey=v\r\n");
    row("comments and rubbish stay", "x\n[Sec]\n;Key=1\nnonsense\n=1\n#\n", "v",
        "x\n[Sec]\n;Key=1\nnonsense\n=1\n#\nKey=v\n");
    row("mixed line ends stay", "\r[Sec]\nA=1\r\nB=2\n", "v", "\r[Sec]\nA=1\r\nB=2\nKey=v\r");
    row("mark stays", "\xef\xbb\xbf[Sec]\n", "v", "\xef\xbb\xbf[Sec]\nKey=v\n");
    row("UTF-8", "[Sec]\nX=\xc3\xbc\n", QStringLiteral("ü"), "[Sec]\nX=\xc3\xbc\nKey=\xc3\xbc\n");
    row("Windows-1252", "[Sec]\nX=\xfc" + euroAndGap + "\n", QStringLiteral("ü") + euroAndGapText,
        "[Sec]\nX=\xfc" + euroAndGap + "\nKey=\xfc" + euroAndGap + "\n");
    row("more than Windows-1252 holds", "[Sec]\nX=\xfc\n", QStringLiteral("\u0159"),
        "[Sec]\nX=\xc3\xbc\nKey=\xc5\x99\n");
    row("Windows-1252 that would pass for UTF-8", "[Sec]\nKey=\xfc\n",
        QStringLiteral("\u00c3\u00bc"), "[Sec]\nKey=\xc3\x83\xc2\xbc\n");
    row("the only character that was no UTF-8", "[Sec]\nX=\xc3\xbc\nKey=\xfc\n", "v",
        "[Sec]\nX=\xc3\xbc\nKey=v\n");
    row("UTF-16 little endian", Utf16("[Sec]\r\nX=ü\r\n", true), QStringLiteral("\u0159"),
        Utf16(QStringLiteral("[Sec]\r\nX=ü\r\nKey=\u0159\r\n"), true));
    row("UTF-16 big endian, cut off", Utf16("[Sec]\nX=1", false) + 'x', "v",
        Utf16("[Sec]\nX=1\nKey=v\n", false) + 'x');
}

void TestProfileFile::Writes() {
    QFETCH(QByteArray, before);
    QFETCH(QString, value);
    const QString file = NewFile(before);
    QVERIFY(WriteSetting(file, "Sec", "Key", value) != 0);
    QTEST(Content(file), "after");
    QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
}

void TestProfileFile::ComesBack_data() {
    QTest::addColumn<QString>("value");
    for (const char* value : {"plain",
                              " blank in front",
                              "blank behind ",
                              "\ttab",
                              " ",
                              "\"quoted\"",
                              "'quoted'",
                              "\"",
                              "\"\"",
                              "'\"'",
                              " \" ",
                              "a\"",
                              ";no comment",
                              "[no section]",
                              "a=b",
                              "pass\"word",
                              "ü€ř",
                              "\u00a0",
                              "\u2028",
                              "\U0001F4F7"})
        QTest::addRow("%s", value) << QString::fromUtf8(value);
}

void TestProfileFile::ComesBack() {
    QFETCH(QString, value);
    const QString file = Name();
    QVERIFY(WriteSetting(file, "Sec", "Key", value) != 0);
    QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
    QVERIFY(WriteSetting(file, "Sec", "Other", "x") != 0);
    QCOMPARE(ReadSetting(file, "sec", "key"), value);
}

void TestProfileFile::Refuses_data() {
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const QString nul = QString(QChar(u'\0'));
    QTest::addRow("line feed") << "Sec"
                               << "Key"
                               << "a\nPort=1";
    QTest::addRow("carriage return") << "Sec"
                                     << "Key"
                                     << "a\r";
    QTest::addRow("NUL") << "Sec"
                         << "Key" << nul;
    QTest::addRow("half a surrogate pair") << "Sec"
                                           << "Key" << QString(QChar(0xd800));
    QTest::addRow("line feed in the key") << "Sec"
                                          << "K\ney"
                                          << "a";
    QTest::addRow("line feed in the section") << "S\nec"
                                              << "Key"
                                              << "a";
    QTest::addRow("no key") << "Sec"
                            << " "
                            << "a";
    QTest::addRow("key that would be a comment") << "Sec"
                                                 << ";Key"
                                                 << "a";
    QTest::addRow("key that would end early") << "Sec"
                                              << "K=ey"
                                              << "a";
    QTest::addRow("section that would end early") << "S]ec"
                                                  << "Key"
                                                  << "a";
}

void TestProfileFile::Refuses() {
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const QByteArray before = "[Sec]\nKey=old\n";
    const QString file = NewFile(before);
    QCOMPARE(WriteSetting(file, section, key, value), 0);
    QCOMPARE(Content(file), before);
}

void TestProfileFile::CutsAt255Characters() {
    const QString camera = QStringLiteral("\U0001F4F7");
    const QString file = NewFile("[Sec]\nA=" + QByteArray(300, 'a') +
                                 "\nB=" + QByteArray(254, 'b') + camera.toUtf8() + "\n");
    QCOMPARE(ReadSetting(file, "Sec", "A"), QString(255, u'a'));
    QCOMPARE(ReadSetting(file, "Sec", "B"), QString(254, u'b'));
}

void TestProfileFile::SeesEveryChange() {
    const QString file = NewFile("[Sec]\nKey=0000\n");
    for (int i = 1; i < 60; ++i) {
        // Same size, often within one step of the file system's clock.
        const QString value = QString::number(1000 + i);
        if (i % 3 == 0)
            QVERIFY(WriteSetting(file, "Sec", "Key", value) != 0);
        else
            Put(file, "[Sec]\nKey=" + value.toLatin1() + "\n");
        QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
    }

    // A copy that brings an old time along, over a version that has long been known.
    QFile old(file);
    const QDateTime longAgo = QDateTime::currentDateTime().addDays(-3);
    QVERIFY(old.open(QIODevice::ReadWrite) &&
            old.setFileTime(longAgo, QFileDevice::FileModificationTime));
    old.close();
    QTest::qWait(60);
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "1059");
    QVERIFY(old.open(QIODevice::ReadWrite) && old.write("[Sec]\nKey=copy\n") == 15 && old.flush() &&
            old.setFileTime(longAgo, QFileDevice::FileModificationTime));
    old.close();
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "copy");

    QVERIFY(QFile::remove(file));
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "");
}

void TestProfileFile::IsPrivate() {
    const QString file = NewFile("[Sec]\n");
    QFile(file).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                               QFile::ReadOther);
    const QString fresh = Name();
    for (const QString& each : {file, fresh}) {
        QVERIFY(WriteSetting(each, "Sec", "PW", "secret") != 0);
        const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup |
                            QFile::WriteOther | QFile::ExeOwner;
        QVERIFY(!(QFile(each).permissions() & others));
    }
    const QStringList names = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) QVERIFY2(name.endsWith(".ini"), qPrintable(name));
}

void TestProfileFile::FollowsLinks() {
    QVERIFY(QDir(folder.path()).mkdir("elsewhere"));
    const QString target = folder.filePath("elsewhere/real.ini");
    Put(target, "[Sec]\nKey=1\n");
    const QString link = Name();
    QVERIFY(QFile::link("elsewhere/real.ini", link));
    QVERIFY(WriteSetting(link, "Sec", "Key", "2") != 0);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(Content(target), "[Sec]\nKey=2\n");
    QCOMPARE(ReadSetting(link, "Sec", "Key"), "2");
}

void TestProfileFile::Numbers_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("whole");
    const auto row = [](const QString& text, double number, int whole) {
        QTest::addRow("'%s'", qPrintable(text)) << text << number << whole;
    };
    row("", 0, 0);
    row("x", 0, 0);
    row("-", 0, 0);
    row(".", 0, 0);
    row("21", 21, 21);
    row(" \t21 ", 21, 21);
    row("-5", -5, -5);
    row("+5", 5, 5);
    row("--5", 0, 0);
    row("- 5", 0, 0);
    row("12abc", 12, 12);
    row("75.9", 75.9, 75);
    row("-75.9", -75.9, -75);
    row(".5", 0.5, 0);
    row("5.", 5, 5);
    row("1.2.3", 1.2, 1);
    row("1,5", 1, 1);
    row("1e3", 1, 1);
    row("&H10", 0, 0);
    row("0x10", 0, 0);
    row("007", 7, 7);
    row(QStringLiteral("\u0663"), 0, 0);  // a digit of another script
    row("inf", 0, 0);
    row("2147483648", 2147483648.0, 2147483647);
    row("-99999999999", -99999999999.0, -2147483647 - 1);
    row(QString(400, u'9'), std::numeric_limits<double>::max(), 2147483647);
}

void TestProfileFile::Numbers() {
    QFETCH(QString, text);
    QFETCH(double, number);
    QFETCH(int, whole);
    QCOMPARE(Val(text), number);
    QCOMPARE(ValLong(text), whole);
}

QTEST_GUILESS_MAIN(TestProfileFile)
#include "test_profile_file.moc"
