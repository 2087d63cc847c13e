#include "picture/bitmap/picture_surface.h"
#include "picture/decoded_jpeg.h"
#include "picture/encode_jpeg.h"
#include "support/answering_boxes.h"
#include "support/data_rows.h"
#include "support/full_disk.h"

#include <QDir>
#include <QTemporaryDir>

class TestFullDisk : public QObject {
    Q_OBJECT

  private slots:
    void BitmapStaysWhole() {
        const QTemporaryDir folder;
        const QString file = folder.filePath("1pw.bmp");
        QVERIFY(WriteBytes(file, "old"));
        for (const rlim_t room : {0, 10, 54, 300'000}) {
            const QImage frame = FourQuarters(400, 300);
            const FullDisk full(room);
            QVERIFY(!SaveSurface(frame, file));
            QCOMPARE(ReadBytes(file), QByteArray("old"));
            QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{"1pw.bmp"});
        }
    }

    void PictureStaysWhole_data() {
        const Rows<bool, bool> row;
        row("working folder", false, false);
        row("local mode", true, false);
        row("local mode, delete before", true, true);
    }
    void PictureStaysWhole() {
        const auto [localMode, deleteFirst] = Row<bool, bool>();
        const QTemporaryDir folder;
        const QDir dir(folder.path());
        for (const QString& name : QStringList{"work", "site", "archive"})
            QVERIFY(dir.mkpath(name));
        PictureState state;
        PictureTarget target;
        target.WorkPath = folder.filePath("work/");
        target.Verzeichnis = folder.filePath("site/");
        target.ArchivePath = folder.filePath("archive/");
        target.Archive = true;
        if (localMode) target.Server = "Local";
        target.Delete = deleteFirst;
        AnsweringBoxes boxes;
        for (const rlim_t room : {0, 10, 1000}) {
            QVERIFY(SaveSurface(FourQuarters(400, 300), folder.filePath("work/1pw.bmp")));
            QVERIFY(WriteBytes(folder.filePath("work/1pw.jpg"), "old"));
            QVERIFY(WriteBytes(folder.filePath("site/pw.jpg"), "old"));
            const FullDisk full(room);
            QVERIFY(!EncodeJpeg(state, target, QDateTime(QDate(2026, 11, 14), QTime(9, 0)), boxes));
            QCOMPARE(ReadBytes(folder.filePath("work/1pw.jpg")), QByteArray("old"));
            QCOMPARE(ReadBytes(folder.filePath("site/pw.jpg")), QByteArray("old"));
            QCOMPARE(QDir(target.WorkPath).entryList(QDir::Files), QStringList{"1pw.jpg"});
            QCOMPARE(QDir(target.Verzeichnis).entryList(QDir::Files), QStringList{"pw.jpg"});
            QVERIFY(QDir(target.ArchivePath).entryList(QDir::Files).isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestFullDisk)
#include "test_full_disk.moc"
