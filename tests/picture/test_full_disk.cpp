#include "film/film_maker.h"
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
    void PictureStaysWhole_data() {
        const Rows<bool> row;
        row("working folder", false);
        row("local mode, delete before", true);
    }
    void PictureStaysWhole() {
        const auto [localMode] = Row<bool>();
        const QTemporaryDir folder;
        const QDir dir(folder.path());
        for (const QString& name : QStringList{"work", "site"}) QVERIFY(dir.mkpath(name));
        PictureState state;
        PictureTarget target;
        target.WorkPath = folder.filePath("work/");
        target.Verzeichnis = folder.filePath("site/");
        if (localMode) target.Server = "Local";
        target.Delete = localMode;
        AnsweringBoxes boxes;
        SpareFile spare;
        for (const rlim_t room : {0, 10, 1000}) {
            QVERIFY(SaveSurface(FourQuarters(400, 300), folder.filePath("work/1pw.bmp")));
            QVERIFY(WriteBytes(folder.filePath("work/1pw.jpg"), "old"));
            QVERIFY(WriteBytes(folder.filePath("site/pw.jpg"), "old"));
            const FullDisk full(room);
            QVERIFY(!EncodeJpeg(state, target, QDateTime(QDate(2026, 11, 14), QTime(9, 0)), boxes,
                                spare));
            QCOMPARE(ReadBytes(folder.filePath("work/1pw.jpg")), QByteArray("old"));
            QCOMPARE(ReadBytes(folder.filePath("site/pw.jpg")), QByteArray("old"));
            QCOMPARE(QDir(target.WorkPath).entryList(QDir::Files), QStringList{"1pw.jpg"});
            QCOMPARE(QDir(target.Verzeichnis).entryList(QDir::Files), QStringList{"pw.jpg"});
        }
    }

    void LeavesNothingOfAFilm() {
        const QTemporaryDir folder;
        QVERIFY(FourQuarters(160, 120).save(folder.filePath("2026-03-04-093000.jpg")));
        const QDate day(2026, 3, 4);
        const FilmOrder order{.Part = {.Folder = folder.path(),
                                       .From = WallTimeOf(day, QTime(0, 0)),
                                       .To = WallTimeOf(day.addDays(1), QTime(0, 0))},
                              .File = folder.filePath("film.mp4")};
        const FullDisk full(10);
        const FilmResult result = MakeFilm(order, {[](int, int) {}, [] { return false; }});
        QCOMPARE(result.Fault, FilmFault::CannotWrite);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestFullDisk)
#include "test_full_disk.moc"
