#include "picture/archive.h"
#include "picture/decoded_jpeg.h"
#include "picture/encode_jpeg.h"
#include "picture/imaging.h"
#include "picture/picture_surface.h"
#include "support/answering_boxes.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QDateTime Taken(QDate(2026, 11, 14), QTime(21, 5, 7));

}  // namespace

class TestEncodeJpeg : public QObject {
    Q_OBJECT

  private slots:
    void init();
    void MakesThePicture();
    void EncodesAtTheWholeQuality_data();
    void EncodesAtTheWholeQuality();
    void TakesEveryDepth_data();
    void TakesEveryDepth();
    void LocalMode_data();
    void LocalMode();
    void FaultsKeepTheOldPicture_data();
    void FaultsKeepTheOldPicture();
    void TooLargeIsTold();
    void Archives_data();
    void Archives();
    void ArchiveNames_data();
    void ArchiveNames();

  private:
    [[nodiscard]] QString Path(const QString& name) const { return folder->path() + '/' + name; }
    [[nodiscard]] QStringList Files(const QString& name) const {
        return QDir(Path(name)).entryList(QDir::Files, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> folder;
    PictureState state;
    AnsweringBoxes boxes;
};

void TestEncodeJpeg::init() {
    folder = std::make_unique<QTemporaryDir>();
    boxes = {};
    state = {};
    for (const QString& name : QStringList{"work", "site", "archive"})
        QVERIFY(QDir().mkpath(Path(name)));
    state.WorkPath = Path("work/");
    state.Verzeichnis = Path("site/");
    state.ArchivePath = Path("archive/");
    state.Locale = QLocale(QLocale::German, QLocale::Germany);
    QVERIFY(SaveSurface(FourQuarters(80, 60), Path("work/1pw.bmp")));
}

void TestEncodeJpeg::MakesThePicture() {
    QVERIFY(WriteBytes(Path("work/1pw.jpg"), "old"));
    QVERIFY(EncodeJpeg(state, Taken, boxes));
    QCOMPARE(Files("work"), QStringList{"1pw.jpg"});
    QVERIFY(DecodedJpeg(Path("work/1pw.jpg")).Shows(70, 10, Qt::green));
    QCOMPARE(state.LastHeader.Width, 80);
    QCOMPARE(state.LastHeader.Height, 60);
    QCOMPARE(int{state.LastHeader.BitCount}, 24);
    QVERIFY(Files("archive").isEmpty() && Files("site").isEmpty() && boxes.Shown.isEmpty());
}

void TestEncodeJpeg::EncodesAtTheWholeQuality_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("quality");
    QTest::newRow("fraction") << "75.9" << 75;
    QTest::newRow("fraction with a comma") << "75,9" << 75;
    QTest::newRow("blanks") << "  60 " << 60;
    QTest::newRow("sign and unit") << "+40 %" << 40;
    QTest::newRow("zero") << "0" << 1;
    QTest::newRow("negative") << "-20" << 1;
    QTest::newRow("no number") << "best" << 1;
    QTest::newRow("too large for an int") << "4294967297" << 100;
}

void TestEncodeJpeg::EncodesAtTheWholeQuality() {
    QFETCH(QString, text);
    QFETCH(int, quality);
    imgdes image;
    QCOMPARE(allocimage(image, 80, 60, 24), 0);
    QCOMPARE(loadbmp(Path("work/1pw.bmp"), image), 0);
    QCOMPARE(savejpg(Path("expected.jpg"), image, quality), 0);
    state.JPGQuality = text;
    QVERIFY(EncodeJpeg(state, Taken, boxes));
    QCOMPARE(ReadBytes(Path("work/1pw.jpg")), ReadBytes(Path("expected.jpg")));
}

void TestEncodeJpeg::TakesEveryDepth_data() {
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("topDown");
    QTest::addColumn<bool>("grey");
    for (const int bits : {1, 4, 8, 16, 24, 32})
        for (const bool topDown : {false, true})
            QTest::addRow("%d bit%s", bits, topDown ? ", top down" : "")
                << bits << topDown << false;
    QTest::newRow("black and white becomes grey of 8 bit") << 1 << false << true;
    QTest::newRow("grey") << 8 << false << true;
}

void TestEncodeJpeg::TakesEveryDepth() {
    QFETCH(int, bits);
    QFETCH(bool, topDown);
    QFETCH(bool, grey);
    const BitmapShape shape{.Bits = bits,
                            .Width = 150,
                            .Height = 99,
                            .TopDown = topDown,
                            .GreyPalette = grey,
                            .Block = 32};
    QVERIFY(WriteBytes(Path("work/1pw.bmp"), shape.Bytes()));
    state.JPGQuality = "95";
    QVERIFY(EncodeJpeg(state, Taken, boxes));
    const DecodedJpeg decoded(Path("work/1pw.jpg"));
    QCOMPARE(decoded.Picture.size(), QSize(150, 99));
    QCOMPARE(decoded.Sampling, int{grey ? TJSAMP_GRAY : TJSAMP_420});
    for (int y = 16; y < 96; y += 32)
        for (int x = 16; x < 150; x += 32) QVERIFY(decoded.Shows(x, y, shape.Colour(x, y)));
}

void TestEncodeJpeg::LocalMode_data() {
    QTest::addColumn<bool>("deleteFirst");
    QTest::addColumn<bool>("oldPicture");
    QTest::newRow("first picture") << false << false;
    QTest::newRow("over the old one") << false << true;
    QTest::newRow("first picture, delete") << true << false;
    QTest::newRow("delete the old one") << true << true;
}

void TestEncodeJpeg::LocalMode() {
    QFETCH(bool, deleteFirst);
    QFETCH(bool, oldPicture);
    if (oldPicture) QVERIFY(WriteBytes(Path("site/pw.jpg"), "old"));
    state.LocalMode = true;
    state.DeleteFirst = deleteFirst;
    state.Archive = true;
    QVERIFY(EncodeJpeg(state, Taken, boxes));
    QCOMPARE(Files("site"), QStringList{"pw.jpg"});
    QCOMPARE(Files("work"), QStringList{"1pw.jpg"});
    const QByteArray picture = ReadBytes(Path("site/pw.jpg"));
    QVERIFY(DecodedJpeg(Path("site/pw.jpg")).Shows(10, 50, Qt::blue));
    QCOMPARE(ReadBytes(Path("work/1pw.jpg")), picture);
    QCOMPARE(ReadBytes(Path("archive/14.11.2026-210507.jpg")), picture);
}

void TestEncodeJpeg::FaultsKeepTheOldPicture_data() {
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<bool>("localMode");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<bool>("sourceStays");
    const QByteArray good = BitmapShape{}.Bytes();
    const QStringList notFound{"Error encountered!: Cannot find file"};
    QTest::newRow("no source") << QByteArray() << false << "site/" << notFound << false;
    QTest::newRow("source cut short") << good.chopped(1) << false << "site/" << notFound << true;
    QTest::newRow("local, no source") << QByteArray() << true << "site/" << notFound << false;
    QTest::newRow("local, no such folder") << good << true << "gone/" << QStringList() << false;
    QTest::newRow("local, a file as folder")
        << good << true << "site/pw.jpg/" << QStringList() << false;
}

void TestEncodeJpeg::FaultsKeepTheOldPicture() {
    QFETCH(QByteArray, source);
    QFETCH(bool, localMode);
    QFETCH(QString, target);
    QFETCH(QStringList, messages);
    QFETCH(bool, sourceStays);
    QFile::remove(Path("work/1pw.bmp"));
    if (!source.isEmpty()) QVERIFY(WriteBytes(Path("work/1pw.bmp"), source));
    QVERIFY(WriteBytes(Path("work/1pw.jpg"), "old"));
    QVERIFY(WriteBytes(Path("site/pw.jpg"), "old on the site"));
    state.LocalMode = localMode;
    state.DeleteFirst = true;
    state.Verzeichnis = Path(target);
    state.Archive = true;
    state.LastHeader.Width = 4711;
    QVERIFY(!EncodeJpeg(state, Taken, boxes));
    QCOMPARE(boxes.Shown, messages);
    QCOMPARE(ReadBytes(Path("work/1pw.jpg")), QByteArray("old"));
    QCOMPARE(ReadBytes(Path("site/pw.jpg")), QByteArray("old on the site"));
    QVERIFY(Files("archive").isEmpty());
    QCOMPARE(QFile::exists(Path("work/1pw.bmp")), sourceStays);
    QCOMPARE(state.LastHeader.Width, 4711);
}

void TestEncodeJpeg::TooLargeIsTold() {
    QByteArray bytes = BitmapShape{.Bits = 1}.Bytes();
    BitmapShape::Put(bytes, 18, 10016, 4);
    BitmapShape::Put(bytes, 22, 10000, 4);
    QVERIFY(WriteBytes(Path("work/1pw.bmp"), bytes));
    QVERIFY(QFile::resize(Path("work/1pw.bmp"), 62 + 10016 / 8 * 10000));
    QVERIFY(!EncodeJpeg(state, Taken, boxes));
    QCOMPARE(boxes.Shown, QStringList{"Error encountered!: Not enough memory"});
    QImage surface;
    QVERIFY(!LoadSurface(surface, Path("work/1pw.bmp")));
}

void TestEncodeJpeg::Archives_data() {
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QStringList>("archived");
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale american(QLocale::English, QLocale::UnitedStates);
    const QStringList one{"14.11.2026-210507.jpg"};
    QTest::newRow("on") << true << "archive/" << german << one;
    QTest::newRow("off") << false << "archive/" << german << QStringList();
    QTest::newRow("slashes in the date") << true << "archive/" << american << QStringList();
    QTest::newRow("folder missing") << true << "gone/" << german << QStringList();
    QTest::newRow("no folder") << true << QString() << german << QStringList();
}

void TestEncodeJpeg::Archives() {
    QFETCH(bool, on);
    QFETCH(QString, path);
    QFETCH(QLocale, locale);
    QFETCH(QStringList, archived);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(Path("site")));
    state.Archive = on;
    state.ArchivePath = path.isEmpty() ? path : Path(path);
    state.Locale = locale;
    QVERIFY(WriteBytes(Path("archive/14.11.2026-210506.jpg"), "the second before"));
    if (!archived.isEmpty())
        QVERIFY(WriteBytes(Path("archive/") + archived.first(), "same second"));
    QVERIFY(EncodeJpeg(state, Taken, boxes));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(Files("archive"), QStringList{"14.11.2026-210506.jpg"} + archived);
    for (const QString& name : archived)
        QCOMPARE(ReadBytes(Path("archive/") + name), ReadBytes(Path("work/1pw.jpg")));
    QVERIFY(Files("site").isEmpty() && boxes.Shown.isEmpty());
    QCOMPARE(Files("work"), QStringList{"1pw.jpg"});
}

void TestEncodeJpeg::ArchiveNames_data() {
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("name");
    const QLocale german(QLocale::German, QLocale::Germany);
    QTest::newRow("two digits of the year become four")
        << german << QTime(9, 30, 15) << "14.11.2026-093015.jpg";
    QTest::newRow("midnight") << german << QTime(0, 0, 9) << "14.11.2026-000009.jpg";
    QTest::newRow("four digits stay")
        << QLocale(QLocale::Swedish, QLocale::Sweden) << QTime(13, 0) << "2026-11-14-130000.jpg";
    QTest::newRow("slashes stay") << QLocale(QLocale::English, QLocale::UnitedStates)
                                  << QTime(13, 0) << "11/14/2026-130000.jpg";
}

void TestEncodeJpeg::ArchiveNames() {
    QFETCH(QLocale, locale);
    QFETCH(QTime, time);
    QFETCH(QString, name);
    QCOMPARE(ArchiveName(QDateTime(QDate(2026, 11, 14), time), locale), name);
}

QTEST_GUILESS_MAIN(TestEncodeJpeg)
#include "test_encode_jpeg.moc"
