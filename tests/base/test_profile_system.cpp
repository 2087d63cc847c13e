#include "base/profile_file.h"
#include "support/full_disk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

// What only this family of systems has.
class TestProfileSystem : public QObject {
    Q_OBJECT

  private slots:
    void FullDiskLeavesTheOldFile() {
        const QTemporaryDir folder;
        const QString file = folder.filePath("x.ini");
        for (int i = 0; i < 10; ++i)
            QVERIFY(WriteSetting(file, "Sec", "Key" + QString::number(i), QString(100, u'x')) != 0);

        {
            const FullDisk full(500);
            QCOMPARE(WriteSetting(file, "Sec", "Key5", "new"), 0);
        }
        for (int i = 0; i < 10; ++i)
            QCOMPARE(ReadSetting(file, "Sec", "Key" + QString::number(i)), QString(100, u'x'));
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(folder.path()).entryList(everything), QStringList("x.ini"));
    }

    void PipeIsLeftAlone() {
        const QTemporaryDir folder;
        const QString pipe = folder.filePath("x.ini");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        // Opening it would wait for somebody at the other end.
        QCOMPARE(ReadSetting(pipe, "Sec", "Key"), "");
        QCOMPARE(WriteSetting(pipe, "Sec", "Key", "v"), 0);
    }
};

QTEST_GUILESS_MAIN(TestProfileSystem)
#include "test_profile_system.moc"
