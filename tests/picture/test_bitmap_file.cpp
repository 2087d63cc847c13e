#include "base/whole_file.h"
#include "picture/bitmap/bitmap_runs.h"
#include "picture/bitmap/picture_surface.h"
#include "picture/bitmap_bytes.h"
#include "picture/imaging.h"
#include "support/data_rows.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

struct Patch {
    int Offset;
    qint64 Value;
    int Size;
};

}  // namespace

class TestBitmapFile : public QObject {
    Q_OBJECT

  private slots:
    void LoadsEveryForm_data() {
        const Rows<BitmapShape> row;
        const auto add = [&row](BitmapShape shape) {
            const QString name = QString("%1 bit, %2 wide, header %3, red %4%5")
                                     .arg(shape.Bits)
                                     .arg(shape.Width)
                                     .arg(shape.HeaderSize)
                                     .arg(shape.Masks[0], 0, 16);
            row(qPrintable(name.arg("")), shape);
            shape.TopDown = true;
            if (shape.HeaderSize != 12) row(qPrintable(name.arg(", top down")), shape);
        };
        for (const int bits : {1, 4, 8, 16, 24, 32})
            for (const int header : {12, 40, 124})
                if (header != 12 || (bits != 16 && bits != 32))
                    add({.Bits = bits, .HeaderSize = header});
        for (const int header : {40, 52, 56, 108, 124})
            add({.Bits = 16, .HeaderSize = header, .Masks = {0xF800, 0x07E0, 0x001F}});
        add({.Bits = 16, .Masks = {0x0F00, 0x00F0, 0x000F}});
        add({.Bits = 32, .HeaderSize = 108, .Masks = {0xFF000000, 0x00FF0000, 0x0000FF00}});
        // Larger than one piece of rows, the last piece not full.
        for (const int bits : {1, 8, 24, 32}) add({.Bits = bits, .Width = 331, .Height = 301});
    }
    void LoadsEveryForm() {
        const auto [shape] = Row<BitmapShape>();
        QVERIFY(WriteBytes(file, shape.Bytes()));
        QImage surface;
        QVERIFY(LoadSurface(surface, file));
        QCOMPARE(surface.size(), QSize(shape.Width, shape.Height));
        for (int y = 0; y < shape.Height; ++y)
            for (int x = 0; x < shape.Width; ++x)
                QCOMPARE(surface.pixelColor(x, y), shape.Colour(x, y));
    }

    void RefusesWhatCannotBeTrue_data() {
        const Rows<BitmapShape, Patch, int> row;
        constexpr qint64 lowest = std::numeric_limits<qint32>::min();
        const BitmapShape whole{.Bits = 24};
        const BitmapShape palette{.Bits = 8};
        const BitmapShape masked{.Bits = 16, .Masks = {0xF800, 0x07E0, 0x001F}};
        row("another signature", whole, {0, 'A', 1}, ImagingNotABitmap);
        row("pixels inside the palette", palette, {10, 54 + 1023, 4}, ImagingDamaged);
        row("pixels past the end", whole, {10, 0xFFFFFFFF, 4}, ImagingCannotRead);
        row("header of no known size", whole, {14, 63, 4}, ImagingUnsupported);
        row("header longer than the file", whole, {14, 124, 4}, ImagingDamaged);
        row("wider than any picture", {.Bits = 1}, {18, 65501, 4}, ImagingDamaged);
        row("lowest height", whole, {22, lowest, 4}, ImagingDamaged);
        row("one row more, top down", whole, {22, -4, 4}, ImagingCannotRead);
        row("30000 by 30000", whole, {18, 30000 | (30000LL << 32), 8}, ImagingCannotRead);
        row("run lengths, cut off", palette, {30, 1, 4}, ImagingCannotRead);
        row("run lengths of 24 bit", whole, {30, 1, 4}, ImagingUnsupported);
        row("mask with a hole", masked, {54, 0xA800, 4}, ImagingDamaged);
        row("mask outside the 16 bits", masked, {54, 0xF80000, 4}, ImagingDamaged);
        row("masks that are pixels", masked, {10, 54, 4}, ImagingDamaged);
        row("palette of 257", palette, {46, 257, 4}, ImagingDamaged);
    }
    void RefusesWhatCannotBeTrue() {
        const auto [shape, patch, result] = Row<BitmapShape, Patch, int>();
        QByteArray bytes = shape.Bytes();
        BitmapShape::Put(bytes, patch.Offset, patch.Value, patch.Size);
        QVERIFY(WriteBytes(file, bytes));
        BITMAPINFOHEADER header;
        QCOMPARE(bmpinfo(file, header), result);
        QImage surface;
        QVERIFY(!LoadSurface(surface, file));
    }

    // In the room of the last one, unless somebody still reads that.
    void WritesOverTheLastOne() {
        QImage picture(331, 301, QImage::Format_BGR888);
        picture.fill(Qt::red);
        QVERIFY(SaveSurface(picture, file));
        for (const int pass : {1, 2, 3}) {
            const QByteArray old = ReadBytes(file);
            QFile reader(file);
            if (pass == 2) QVERIFY(reader.open(QIODevice::ReadOnly));
            if (!WholeFile::SetAside(file)) {
                // Windows renames nothing that is open.
                QVERIFY(reader.isOpen());
                reader.close();
                QVERIFY(WholeFile::SetAside(file));
            }
            QVERIFY(!QFile::exists(file));
            QRegion changed;
            for (const QRect& part : {QRect(5, 0, 9, pass), QRect(300, 290, 31, 11)}) {
                for (int y = part.top(); y <= part.bottom(); ++y)
                    picture.setPixelColor(part.left(), y, QColor(pass, 0, y % 256));
                changed |= part;
            }
            QVERIFY(SaveSurface(picture, file, changed));
            QImage read;
            QVERIFY(LoadSurface(read, file));
            QCOMPARE(read, picture);
            QVERIFY(!reader.isOpen() || reader.readAll() == old);
        }
        // Smaller, and larger again.
        for (const int width : {20, 400}) {
            (void)WholeFile::SetAside(file);
            const QImage other = picture.scaled(width, 30).convertToFormat(QImage::Format_BGR888);
            QVERIFY(SaveSurface(other, file, QRect(0, 0, 1, 1)));
            QImage read;
            QVERIFY(LoadSurface(read, file));
            QCOMPARE(read, other);
        }
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("picture.bmp"));
    }

    void UnpacksRunLengths_data() {
        const Rows<int, QByteArray, QByteArray> row;  // pixels of 4 x 2, the lower row first
        row("8 bit", 8, "0407 0000 0405 0001", "7777 5555");
        row("as they are, padded", 8, "0003 010203 00 0109 0000 0405", "1239 5555");
        row("4 bit", 4, "0412 0000 0003 3450 0109 0001", "1212 3450");
        row("moved, ended early", 8, "0108 0002 0101 0109 0001", "8000 0090");
        row("wider than the picture", 8, "FF06 0000 0401", "6666 1111");
        row("cut off in a run", 8, "0407 0000 04", "");
        row("cut off between", 8, "0407 0000 0205", "");
    }
    void UnpacksRunLengths() {
        auto [bits, coded, expected] = Row<int, QByteArray, QByteArray>();
        QByteArray seen;
        const auto rows = DecodeRuns(QByteArray::fromHex(coded), bits, {4, 2});
        for (const char index : rows.value_or("")) seen += static_cast<char>('0' + index);
        QCOMPARE(seen, expected.replace(" ", ""));
    }

  private:
    QTemporaryDir folder;
    QString file = folder.filePath("picture.bmp");
};

QTEST_GUILESS_MAIN(TestBitmapFile)
#include "test_bitmap_file.moc"
