#include "camera/frame_scaler.h"
#include "film/film_encoder.h"
#include "film/film_work.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

const QDate day(2025, 3, 4);

// An archive of pictures of differing sizes and colours, one of them cut off, and a place for
// films.
class FilmBench {
  public:
    static constexpr int Pictures = 12;

    FilmBench() {
        QDir(Folder.path()).mkpath("archive/2025-03-04");
        for (int i = 0; i < Pictures; ++i) {
            QImage picture(i % 3 ? QSize(161, 121) : QSize(200, 90), QImage::Format_RGB32);
            picture.fill(i < Pictures - 1 ? Qt::red : Qt::blue);
            picture.save(File(i), "JPG", 95);
        }
        (void)WriteBytes(File(5), ReadBytes(File(5)).chopped(300));
    }

    QTemporaryDir Folder;

    [[nodiscard]] QString File(int number) const {
        const QString folder = number % 2 ? QString("archive/") : QString("archive/2025-03-04/");
        return Folder.filePath(folder + QString("2025-03-04-0630%1.jpg").arg(number + 10));
    }
    [[nodiscard]] FilmOrder Order(FilmFormat format = FilmFormat::Mp4) const {
        return {.Part = {.Folder = Folder.filePath("archive"),
                         .From = WallTimeOf(day, QTime(6, 30, 11)),
                         .To = WallTimeOf(day.addDays(1), QTime(0, 0)),
                         .Locale = QLocale::c()},
                .Rate = 10,
                .Format = format,
                .File = Folder.filePath("films/film")};
    }
    [[nodiscard]] QStringList Films() const {
        return QDir(Folder.filePath("films")).entryList(QDir::Files);
    }
};

// What a player sees of a film.
struct Seen {
    QList<QImage> Pictures;
    double Seconds = 0;
    AVColorSpace Colours = AVCOL_SPC_UNSPECIFIED;

    explicit Seen(const QString& file) {
        AVFormatContext* opened = nullptr;
        if (avformat_open_input(&opened, file.toUtf8().constData(), nullptr, nullptr) < 0) return;
        const FormatPtr format(opened);
        avformat_find_stream_info(opened, nullptr);
        Seconds = static_cast<double>(format->duration) / AV_TIME_BASE;
        const AVCodecParameters& stream = *format->streams[0]->codecpar;
        Colours = stream.color_space;
        const AVCodec* decoder = avcodec_find_decoder(stream.codec_id);
        const CodecPtr codec(avcodec_alloc_context3(decoder));
        avcodec_parameters_to_context(codec.get(), &stream);
        if (avcodec_open2(codec.get(), decoder, nullptr) < 0) return;
        const PacketPtr packet(av_packet_alloc());
        while (av_read_frame(opened, packet.get()) >= 0) {
            avcodec_send_packet(codec.get(), packet.get());
            av_packet_unref(packet.get());
            Take(*codec);
        }
        avcodec_send_packet(codec.get(), nullptr);
        Take(*codec);
    }

  private:
    void Take(AVCodecContext& codec) {
        const FramePtr frame(av_frame_alloc());
        FrameScaler scaler;
        while (avcodec_receive_frame(&codec, frame.get()) >= 0)
            Pictures << scaler.ToPicture(*frame);
    }
};

bool Alike(const QColor& one, const QColor& other) {
    constexpr int most = 14;
    return std::abs(one.red() - other.red()) < most &&
           std::abs(one.green() - other.green()) < most &&
           std::abs(one.blue() - other.blue()) < most;
}

}  // namespace

class TestFilm : public QObject {
    Q_OBJECT

  private slots:
    void NamesTellTheTime_data() {
        const Rows<QString, QString, QString> row;  // name, locale, time
        row("sorted", "2026-11-22-063015.jpg", "C", "2026-11-22T06:30:15");
        row("further one of the second", "2026-11-22-063015_02.jpg", "C", "2026-11-22T06:30:15");
        row("sorted, elsewhere", "2024-02-29-235959.JPG", "de_DE", "2024-02-29T23:59:59");
        row("German", "22.11.2026-063015.jpg", "de_DE", "2026-11-22T06:30:15");
        row("Dutch", "22-11-2026-063015.jpg", "nl_NL", "2026-11-22T06:30:15");
        row("another locale's", "22.11.2026-063015.jpg", "nl_NL", "");
        row("no such day", "2026-02-29-063015.jpg", "C", "");
        row("no such hour", "2026-11-22-243015.jpg", "C", "");
        row("no date", "-063015.jpg", "C", "");
        row("letters", "2026-11-22-06x015.jpg", "C", "");
        row("short", "1.jpg", "C", "");
    }
    void NamesTellTheTime() {
        const auto [name, locale, time] = Row<QString, QString, QString>();
        for (int i = 0; i < 2; ++i) {
            const auto told = ArchiveTimes(QLocale(locale)).Of(name);
            const QString text = told ? LocalTimeOf(*told).toString(Qt::ISODate) : QString();
            QCOMPARE(text, time);
        }
    }

    void FiguresOfAFilm() {
        QCOMPARE(FilmSizeOf({641, 481}, 0), QSize(640, 480));
        QCOMPARE(FilmSizeOf({1600, 1200}, 720), QSize(960, 720));
        QCOMPARE(FilmSizeOf({9000, 3000}, 0), QSize(4096, 1364));
        QCOMPARE(PlaceOnFilm({641, 481}, {640, 480}), QRect(0, 0, 640, 480));
        QCOMPARE(PlaceOnFilm({1280, 720}, {852, 480}), QRect(0, 0, 852, 480));
        QCOMPARE(PlaceOnFilm({320, 480}, {640, 480}), QRect(160, 0, 320, 480));
        QCOMPARE(Thinned(std::vector<ArchivedPicture>(101), 2, 10).size(), std::size_t{10});
        QCOMPARE(Thinned(std::vector<ArchivedPicture>(101), 25).size(), std::size_t{5});
        QCOMPARE(ThinnedCount(101, 25), qsizetype{5});
        QCOMPARE(TimeLeft(3000, 30, 40), qint64{1000});
    }

    void ShowsTheArchive_data() {
        Rows<QString, FilmFormat, bool>({{"MP4", FilmFormat::Mp4, false},
                                         {"MP4 of few bytes", FilmFormat::Mp4, true},
                                         {"WebM", FilmFormat::WebM, false}});
    }
    void ShowsTheArchive() {
        const auto [name, format, small] = Row<QString, FilmFormat, bool>();
        if (!FilmEncoder::Offers(format)) QSKIP("no encoder on this system");
        const FilmBench bench;
        QDir(bench.Folder.path()).mkdir("films");
        // Its name tells nothing; the file was written now.
        QVERIFY(QFile::copy(bench.File(0), bench.Folder.filePath("archive/now.jpg")));
        FilmOrder order = bench.Order(format);
        order.MostBytes = small ? 20'000 : 0;
        FilmWork work;
        QSignalSpy ended(&work, &FilmWork::Ended);
        FilmResult result;
        QObject::connect(&work, &FilmWork::Ended, &work,
                         [&result](const FilmResult& it) { result = it; });
        work.Start(order);
        QTRY_COMPARE(ended.count(), 1);
        QCOMPARE(result.Fault, FilmFault::None);
        QCOMPARE(result.Broken, 1);
        QCOMPARE(result.Pictures, FilmBench::Pictures - 2);
        QCOMPARE(bench.Films(), QStringList("film"));
        const Seen seen(order.File);
        QCOMPARE(seen.Pictures.size(), FilmBench::Pictures - 2);
        QCOMPARE(seen.Seconds, 1.0);
        QCOMPARE(seen.Pictures[0].size(), QSize(160, 120));
        QVERIFY(Alike(seen.Pictures[0].pixelColor(80, 5), Qt::red));
        QVERIFY(Alike(seen.Pictures[2].pixelColor(80, 5), Qt::black));
        QVERIFY(Alike(seen.Pictures[2].pixelColor(80, 60), Qt::red));
        QVERIFY(Alike(seen.Pictures.last().pixelColor(80, 60), Qt::blue));
        QVERIFY(seen.Colours == AVCOL_SPC_BT709 || format == FilmFormat::WebM);
        const QByteArray bytes = ReadBytes(order.File);
        QVERIFY2(bytes.indexOf("moov") < bytes.indexOf("mdat") || format == FilmFormat::WebM,
                 "the index is to come first");
    }

    void LeavesNothing_data() {
        const Rows<FilmFault, int> row;
        row("cancelled", FilmFault::Cancelled, 3);
        row("no pictures", FilmFault::NoPictures, -1);
        row("nothing to write to", FilmFault::CannotWrite, -1);
        row("no archive", FilmFault::NoFolder, -1);
    }
    void LeavesNothing() {
        const auto [fault, cancelAt] = Row<FilmFault, int>();
        const FilmBench bench;
        QDir(bench.Folder.path()).mkdir("films");
        FilmOrder order = bench.Order();
        QVERIFY(WriteBytes(order.File, "before"));
        if (fault == FilmFault::NoPictures) order.Part.To = order.Part.From;
        if (fault == FilmFault::NoFolder) order.Part.Folder += "/gone";
        if (fault == FilmFault::CannotWrite) order.File = bench.Folder.filePath("gone/film");
        int at = 0;
        const FilmResult result =
            MakeFilm(order, {[&at](int done, int) { at = done; },
                             [&at, most = cancelAt] { return most >= 0 && at >= most; }});
        QCOMPARE(result.Fault, fault);
        QCOMPARE(bench.Films(), QStringList("film"));
        QCOMPARE(ReadBytes(bench.Folder.filePath("films/film")), "before");
    }

    void StampsTheTime() {
        const FilmBench bench;
        QDir(bench.Folder.path()).mkdir("films");
        FilmOrder order = bench.Order();
        order.Stamp = true;
        QCOMPARE(MakeFilm(order, {[](int, int) {}, [] { return false; }}).Fault, FilmFault::None);
        const QImage picture = Seen(order.File).Pictures.value(0);
        const auto mean = [&picture](const QRect& part) {
            const QImage one = picture.copy(part).scaled(1, 1, {}, Qt::SmoothTransformation);
            return one.pixelColor(0, 0);
        };
        QVERIFY(mean({100, 108, 60, 10}).red() < 200);
        QVERIFY(Alike(mean({0, 70, 160, 10}), Qt::red));
    }
};

QTEST_MAIN(TestFilm)
#include "test_film.moc"
