#include "picture/bitmap/picture_surface.h"
#include "picture/bitmap_bytes.h"
#include "picture/decoded_jpeg.h"
#include "picture/overlay/picture_overlay.h"
#include "support/data_rows.h"
#include "support/recording_display.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QImageReader>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Few colours, so that many pixels have the transparent one and others differ from it by little.
QImage Speckled(QSize size, quint32 seed) {
    const QRgb colours[] = {0xFFFF0000, 0xFFFF0001, 0xFFFFFFFF, 0xFF000000, 0xFF0000FF};
    QRandomGenerator random(seed);
    QImage image(size, QImage::Format_BGR888);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) image.setPixel(x, y, colours[random.bounded(5)]);
    return image;
}

// What the frame becomes, pixel by pixel: the colour of the overlay's first pixel is transparent.
QImage ByMask(QImage frame, QPoint at, const QImage& overlay) {
    for (int y = 0; y < overlay.height(); ++y)
        for (int x = 0; x < overlay.width(); ++x) {
            const QPoint to = at + QPoint(x, y);
            if (frame.valid(to) && overlay.pixel(x, y) != overlay.pixel(0, 0))
                frame.setPixel(to, overlay.pixel(x, y));
        }
    return frame;
}

QByteArray Saved(const QImage& image, const char* format) {
    QBuffer buffer;
    image.save(&buffer, format);
    return buffer.data();
}

// Two pixels, red and white.
QByteArray Gif(int width = 2, int height = 1, const char* data = "02440a00") {
    QByteArray bytes = QByteArray::fromHex(
        "474946383961"
        "0200010080000"
        "0ff0000ffffff2c000000000200010000" +
        QByteArray("02") + data + "3b");
    BitmapShape::Put(bytes, 6, width, 2);
    BitmapShape::Put(bytes, 8, height, 2);
    return bytes;
}

// Rows of grey, each brighter than the one above; they come in four rounds.
QByteArray InterlacedGif() {
    return QByteArray::fromHex(
        "4749463839610200060082"
        "0000000000202020404040606060808080a0a0a0c0c0c0e0e0e0"
        "2c00000000020006004003080840248211335509003b");
}

// A pixel that nobody sees and one that is a third red.
QByteArray GlassBitmap(int headerSize, quint32 alpha) {
    QByteArray bytes = BitmapShape{.Bits = 32,
                                   .Width = 2,
                                   .Height = 1,
                                   .HeaderSize = headerSize,
                                   .Masks = {0xFF0000, 0x00FF00, 0x0000FF}}
                           .Bytes();
    BitmapShape::Put(bytes, 66, alpha, 4);
    return bytes.chopped(8) + QByteArray("\xFF\xFF\xFF\x00\x64\x00\xFF\x55", 8);
}

QByteArray HugeJpeg() {
    QByteArray bytes = Saved(Speckled({8, 8}, 1), "JPG");
    const qsizetype frame = bytes.indexOf("\xFF\xC0");
    return bytes.replace(frame + 5, 4, "\x75\x30\x75\x30");
}

// All of it is there.
QByteArray HugeBitmap() {
    QByteArray bytes = BitmapShape{.Bits = 1}.Bytes();
    BitmapShape::Put(bytes, 18, 8000, 4);
    BitmapShape::Put(bytes, 22, 8000, 4);
    return bytes.leftJustified(8'100'000, 'x');
}

}  // namespace

class TestPictureOverlay : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(folder->path()).mkpath("overlay/sub"));
        display = {};
        settings = {};
        overlay = std::make_unique<PictureOverlay>(display, QStringList{folder->path()});
    }

    void StampsEveryKindOfFile_data() {
        const Rows<QByteArray, QImage> row;
        const QImage large = Speckled({90, 70}, 3);
        QImage glass(2, 1, QImage::Format_ARGB32);
        glass.setPixel(0, 0, qRgba(255, 255, 255, 0));
        glass.setPixel(1, 0, qRgba(255, 0, 100, 85));
        QImage mixed(2, 1, QImage::Format_BGR888);
        mixed.setPixel(0, 0, FourQuarters(40, 30).pixel(19, 14));
        mixed.setPixel(1, 0, qRgb(85, 170, 33));
        row("half transparent, over red and green", Saved(glass, "PNG"), mixed);
        for (const int header : {56, 108, 124})
            row("half transparent bitmap", GlassBitmap(header, 0xFF000000), mixed);
        mixed.setPixel(1, 0, qRgb(255, 0, 100));
        row("bitmap whose mask overlaps", GlassBitmap(108, 0xFF00), mixed);
        row("PNG larger than the frame", Saved(large, "PNG"), large);
        QImage two(2, 1, QImage::Format_BGR888);
        two.setPixel(0, 0, 0xFFFF0000);
        two.setPixel(1, 0, 0xFFFFFFFF);
        row("GIF", Gif(), two);
        row("GIF with stray bytes behind", Gif() + "stray", two);
        QImage rows(2, 6, QImage::Format_BGR888);
        for (int y = 0; y < 6; ++y)
            for (int x = 0; x < 2; ++x) rows.setPixel(x, y, qRgb(32 * y, 32 * y, 32 * y));
        row("interlaced GIF", InterlacedGif(), rows);
        QImage grey(13, 9, QImage::Format_BGR888);
        grey.fill(qRgb(90, 90, 90));
        const QByteArray jpeg = Saved(grey, "JPG");
        row("JPEG", jpeg, grey);
        row("JPEG with stray bytes before its end", jpeg.chopped(2) + "stray\xFF\xD9", grey);
        row("JPEG with stray bytes behind", jpeg + "stray", grey);
    }
    void StampsEveryKindOfFile() {
        const auto [bytes, picture] = Row<QByteArray, QImage>();
        // The name tells nothing about the kind.
        QVERIFY(WriteBytes(Overlay("Overlay.bmp"), bytes));
        settings.PositionBild = OverlayPlace::Center;
        QVERIFY(Stamp());
        const QSize rest = frame.size() - picture.size();
        QCOMPARE(picture2, ByMask(frame, {rest.width() / 2, rest.height() / 2}, picture));
        QCOMPARE(display.Statuses, QStringList());
    }

    void FindsTheFile_data() {
        const Rows<QString, bool> row;
        row("other case", "LOGO.PNG", true);
        row("folder, backslash", "Sub\\logo.png", true);
        row("outside", "../secret.png", false);
        row("outside, backslash", "sub\\..\\..\\secret.png", false);
        row("a folder", "sub", false);
    }
    void FindsTheFile() {
        const auto [name, found] = Row<QString, bool>();
        const QByteArray white = Saved(FourQuarters(4, 4).mirrored(true, true), "PNG");
        for (const char* const path : {"overlay/Logo.png", "overlay/sub/Logo.png", "secret.png"})
            QVERIFY(WriteBytes(folder->filePath(QLatin1String(path)), white));
        settings.Overlayfile = name;
        QVERIFY(Stamp());
        QCOMPARE(picture2 != frame, found);
        QCOMPARE(display.Statuses.isEmpty(), found);
    }

    void FaultsLeaveThePlainFrame_data() {
        const Rows<QByteArray, QString> row;
        const QString unreadable = "Overlay file cannot be read: Overlay.bmp";
        const QString tooLarge = "Overlay file is too large: Overlay.bmp";

        row("missing", {}, "Overlay file not found !");
        row("a drawing", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>",
            unreadable);
        row("JPEG of 30000x30000", HugeJpeg(), tooLarge);
        row("GIF of 30000x30000", Gif(30000, 30000), tooLarge);
        row("bitmap of 8000x8000", HugeBitmap(), tooLarge);
        row("GIF of 35 bytes and 5000x5000", Gif(5000, 5000), unreadable);
        row("GIF without data", Gif(2, 1, "01"), unreadable);
        row("GIF of half a picture", Gif(2, 1, "02440100"), unreadable);
        row("bitmap with a damaged header",
            QByteArray::fromHex("424d00000000000000001a0000aa00000000050004000100180000"),
            unreadable);
    }
    void FaultsLeaveThePlainFrame() {
        const auto [bytes, status] = Row<QByteArray, QString>();
        if (!bytes.isNull()) QVERIFY(WriteBytes(Overlay("Overlay.bmp"), bytes));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(Stamp());
            QCOMPARE(picture2, frame);
        }
        QCOMPARE(display.Statuses, QStringList{status});
        // Where the frame must not be seen, there is no picture.
        settings.PictureCapture = true;
        QVERIFY(!Stamp());
        // Told again after it was repaired.
        QVERIFY(WriteBytes(Overlay("Overlay.bmp"), Gif()));
        QVERIFY(Stamp());
        QVERIFY(QFile::remove(Overlay("Overlay.bmp")));
        QVERIFY(!Stamp());
        QCOMPARE(display.Statuses.mid(1),
                 QStringList({"Overlay file not found !",
                              "No picture: only the overlay may be published"}));
    }

    void HalfAndDamagedFiles_data() {
        const Rows<QByteArray> row;
        const QImage picture = Speckled({24, 17}, 4);
        row("bitmap", BitmapShape{.Bits = 8, .Width = 9, .Height = 9}.Bytes());
        row("PNG", Saved(picture, "PNG"));
        row("JPEG", Saved(picture, "JPG"));
        row("GIF", Gif());
        row("nothing known", QByteArray(100, 'x'));
    }
    void HalfAndDamagedFiles() {
        const auto [whole] = Row<QByteArray>();
        const auto read = [](QByteArray bytes) {
            QBuffer buffer(&bytes);
            buffer.open(QIODevice::ReadOnly);
            return ReadPicture(buffer);
        };
        const FilePicture good = read(whole);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            const FilePicture part = read(whole.left(size));
            // What ends a file after the last pixel may be missing.
            const bool same = part.Fault == PictureFault::None && part.Image == good.Image;
            QVERIFY2(part.Fault == PictureFault::Unreadable || same,
                     qPrintable(QString::number(size)));
        }
        QRandomGenerator random(7);
        for (int run = 0; run < 300; ++run) {
            QByteArray bytes = whole;
            // The first bytes stay, so that the decoder of that kind gets them.
            for (qsizetype i = 4; i < bytes.size(); ++i)
                if (random.bounded(20) == 0) bytes[i] = static_cast<char>(random.bounded(256));
            const FilePicture damaged = read(bytes);
            QCOMPARE(damaged.Image.isNull(), damaged.Fault != PictureFault::None);
        }
    }

    // As the toolkit, which goes by the same entry, turns it.
    void StandsUpright() {
        for (char orientation = 1; orientation <= 8; ++orientation) {
            QByteArray exif(
                "\xFF\xE1\x00\x22"
                "Exif\0\0MM\0*\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0",
                29);
            exif += QByteArray(1, orientation) + QByteArray(6, '\0');
            QByteArray bytes = Saved(FourQuarters(48, 32), "JPG").insert(2, exif);
            QBuffer buffer(&bytes);
            buffer.open(QIODevice::ReadOnly);
            const QImage seen = ReadPicture(buffer).Image;
            buffer.seek(0);
            QImageReader toolkit(&buffer);
            toolkit.setAutoTransform(true);
            QCOMPARE(seen, toolkit.read().convertToFormat(QImage::Format_BGR888));
            QCOMPARE(seen.width() < seen.height(), orientation > 4);
        }
    }

    void GoesThroughTheList_data() {
        const Rows<QString, int, QString, int> row;  // the entry of each picture, '-': none
        row("every second picture", "0 1 2", 2, "001122001122", 0);
        row("never", "0 1", 0, "0000", 0);
        row("a broken and a missing one", "0 bad no 2", 1, "0--20--20--2", 2);
        row("empty", "", 1, "----", 1);
    }
    void GoesThroughTheList() {
        const auto [list, interval, shown, faults] = Row<QString, int, QString, int>();
        settings.PictureEff = true;
        settings.PositionBild = OverlayPlace::UpLeft;
        settings.PictureList = list.split(' ', Qt::SkipEmptyParts);
        settings.PictureUB = interval;
        for (int i = 0; i < 3; ++i) {
            QImage entry = FourQuarters(4, 4);
            entry.setPixel(3, 3, qRgb(10, 20, i));
            QVERIFY(WriteBytes(Overlay(QString::number(i)), Saved(entry, "PNG")));
        }
        QVERIFY(WriteBytes(Overlay("bad"), "bad"));
        QString seen;
        for (qsizetype i = 0; i < shown.size(); ++i) {
            QVERIFY(Stamp());
            const QRgb pixel = picture2.pixel(3, 3);
            seen += qGreen(pixel) == 20 ? QChar(u'0' + qBlue(pixel)) : QChar(u'-');
        }
        QCOMPARE(seen, shown);
        QCOMPARE(display.Statuses.size(), faults);
    }

    void AloneInPlaceOfTheFrame() {
        QImage half(6, 4, QImage::Format_ARGB32);
        half.fill(qRgba(200, 0, 0, 255));
        half.setPixel(0, 0, qRgba(0, 0, 0, 0));
        QVERIFY(WriteBytes(Overlay("Overlay.bmp"), Saved(half, "PNG")));
        settings.PictureCapture = true;
        QVERIFY(Stamp());
        QCOMPARE(picture2.format(), QImage::Format_BGR888);
        QCOMPARE(picture2.size(), QSize(6, 4));
        QCOMPARE(picture2.pixel(5, 3), qRgb(200, 0, 0));
        QCOMPARE(picture2.pixel(0, 0), qRgb(255, 255, 255));
    }

    void ReadsAgainWhatChanged() {
        const QString path = Overlay("Overlay.bmp");
        settings.PositionBild = OverlayPlace::UpLeft;
        const QDateTime now = QDateTime::currentDateTime();
        int red = 0;
        // The last one within the same tick of the file system's clock.
        for (const QDateTime& time : {now.addDays(-2), now.addDays(-1), now, now}) {
            const QRgb colour = qRgb(++red, 1, 1);
            QImage image(8, 8, QImage::Format_BGR888);
            image.fill(Qt::white);
            image.setPixel(7, 7, colour);
            QVERIFY(SaveSurface(image, path));
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
            file.close();
            QVERIFY(Stamp());
            QCOMPARE(picture2.pixel(7, 7), colour);
        }
    }

  private:
    [[nodiscard]] QString Overlay(const QString& name) const {
        return folder->filePath("overlay/" + name);
    }
    // On a new frame.
    [[nodiscard]] bool Stamp() {
        picture2 = frame;
        return overlay->StampOverlayPicture(picture2, settings);
    }

    const QImage frame = FourQuarters(40, 30);
    std::unique_ptr<QTemporaryDir> folder;
    RecordingDisplay display;
    OverlaySettings settings;
    QImage picture2;
    std::unique_ptr<PictureOverlay> overlay;
};

QTEST_GUILESS_MAIN(TestPictureOverlay)
#include "test_picture_overlay.moc"
