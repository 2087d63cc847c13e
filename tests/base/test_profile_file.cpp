#include "base/profile_file.h"
#include "base/profile_text.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QRandomGenerator>
#include <QStringEncoder>
#include <QTemporaryDir>

namespace {

// Characters 0x80 and 0x81 of Windows-1252, the second one undefined there.
const QByteArray euroAndGap = "\x80\x81";
// What a file in Windows-1252 begins with when nothing else in it tells that it is.
const QByteArray told = "; Windows-1252, not UTF-8: \xe4\xf6\xfc\n";
const QString euroAndGapText = QStringLiteral("\u20ac\u0081");

QByteArray Utf16(const QString& text, QStringConverter::Encoding as) {
    return QByteArray(QStringEncoder(as, QStringConverter::Flag::WriteBom)(text));
}

QByteArray Random(QRandomGenerator& random, int most) {
    QByteArray bytes;
    for (int left = random.bounded(most); left > 0; --left)
        bytes.append(static_cast<char>(random.bounded(256)));
    return bytes;
}

// Random bytes with pieces of a settings file between them.
QByteArray Damaged(QRandomGenerator& random) {
    static const QByteArrayList pieces = QByteArray(
                                             "[Sec]|\r\n|\n|[Sec]\n|\nKey=1\n|\r\nKey='2|=|;|\"|"
                                             "\xef\xbb\xbf|\xc3\xbc|[Other]\n|\r|  \t|"
                                             "\n\n|]|\n[|\nOther=\xfc|key")
                                             .split('|')
                                         << QByteArray(3, '\0');
    QByteArray bytes;
    if (random.bounded(8) == 0) bytes = random.bounded(2) == 0 ? "\xff\xfe" : "\xfe\xff";
    for (int left = random.bounded(12); left > 0; --left) {
        if (random.bounded(3) == 0) bytes += Random(random, 12);
        bytes += pieces[random.bounded(pieces.size())];
    }
    return bytes;
}

// The part that changed when everything in front of it and behind it is the same.
QByteArray RemovedPart(const QByteArray& before, const QByteArray& after) {
    qsizetype front = 0;
    const qsizetype shorter = std::min(before.size(), after.size());
    while (front < shorter && before[front] == after[front]) ++front;
    qsizetype back = 0;
    while (back < shorter - front &&
           before.at(before.size() - 1 - back) == after.at(after.size() - 1 - back))
        ++back;
    return before.sliced(front, before.size() - front - back);
}

}  // namespace

class TestProfileFile : public QObject {
    Q_OBJECT

  private slots:
    void Reads_data() {
        const Rows<QByteArray, QString> row;
        row("blanks around everything", " \t[ Sec ]\n\t Key \t=  v a\tl \t\n", "v a\tl");
        row("blank that is no blank", "[Sec]\nKey=\xc2\xa0v\xc2\xa0",
            QStringLiteral("\u00a0v\u00a0"));
        row("single quotes", "[Sec]\nKey=' v '", " v ");
        row("equals sign and semicolon in it", "[Sec]\nKey=a=b;c", "a=b;c");
        row("first of two sections", "[Sec]\nOther=1\n[Sec]\nKey=2", "");
        row("section name only begins the same", "[Section]\nKey=1", "");
        row("commented out", "[Sec]\n;Key=1\n ; Key=2\nKey=3", "3");
        row("section without its bracket", "[Sec]\n[Other\nKey=1", "1");
        row("mark, but no UTF-8", "\xef\xbb\xbf[Sec]\nKey=\xfc", QStringLiteral("ü"));
        row("UTF-8 of surrogates is none", "[Sec]\nKey=\xed\xa0\x80",
            QStringLiteral("\u00ed\u00a0\u20ac"));
        row("NUL in the line", QByteArray("[Sec]\nKey=a\0b\nKey=c", 19), "c");
        row("zeroed end", "[Sec]\nKey=1\nKe" + QByteArray(300, '\0'), "1");
    }
    void Reads() {
        const auto [content, value] = Row<QByteArray, QString>();
        const QString file = NewFile(content);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
    }

    void WritesSeveralOrNone() {
        const QByteArray before = "[Sec]\nB=1\n";
        const QString file = NewFile(before);
        QCOMPARE(WriteSettings(file, {{"Sec", "A", "1"}, {"Sec", "B", "line\nbreak"}}), 0);
        QCOMPARE(ReadBytes(file), before);
        QCOMPARE(WriteSettings(file, {{"Sec", "A", "1"}, {"Sec", "B", "2"}, {"X", "C", "3"}}), 1);
        QCOMPARE(ReadBytes(file), QByteArray("[Sec]\nB=2\nA=1\n\n[X]\nC=3\n"));
    }

    void Writes_data() {
        const Rows<QByteArray, QString, QByteArray> row;
        const QByteArray end = QSysInfo::kernelType() == "winnt" ? "\r\n" : "\n";
        row("empty file", "", "v", "[Sec]" + end + "Key=v" + end);
        row("change", "[Sec]\n key =  old  \nX=1", "new", "[Sec]\n key =  new\nX=1");
        row("add before blank lines", "[Sec]\nX=1\n\n \n[Other]\nKey=1\n", "v",
            "[Sec]\nX=1\nKey=v\n\n \n[Other]\nKey=1\n");
        row("add without a last line end", "[Sec]\r\nX=1", "v", "[Sec]\r\nX=1\r\nKey=v\r\n");
        row("rubbish stays", "x\n[Sec]\n;Key=1\nnonsense\n=1\n#\n", "v",
            "x\n[Sec]\n;Key=1\nnonsense\n=1\n#\nKey=v\n");
        row("Windows-1252", "[Sec]\nX=\xfc" + euroAndGap + "\n",
            QStringLiteral("ü") + euroAndGapText,
            "[Sec]\nX=\xfc" + euroAndGap + "\nKey=\xfc" + euroAndGap + "\n");
        row("more than Windows-1252 holds", told + "[Sec]\nX=\xfc\n", QStringLiteral("\u0159"),
            "[Sec]\nX=\xc3\xbc\nKey=\xc5\x99\n");
        row("Windows-1252 that would pass for UTF-8", "[Sec]\nKey=\xfc\n",
            QStringLiteral("\u00c3\u00bc"), told + "[Sec]\nKey=\xc3\xbc\n");
        row("the only character that was no UTF-8", "[Sec]\nX=\xc3\xbc\nKey=\xfc\n", "v",
            told + "[Sec]\nX=\xc3\xbc\nKey=v\n");
        row("no character left that was no UTF-8", "[Sec]\r\nKey=\xfc\r\n", "v",
            told.chopped(1) + "\r\n[Sec]\r\nKey=v\r\n");
        row("no such character since", told + "[Sec]\nKey=v\n", QStringLiteral("ü"),
            told + "[Sec]\nKey=\xfc\n");
        row("UTF-16 little endian", Utf16("[Sec]\r\nX=ü\r\n", QStringConverter::Utf16LE),
            QStringLiteral("\u0159"),
            Utf16(QStringLiteral("[Sec]\r\nX=ü\r\nKey=\u0159\r\n"), QStringConverter::Utf16LE));
        row("UTF-16 big endian, cut off", Utf16("[Sec]\nX=1", QStringConverter::Utf16BE) + 'x', "v",
            Utf16("[Sec]\nX=1\nKey=v\n", QStringConverter::Utf16BE) + 'x');
    }
    void Writes() {
        const auto [before, value, after] = Row<QByteArray, QString, QByteArray>();
        const QString file = NewFile(before);
        const QString other = ReadSetting(file, "Sec", "X");
        QVERIFY(WriteSetting(file, "Sec", "Key", value) != 0);
        QCOMPARE(ReadBytes(file), after);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
        // As the next start of the program reads it.
        QCOMPARE(ProfileText(after).Value(u"Sec", u"X").value_or(QString()), other);
    }

    void ComesBack_data() {
        const QStringList values =
            QStringLiteral(
                " blank in front|blank behind | |\"quoted\"|'quoted'|\"|\"\"|'\"'| \" |a\"|"
                ";no comment|[no section]|a=b|ü€ř|\u00a0|\u2028|\U0001F4F7")
                .split(u'|');
        const Rows<QString> row;
        for (const QString& value : values) row(qPrintable(value), value);
    }
    void ComesBack() {
        const auto [value] = Row<QString>();
        const QString file = Name();
        QVERIFY(WriteSetting(file, "Sec", "Key", value) != 0);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
        QVERIFY(WriteSetting(file, "Sec", "Other", "x") != 0);
        QCOMPARE(ReadSetting(file, "sec", "key"), value);
    }

    void Refuses_data() {
        const Rows<QString, QString, QString> row;
        row("line feed", "Sec", "Key", "a\nPort=1");
        row("NUL", "Sec", "Key", QString(QChar(u'\0')));
        row("half a surrogate pair", "Sec", "Key", QString(QChar(0xd800)));
        row("no key", "Sec", " ", "a");
        row("key that would end early", "Sec", "K=ey", "a");
        row("section that would end early", "S]ec", "Key", "a");
    }
    void Refuses() {
        const auto [section, key, value] = Row<QString, QString, QString>();
        const QByteArray before = "[Sec]\nKey=old\n";
        const QString file = NewFile(before);
        QCOMPARE(WriteSetting(file, section, key, value), 0);
        QCOMPARE(ReadBytes(file), before);
    }

    void CutsAt255Characters() {
        const QString camera = QStringLiteral("\U0001F4F7");
        const QString file = NewFile("[Sec]\nA=" + QByteArray(300, 'a') +
                                     "\nB=" + QByteArray(254, 'b') + camera.toUtf8() + "\n");
        QCOMPARE(ReadSetting(file, "Sec", "A"), QString(255, u'a'));
        QCOMPARE(ReadSetting(file, "Sec", "B"), QString(254, u'b'));
    }

    void SeesEveryChange() {
        const QString file = NewFile("[Sec]\nKey=0000\n");
        for (int i = 1; i < 60; ++i) {
            // Same size, often within one step of the file system's clock.
            const QString value = QString::number(1000 + i);
            QVERIFY(WriteBytes(file, "[Sec]\nKey=" + value.toLatin1() + "\n"));
            QCOMPARE(ReadSetting(file, "Sec", "Key"), value);
        }
    }

    void RandomBytes() {
        QRandomGenerator random(1);
        for (int round = 0; round < 4000; ++round) {
            const QByteArray before = Damaged(random);
            ProfileText text(before);
            const QByteArray bytes = before.toHex();
            const char* const hex = bytes.constData();
            QVERIFY2(text.Bytes() == before, hex);
            const QString old = text.Value(u"Sec", u"Key").value_or(QString());
            QVERIFY2(text.Set("Sec", "Key", "value"), hex);
            QByteArray after = text.Bytes();
            ProfileText again(after);
            QVERIFY2(again.Value(u"Sec", u"Key") == "value", hex);
            for (const QByteArray& line : {told, told.chopped(1) + "\r\n"}) after.replace(line, "");
            const QByteArray removed = RemovedPart(before, after);
            // Only the old value itself, its blanks and quotes may be gone: never a line.
            QVERIFY2(!removed.contains('\n') && !removed.contains('\r'), hex);
            if (old.isEmpty()) QVERIFY2(removed.size() <= 2 || removed.trimmed().size() <= 2, hex);
            // What is kept in memory and what the next start reads go on alike.
            QVERIFY2(text.Set("Sec", "New", "ü") && again.Set("Sec", "New", "ü"), hex);
            QVERIFY2(text.Bytes() == again.Bytes(), hex);
        }
    }

    void LeavesLargeFilesAlone() {
        const QString file = NewFile("[Sec]\nKey=1\n");
        constexpr qint64 size = 1024 * 1024 + 1;
        QVERIFY(QFile::resize(file, size));
        QCOMPARE(ReadSetting(file, "Sec", "Key"), "");
        QCOMPARE(WriteSetting(file, "Sec", "Key", "2"), 0);
        QCOMPARE(QFileInfo(file).size(), size);
        QVERIFY(ReadBytes(file).startsWith("[Sec]\nKey=1\n"));

        // Nor does writing make a file that could not be read any more.
        const QByteArray nearly = "[Sec]\nX=" + QByteArray(1024 * 1024 - 20, 'x') + "\n";
        QVERIFY(WriteBytes(file, nearly));
        QCOMPARE(WriteSetting(file, "Sec", "Key", QString(30, u'y')), 0);
        QCOMPARE(ReadBytes(file), nearly);
    }

    void NeedsAFile_data() {
        Rows<QString>({{folder.path()}, {folder.filePath("missing/x.ini")}, {"/dev/zero"}, {""}});
    }
    void NeedsAFile() {
        const auto [path] = Row<QString>();
        QCOMPARE(ReadSetting(path, "Sec", "Key"), "");
        QCOMPARE(WriteSetting(path, "Sec", "Key", "v"), 0);
    }

  private:
    QTemporaryDir folder;
    int files = 0;

    [[nodiscard]] QString Name() { return folder.filePath(QString::number(++files) + ".ini"); }
    [[nodiscard]] QString NewFile(const QByteArray& content) {
        const QString path = Name();
        return WriteBytes(path, content) ? path : QString();
    }
};

QTEST_GUILESS_MAIN(TestProfileFile)
#include "test_profile_file.moc"
