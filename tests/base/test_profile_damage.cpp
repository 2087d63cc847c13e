#include "base/profile_file.h"
#include "base/profile_text.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

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

// What becomes of files that are no settings files any more.
class TestProfileDamage : public QObject {
    Q_OBJECT

  private slots:
    void KeepsWhatIsThere_data() {
        const Rows<QByteArray> row;
        QByteArray everyByte;
        for (int i = 0; i < 256; ++i) everyByte.append(static_cast<char>(i));
        row("every byte", everyByte);
        row("only NULs, as after a power cut", QByteArray(4096, '\0'));
        row("zeroed end", "[Sec]\nX=1\nKe" + QByteArray(300, '\0'));
        row("no line end at all", QByteArray(900'000, 'x'));
        row("half a UTF-16 character", "\xfe\xff[");
        row("UTF-16 without mark", QByteArray("[\0S\0e\0c\0]\0\n\0K\0=\0", 16));
    }
    void KeepsWhatIsThere() {
        const auto [content] = Row<QByteArray>();
        const QString file = NewFile(content);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), "");
        QVERIFY(WriteSetting(file, "Sec", "Key", "value") != 0);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), "value");
        QCOMPARE(RemovedPart(content, ReadBytes(file)), "");
        QVERIFY(WriteSetting(file, "Sec", "Key", "other") != 0);
        QCOMPARE(ReadSetting(file, "Sec", "Key"), "other");
        QCOMPARE(RemovedPart(content, ReadBytes(file)), "");
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
            const ProfileText again(text.Bytes());
            QVERIFY2(again.Value(u"Sec", u"Key") == "value", hex);
            const QByteArray removed = RemovedPart(before, text.Bytes());
            // Only the old value itself, its blanks and quotes may be gone: never a line.
            QVERIFY2(!removed.contains('\n') && !removed.contains('\r'), hex);
            if (old.isEmpty()) QVERIFY2(removed.size() <= 2 || removed.trimmed().size() <= 2, hex);
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
        const Rows<QString> row;
        QVERIFY(QDir(folder.path()).mkpath("folder.ini"));
        row("a folder in its place", folder.filePath("folder.ini"));
        row("no such folder", folder.filePath("missing/x.ini"));
        row("a device", "/dev/zero");
        row("no name", "");
    }
    void NeedsAFile() {
        const auto [path] = Row<QString>();
        QCOMPARE(ReadSetting(path, "Sec", "Key"), "");
        QCOMPARE(WriteSetting(path, "Sec", "Key", "v"), 0);
        QCOMPARE(ReadSetting(path, "Sec", "Key"), "");
    }

  private:
    QTemporaryDir folder;

    [[nodiscard]] QString NewFile(const QByteArray& content) const {
        const QString path = folder.filePath("x.ini");
        return WriteBytes(path, content) ? path : QString();
    }
};

QTEST_GUILESS_MAIN(TestProfileDamage)
#include "test_profile_damage.moc"
