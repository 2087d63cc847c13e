#include "base/profile_file.h"
#include "base/profile_text.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

// What becomes of files that are no settings files any more.
class TestProfileDamage : public QObject {
    Q_OBJECT

  private slots:
    void KeepsWhatIsThere_data();
    void KeepsWhatIsThere();
    void RandomBytes_data();
    void RandomBytes();
    void LeavesLargeFilesAlone_data();
    void LeavesLargeFilesAlone();
    void NeedsAFile_data();
    void NeedsAFile();

  private:
    QTemporaryDir folder;

    [[nodiscard]] QString NewFile(const QByteArray& content) const {
        const QString path = folder.filePath("x.ini");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) return {};
        return path;
    }
    static QByteArray Content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

namespace {

QByteArray Random(QRandomGenerator& random, int most) {
    QByteArray bytes;
    for (int left = random.bounded(most); left > 0; --left)
        bytes.append(static_cast<char>(random.bounded(256)));
    return bytes;
}

// Random bytes with pieces of a settings file between them.
QByteArray Damaged(QRandomGenerator& random) {
    static const QList<QByteArray> pieces = {"[Sec]",
                                             "\r\n",
                                             "\n",
                                             "[Sec]\n",
                                             "\nKey=1\n",
                                             "\r\nKey='2",
                                             "=",
                                             ";",
                                             "\"",
                                             "\xef\xbb\xbf",
                                             "\xc3\xbc",
                                             "[Other]\n",
                                             "\r",
                                             "  \t",
                                             "\n\n",
                                             QByteArray(3, '\0'),
                                             "]",
                                             "\n[",
                                             "\nOther=\xfc",
                                             "key"};
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

void TestProfileDamage::KeepsWhatIsThere_data() {
    QTest::addColumn<QByteArray>("content");
    QByteArray everyByte;
    for (int i = 0; i < 256; ++i) everyByte.append(static_cast<char>(i));
    QTest::addRow("every byte") << everyByte;
    QTest::addRow("only NULs, as after a power cut") << QByteArray(4096, '\0');
    QTest::addRow("zeroed end") << "[Sec]\nX=1\nKe" + QByteArray(300, '\0');
    QTest::addRow("no line end at all") << QByteArray(900'000, 'x');
    QTest::addRow("many line ends") << QByteArray(300'000, '\n');
    QTest::addRow("many sections") << QByteArray("[Sec]\n").repeated(20'000);
    QTest::addRow("UTF-16 mark alone") << QByteArray("\xff\xfe");
    QTest::addRow("UTF-8 mark alone") << QByteArray("\xef\xbb\xbf");
    QTest::addRow("half a UTF-16 character") << QByteArray("\xfe\xff[");
    QTest::addRow("UTF-16 without mark") << QByteArray("[\0S\0e\0c\0]\0\n\0K\0=\0", 16);
    QTest::addRow("brackets") << QByteArray("[[[[]]]]\n]\n[\n[]\n=\n[]=\n");
}

void TestProfileDamage::KeepsWhatIsThere() {
    QFETCH(QByteArray, content);
    const QString file = NewFile(content);
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "");
    QVERIFY(WriteSetting(file, "Sec", "Key", "value") != 0);
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "value");
    QCOMPARE(RemovedPart(content, Content(file)), "");
    QVERIFY(WriteSetting(file, "Sec", "Key", "other") != 0);
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "other");
    QCOMPARE(RemovedPart(content, Content(file)), "");
}

void TestProfileDamage::RandomBytes_data() {
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed) QTest::addRow("seed %u", seed) << seed;
}

void TestProfileDamage::RandomBytes() {
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 500; ++round) {
        const QByteArray before = Damaged(random);
        ProfileText text(before);
        QVERIFY2(text.Bytes() == before, before.toHex().constData());
        const QString old = text.Value(u"Sec", u"Key").value_or(QString());
        QVERIFY2(text.Set("Sec", "Key", "value"), before.toHex().constData());
        const ProfileText again(text.Bytes());
        QVERIFY2(again.Value(u"Sec", u"Key") == "value", before.toHex().constData());
        const QByteArray removed = RemovedPart(before, text.Bytes());
        // Only the old value itself, its blanks and quotes may be gone: never a line.
        QVERIFY2(!removed.contains('\n') && !removed.contains('\r'), before.toHex().constData());
        if (old.isEmpty())
            QVERIFY2(removed.size() <= 2 || removed.trimmed().size() <= 2,
                     before.toHex().constData());
    }
}

void TestProfileDamage::LeavesLargeFilesAlone_data() {
    QTest::addColumn<qint64>("size");
    QTest::addRow("a megabyte and a byte") << qint64{1024 * 1024 + 1};
    QTest::addRow("fifty megabytes") << qint64{50 * 1024 * 1024};
}

void TestProfileDamage::LeavesLargeFilesAlone() {
    QFETCH(qint64, size);
    const QString file = NewFile("[Sec]\nKey=1\n");
    QVERIFY(QFile::resize(file, size));
    QCOMPARE(ReadSetting(file, "Sec", "Key"), "");
    QCOMPARE(WriteSetting(file, "Sec", "Key", "2"), 0);
    QCOMPARE(QFileInfo(file).size(), size);
    QVERIFY(Content(file).startsWith("[Sec]\nKey=1\n"));

    // Nor does writing make a file that could not be read any more.
    const QByteArray nearly = "[Sec]\nX=" + QByteArray(1024 * 1024 - 20, 'x') + "\n";
    QVERIFY(!NewFile(nearly).isEmpty());
    QCOMPARE(WriteSetting(file, "Sec", "Key", QString(30, u'y')), 0);
    QCOMPARE(Content(file), nearly);
}

void TestProfileDamage::NeedsAFile_data() {
    QTest::addColumn<QString>("path");
    QVERIFY(QDir(folder.path()).mkpath("folder.ini"));
    QTest::addRow("a folder in its place") << folder.filePath("folder.ini");
    QTest::addRow("no such folder") << folder.filePath("missing/x.ini");
    QTest::addRow("a device") << "/dev/zero";
    QTest::addRow("no name") << "";
}

void TestProfileDamage::NeedsAFile() {
    QFETCH(QString, path);
    QCOMPARE(ReadSetting(path, "Sec", "Key"), "");
    QCOMPARE(WriteSetting(path, "Sec", "Key", "v"), 0);
    QCOMPARE(ReadSetting(path, "Sec", "Key"), "");
}

QTEST_GUILESS_MAIN(TestProfileDamage)
#include "test_profile_damage.moc"
