#include "picture/bitmap/picture_surface.h"
#include "picture/bitmap_bytes.h"
#include "picture/imaging.h"
#include "support/data_rows.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

namespace {

struct Patch {
    int Offset;
    qint64 Value;
    int Size;
};

QList<BitmapShape> AllShapes() {
    QList<BitmapShape> shapes;
    const auto add = [&shapes](BitmapShape shape) {
        shapes << shape;
        shape.TopDown = true;
        if (shape.HeaderSize != 12) shapes << shape;
    };
    for (const int bits : {1, 4, 8, 16, 24, 32})
        for (const int header : {12, 40, 108, 124})
            if (header != 12 || (bits != 16 && bits != 32))
                add({.Bits = bits, .HeaderSize = header});
    for (const int header : {40, 52, 56, 108, 124}) {
        add({.Bits = 16, .HeaderSize = header, .Masks = {0xF800, 0x07E0, 0x001F}});
        add({.Bits = 32, .HeaderSize = header, .Masks = {0x0000FF, 0x00FF00, 0xFF0000}});
    }
    add({.Bits = 16, .Masks = {0x0F00, 0x00F0, 0x000F}});
    add({.Bits = 32, .HeaderSize = 108, .Masks = {0xFF000000, 0x00FF0000, 0x0000FF00}});
    // Larger than one piece of rows, the last piece not full.
    for (const int bits : {1, 8, 24, 32}) add({.Bits = bits, .Width = 331, .Height = 301});
    return shapes;
}

QByteArray Name(const BitmapShape& shape) {
    return QByteArray::number(shape.Bits) + " bit, " + QByteArray::number(shape.Width) +
           " wide, header " + QByteArray::number(shape.HeaderSize) +
           (shape.TopDown ? ", top down" : "") +
           (shape.Masked() ? ", red " + QByteArray::number(shape.Masks[0], 16) : QByteArray());
}

}  // namespace

class TestBitmapFile : public QObject {
    Q_OBJECT

  private slots:
    void LoadsEveryForm_data() {
        const Rows<BitmapShape> row;
        const QList<BitmapShape> shapes = AllShapes();
        for (const BitmapShape& shape : shapes) row(Name(shape).constData(), shape);
    }
    void LoadsEveryForm() {
        const auto [shape] = Row<BitmapShape>();
        QVERIFY(WriteBytes(file, shape.Bytes()));
        BITMAPINFOHEADER header;
        QCOMPARE(bmpinfo(file, header), 0);
        QCOMPARE(header.Size, 40U);
        QCOMPARE(header.Width, shape.Width);
        QCOMPARE(header.Height, shape.TopDown ? -shape.Height : shape.Height);
        QCOMPARE(int{header.BitCount}, shape.Bits);

        imgdes image;
        QCOMPARE(allocimage(image, header.Width, header.Height, 24), 0);
        QCOMPARE(loadbmp(file, image), 0);
        QImage surface;
        QVERIFY(LoadSurface(surface, file));
        QCOMPARE(surface.size(), QSize(shape.Width, shape.Height));
        for (int y = 0; y < shape.Height; ++y)
            for (int x = 0; x < shape.Width; ++x) {
                const uchar* const pixel =
                    image.Pixels.get() + (shape.Height - 1 - y) * image.Stride() + x * 3;
                QCOMPARE(QColor(pixel[2], pixel[1], pixel[0]), shape.Colour(x, y));
                QCOMPARE(surface.pixelColor(x, y), shape.Colour(x, y));
            }
    }

    void RefusesWhatCannotBeTrue_data() {
        const Rows<int, Patch, int> row;
        constexpr qint64 lowest = std::numeric_limits<qint32>::min();
        row("another signature", 24, {0, 'A', 1}, ImagingNotABitmap);
        row("pixels inside the header", 24, {10, 53, 4}, ImagingDamaged);
        row("pixels inside the palette", 8, {10, 54 + 1023, 4}, ImagingDamaged);
        row("pixels past the end", 24, {10, 0xFFFFFFFF, 4}, ImagingCannotRead);
        row("header of no known size", 24, {14, 64, 4}, ImagingUnsupported);
        row("header longer than the file", 24, {14, 124, 4}, ImagingDamaged);
        row("no width", 24, {18, 0, 4}, ImagingDamaged);
        row("wider than any picture", 1, {18, 65501, 4}, ImagingDamaged);
        row("a little wider than the pixels", 24, {18, 6, 4}, ImagingCannotRead);
        row("no height", 24, {22, 0, 4}, ImagingDamaged);
        row("lowest height", 24, {22, lowest, 4}, ImagingDamaged);
        row("higher than any picture", 1, {22, 65501, 4}, ImagingDamaged);
        row("one row more, top down", 24, {22, -4, 4}, ImagingCannotRead);
        row("30000 by 30000", 24, {18, 30000 | (30000LL << 32), 8}, ImagingCannotRead);
        row("two planes", 24, {26, 2, 2}, ImagingDamaged);
        row("depth of 2", 8, {28, 2, 2}, ImagingUnsupported);
        row("run lengths, 8 bit", 8, {30, 1, 4}, ImagingUnsupported);
        row("bit fields for 24 bit", 24, {30, 3, 4}, ImagingUnsupported);
        row("bit fields without room", 16, {30, 3, 4}, ImagingDamaged);
        row("palette of 257", 8, {46, 257, 4}, ImagingDamaged);
        row("one byte short", 24, {-1, 0, 0}, ImagingCannotRead);
    }
    void RefusesWhatCannotBeTrue() {
        const auto [bits, patch, result] = Row<int, Patch, int>();
        QByteArray bytes = BitmapShape{.Bits = bits}.Bytes();
        if (patch.Offset < 0) bytes.chop(1);
        BitmapShape::Put(bytes, qMax(0, patch.Offset), patch.Value, patch.Size);
        QVERIFY(WriteBytes(file, bytes));
        BITMAPINFOHEADER header;
        QCOMPARE(bmpinfo(file, header), result);
        imgdes image;
        QCOMPARE(allocimage(image, 5, 3, 24), 0);
        QCOMPARE(loadbmp(file, image), result);
    }

    void RefusesOtherFiles() {
        BITMAPINFOHEADER header;
        QCOMPARE(bmpinfo(folder.filePath("missing.bmp"), header), int{ImagingCannotRead});
        QCOMPARE(bmpinfo(folder.path(), header), int{ImagingCannotRead});
        const auto damaged = [&](const QByteArray& bytes) {
            return WriteBytes(file, bytes) && bmpinfo(file, header) == ImagingDamaged;
        };
        const QByteArray masked =
            BitmapShape{.Bits = 16, .Masks = {0xF800, 0x07E0, 0x001F}}.Bytes();
        // Masks with a hole, and one outside the 16 bits.
        for (const quint32 red : {0xA800U, 0xF80000U, 0U}) {
            QByteArray bytes = masked;
            BitmapShape::Put(bytes, 54, red, 4);
            QVERIFY(damaged(bytes));
        }
        // Masks that would pass for true, but are pixels.
        QByteArray pixels = masked;
        BitmapShape::Put(pixels, 10, 54, 4);
        QVERIFY(damaged(pixels));
        // Room for what the header claims too much.
        QByteArray palette = BitmapShape{.Bits = 8}.Bytes();
        palette.insert(54, QByteArray(4, '\x01'));
        BitmapShape::Put(palette, 10, 54 + 257 * 4, 4);
        BitmapShape::Put(palette, 46, 257, 4);
        QVERIFY(damaged(palette));
    }

    void SurvivesMutations() {
        QRandomGenerator random(20260304);
        int loaded = 0;
        int refused = 0;
        const QList<BitmapShape> shapes = AllShapes();
        for (int round = 0; round < 6000; ++round) {
            BitmapShape shape = shapes.at(round % shapes.size());
            shape.Width = qMin(shape.Width, 40);
            shape.Height = qMin(shape.Height, 40);
            QByteArray bytes = shape.Bytes();
            if (random.bounded(8) == 0)
                bytes.truncate(random.bounded(static_cast<int>(bytes.size())));
            const int last = qMin(70, static_cast<int>(bytes.size()));
            for (int i = random.bounded(1, 4); i > 0 && last > 2; --i) {
                constexpr int telling[] = {0, 1, 2, 0x7F, 0x80, 0xFF};
                bytes[random.bounded(2, last)] = static_cast<char>(
                    random.bounded(2) ? telling[random.bounded(6)] : random.bounded(256));
            }
            QVERIFY(WriteBytes(file, bytes));
            BITMAPINFOHEADER header;
            QImage surface;
            if (bmpinfo(file, header) != 0) {
                QVERIFY(!LoadSurface(surface, file));
                ++refused;
                continue;
            }
            // Whatever else it says, a file holds the pixels that it is taken for.
            const qint64 pixels = qint64{header.Width} * qAbs(header.Height) * header.BitCount / 8;
            QVERIFY(pixels <= bytes.size());
            imgdes image;
            const int depth = header.BitCount >= 16 ? 24 : header.BitCount;
            QCOMPARE(allocimage(image, header.Width, header.Height, depth), 0);
            (void)loadbmp(file, image);
            loaded += LoadSurface(surface, file);
        }
        QVERIFY2(loaded > 500 && refused > 500, "the mutations are too mild or too rough");
    }

    void SurfaceRoundTrip() {
        // An odd width has padding; a surface of another format is taken too.
        QImage surface(333, 300, QImage::Format_BGR888);
        for (int y = 0; y < surface.height(); ++y)
            for (int x = 0; x < surface.width(); ++x)
                surface.setPixelColor(x, y, QColor(x % 256, y % 256, (x + y) % 256));
        for (const QImage& source : {surface, surface.convertToFormat(QImage::Format_RGB32)}) {
            QVERIFY(SaveSurface(source, file));
            QCOMPARE(QImage(file).convertToFormat(QImage::Format_BGR888), surface);
            QImage back;
            QVERIFY(LoadSurface(back, file));
            QCOMPARE(back, surface);
            // A copy that somebody keeps is not written over by the next picture.
            const QImage kept = back;
            QVERIFY(WriteBytes(file, BitmapShape{.Width = 333, .Height = 300}.Bytes()));
            QVERIFY(LoadSurface(back, file));
            QCOMPARE(kept, surface);
            QVERIFY(back != surface);
        }
        QVERIFY(!SaveSurface(QImage(), file));
        QVERIFY(!SaveSurface(surface, folder.filePath("no/such/folder.bmp")));
    }

  private:
    QTemporaryDir folder;
    QString file = folder.filePath("picture.bmp");
};

QTEST_GUILESS_MAIN(TestBitmapFile)
#include "test_bitmap_file.moc"
