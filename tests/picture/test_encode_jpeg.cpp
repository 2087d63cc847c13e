#include "picture/bitmap/picture_surface.h"
#include "picture/decoded_jpeg.h"
#include "picture/encode_jpeg.h"
#include "picture/imaging.h"
#include "support/answering_boxes.h"
#include "support/data_rows.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

const QDateTime Taken(QDate(2026, 11, 14), QTime(9, 5, 7));

}  // namespace

class TestEncodeJpeg : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        folder = std::make_unique<QTemporaryDir>();
        boxes = {};
        state = {};
        target = {};
        for (const QString& name : QStringList{"work", "site", "archive"})
            QVERIFY(QDir().mkpath(Path(name)));
        target.WorkPath = Path("work/");
        target.Verzeichnis = Path("site/");
        target.ArchivePath = Path("archive/");
        state.Locale = QLocale(QLocale::German, QLocale::Germany);
        QVERIFY(SaveSurface(FourQuarters(80, 60), Path("work/1pw.bmp")));
    }

    void EncodesAtTheQuality_data() { Rows<int, int>({{75, 75}, {0, 1}, {101, 100}}); }
    void EncodesAtTheQuality() {
        const auto [set, quality] = Row<int, int>();
        imgdes image;
        QCOMPARE(allocimage(image, 80, 60, 24), 0);
        QCOMPARE(loadbmp(Path("work/1pw.bmp"), image), 0);
        QCOMPARE(savejpg(Path("expected.jpg"), image, quality), 0);
        target.JPGQuality = set;
        QVERIFY(EncodeJpeg(state, target, Taken, boxes));
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), ReadBytes(Path("expected.jpg")));
    }

    void TakesEveryDepth_data() {
        const Rows<int, bool, bool> row;
        for (const int bits : {1, 4, 8, 16, 24, 32})
            row(QByteArray::number(bits).constData(), bits, bits > 8, false);
        row("black and white becomes grey of 8 bit", 1, false, true);
        row("grey", 8, false, true);
    }
    void TakesEveryDepth() {
        const auto [bits, topDown, grey] = Row<int, bool, bool>();
        const BitmapShape shape{.Bits = bits,
                                .Width = 150,
                                .Height = 99,
                                .TopDown = topDown,
                                .GreyPalette = grey,
                                .Block = 32};
        QVERIFY(WriteBytes(Path("work/1pw.bmp"), shape.Bytes()));
        target.JPGQuality = 95;
        QVERIFY(EncodeJpeg(state, target, Taken, boxes));
        const DecodedJpeg decoded(Path("work/1pw.jpg"));
        QCOMPARE(decoded.Picture.size(), QSize(150, 99));
        QCOMPARE(decoded.Sampling, int{grey ? TJSAMP_GRAY : TJSAMP_420});
        for (int y = 16; y < 96; y += 32)
            for (int x = 16; x < 150; x += 32) QVERIFY(decoded.Shows(x, y, shape.Colour(x, y)));
    }

    void LocalMode_data() {
        const Rows<bool, bool> row;
        row("over the old one", false, true);
        row("first picture, delete", true, false);
        row("delete the old one", true, true);
    }
    void LocalMode() {
        const auto [deleteFirst, oldPicture] = Row<bool, bool>();
        if (oldPicture) QVERIFY(WriteBytes(Path("site/pw.jpg"), "old"));
        target.Server = "Local";
        target.Delete = deleteFirst;
        target.Archive = true;
        QVERIFY(EncodeJpeg(state, target, Taken, boxes));
        QCOMPARE(Files("site"), QStringList{"pw.jpg"});
        QCOMPARE(Files("work"), QStringList{"1pw.jpg"});
        const QByteArray picture = ReadBytes(Path("site/pw.jpg"));
        QVERIFY(DecodedJpeg(Path("site/pw.jpg")).Shows(10, 50, Qt::blue));
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), picture);
        QCOMPARE(ReadBytes(Path("archive/14.11.2026-090507.jpg")), picture);
    }

    void FaultsKeepTheOldPicture_data() {
        const Rows<QByteArray, bool, QString, QStringList, bool> row;
        const QByteArray good = BitmapShape{}.Bytes();
        const QStringList notFound{"Error encountered!: Cannot find file"};
        row("no source", {}, false, "site/", notFound, false);
        row("source cut short", good.chopped(1), false, "site/", notFound, true);
        row("local, no source", {}, true, "site/", notFound, false);
        row("local, no such folder", good, true, "gone/", {}, false);
        row("local, a file as folder", good, true, "site/pw.jpg/", {}, false);
    }
    void FaultsKeepTheOldPicture() {
        const auto [source, localMode, folderName, messages, sourceStays] =
            Row<QByteArray, bool, QString, QStringList, bool>();
        QFile::remove(Path("work/1pw.bmp"));
        if (!source.isEmpty()) QVERIFY(WriteBytes(Path("work/1pw.bmp"), source));
        QVERIFY(WriteBytes(Path("work/1pw.jpg"), "old"));
        QVERIFY(WriteBytes(Path("site/pw.jpg"), "old on the site"));
        if (localMode) target.Server = "local";
        target.Delete = true;
        target.Verzeichnis = Path(folderName);
        target.Archive = true;
        state.LastHeader.Width = 4711;
        QVERIFY(!EncodeJpeg(state, target, Taken, boxes));
        QCOMPARE(boxes.Shown, messages);
        QCOMPARE(ReadBytes(Path("work/1pw.jpg")), QByteArray("old"));
        QCOMPARE(ReadBytes(Path("site/pw.jpg")), QByteArray("old on the site"));
        QVERIFY(Files("archive").isEmpty());
        QCOMPARE(QFile::exists(Path("work/1pw.bmp")), sourceStays);
        QCOMPARE(state.LastHeader.Width, 4711);
    }

    void TooLargeIsTold() {
        QByteArray bytes = BitmapShape{.Bits = 1}.Bytes();
        BitmapShape::Put(bytes, 18, 10016, 4);
        BitmapShape::Put(bytes, 22, 10000, 4);
        QVERIFY(WriteBytes(Path("work/1pw.bmp"), bytes));
        QVERIFY(QFile::resize(Path("work/1pw.bmp"), 62 + 10016 / 8 * 10000));
        QVERIFY(!EncodeJpeg(state, target, Taken, boxes));
        QCOMPARE(boxes.Shown, QStringList{"Error encountered!: Not enough memory"});
        QImage surface;
        QVERIFY(!LoadSurface(surface, Path("work/1pw.bmp")));
    }

    void Archives_data() {
        const Rows<bool, QString, QLocale, QStringList> row;
        const QLocale german(QLocale::German, QLocale::Germany);
        const QLocale american(QLocale::English, QLocale::UnitedStates);
        const QStringList one{"14.11.2026-090507.jpg"};
        row("on", true, "archive/", german, one);
        row("off", false, "archive/", german, {});
        row("four digits of the year stay", true, "archive/", QLocale("sv_SE"),
            {"2026-11-14-090507.jpg"});
        row("slashes in the date", true, "archive/", american, {});
        row("folder missing", true, "gone/", german, {});
        row("no folder", true, {}, german, {});
    }
    void Archives() {
        const auto [on, path, locale, archived] = Row<bool, QString, QLocale, QStringList>();
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(Path("site")));
        target.Archive = on;
        target.ArchivePath = path.isEmpty() ? path : Path(path);
        state.Locale = locale;
        QVERIFY(WriteBytes(Path("archive/14.11.2026-090506.jpg"), "the second before"));
        if (!archived.isEmpty())
            QVERIFY(WriteBytes(Path("archive/") + archived.first(), "same second"));
        QVERIFY(WriteBytes(Path("work/1pw.jpg"), "old"));
        QVERIFY(EncodeJpeg(state, target, Taken, boxes));
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(DecodedJpeg(Path("work/1pw.jpg")).Shows(70, 10, Qt::green));
        QVERIFY(state.LastHeader.Width == 80 && state.LastHeader.BitCount == 24);
        QCOMPARE(Files("archive"), QStringList{"14.11.2026-090506.jpg"} + archived);
        for (const QString& name : archived)
            QCOMPARE(ReadBytes(Path("archive/") + name), ReadBytes(Path("work/1pw.jpg")));
        QVERIFY(Files("site").isEmpty() && boxes.Shown.isEmpty());
        QCOMPARE(Files("work"), QStringList{"1pw.jpg"});
    }

  private:
    [[nodiscard]] QString Path(const QString& name) const { return folder->path() + '/' + name; }
    [[nodiscard]] QStringList Files(const QString& name) const {
        return QDir(Path(name)).entryList(QDir::Files, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> folder;
    PictureState state;
    PictureTarget target;
    AnsweringBoxes boxes;
};

QTEST_GUILESS_MAIN(TestEncodeJpeg)
#include "test_encode_jpeg.moc"
