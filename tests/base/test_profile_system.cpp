#include "base/profile_file.h"
#include "support/file_bytes.h"
#include "support/full_disk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

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

    void IsPrivate() {
        const QTemporaryDir folder;
        const QString file = folder.filePath("x.ini");
        QVERIFY(WriteBytes(file, "[Sec]\n"));
        QFile(file).setPermissions(QFile::Permissions(0x6644));
        const QString fresh = folder.filePath("y.ini");
        for (const QString& each : {file, fresh}) {
            QVERIFY(WriteSetting(each, "Sec", "PW", "secret") != 0);
            QVERIFY(!(QFile(each).permissions() & QFile::Permissions(0x1077)));
        }
    }

    void FollowsLinks() {
        const QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("elsewhere"));
        const QString target = folder.filePath("elsewhere/real.ini");
        QVERIFY(WriteBytes(target, "[Sec]\nKey=1\n"));
        const QString link = folder.filePath("x.ini");
        QVERIFY(QFile::link("elsewhere/real.ini", link));
        QVERIFY(WriteSetting(link, "Sec", "Key", "2") != 0);
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(ReadBytes(target), "[Sec]\nKey=2\n");
        QCOMPARE(ReadSetting(link, "Sec", "Key"), "2");
    }
};

QTEST_GUILESS_MAIN(TestProfileSystem)
#include "test_profile_system.moc"
