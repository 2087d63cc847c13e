#include "support/data_rows.h"
#include "ui/skin/window_shape.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QTest>

namespace {

constexpr QRgb cut = 0xFFFF00FF;
constexpr QRgb kept = 0xFF204060;

// The scan as it is described, pixel by pixel and rectangle by rectangle.
QRegion NaiveRegion(const QImage& picture) {
    QRegion region;
    const int width = picture.width();
    const QRgb transparent = picture.pixel(0, 0);
    const auto next = [width](int x) { return x < 151 || x >= width - 150 ? x + 1 : x + 100; };
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < width;) {
            while (x < width && picture.pixel(x, y) == transparent) x = next(x);
            if (x >= width) continue;
            const int start = x;
            while (x < width && picture.pixel(x, y) != transparent) x = next(x);
            if (x > width) x = width;
            region += QRegion(start, y, x - start, 1);
        }
    return region;
}

// Runs of random length, some rows repeated, in a random pixel format.
QImage RandomPicture(const QSize& size, quint32 seed) {
    QRandomGenerator random(seed);
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        bool on = random.bounded(2) == 1;
        const bool repeated = y > 0 && random.bounded(3) == 0;
        for (int x = 0, left = 0; x < size.width(); ++x, --left) {
            if (left <= 0) {
                on = !on;
                left = 1 + random.bounded(random.bounded(2) == 0 ? 6 : 250);
            }
            picture.setPixel(x, y, repeated ? picture.pixel(x, y - 1) : on ? kept : cut);
        }
    }
    return picture;
}

QImage Filled(int width, int height, QRgb colour) {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(colour);
    return picture;
}

void Fill(QImage& picture, const QRect& rect, QRgb colour) {
    QPainter(&picture).fillRect(rect, QColor::fromRgb(colour));
}

}  // namespace

class TestWindowShape : public QObject {
    Q_OBJECT

  private slots:
    void RegionEqualsTheNaiveOne_data() {
        Rows<int>({{1}, {2}, {150}, {301}, {302}, {303}, {451}, {1024}});
    }

    void RegionEqualsTheNaiveOne() {
        const auto [width] = Row<int>();
        for (quint32 seed = 1; seed <= 20; ++seed) {
            const QImage picture = RandomPicture({width, 23}, seed);
            const QRegion naive = NaiveRegion(picture);
            const QImage other = picture.convertToFormat(QImage::Format_RGB888);
            QCOMPARE(BuildRegionFromPicture(picture) ^ naive, QRegion());
            QCOMPARE(BuildRegionFromPicture(other) ^ naive, QRegion());
        }
    }

    void TransparencyIsNoColour() {
        QImage picture = Filled(3, 1, cut).convertToFormat(QImage::Format_ARGB32);
        picture.setPixel(1, 0, qRgba(255, 0, 255, 10));
        picture.setPixel(2, 0, qRgba(1, 0, 255, 10));
        QCOMPARE(BuildRegionFromPicture(picture), QRegion(2, 0, 1, 1));
    }

    void EveryPictureMakesAWindow_data() {
        const Rows<QRect, QRegion> row;
        row("a drawing on a ground", QRect(10, 10, 30, 20), QRegion(10, 10, 30, 20));
        row("up to the corner: everything else is cut away", QRect(0, 0, 80, 30),
            QRegion(0, 30, 80, 30));
        row("one colour: nothing is cut away", QRect(), QRegion(0, 0, 80, 60));
    }

    void EveryPictureMakesAWindow() {
        const auto [drawing, outline] = Row<QRect, QRegion>();
        QImage picture = Filled(80, 60, cut);
        Fill(picture, drawing, kept);
        QWidget window;
        QCOMPARE(ShapeWindowFromPicture(window, picture), outline);
        QCOMPARE(window.size(), picture.size());
        QCOMPARE(window.mask().isEmpty() ? QRegion(window.rect()) : window.mask(), outline);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // The seam takes the colour beside it; further away, and inside, nothing changes.
    void SeamIsColoured() {
        QImage picture = Filled(30, 20, cut);
        Fill(picture, {5, 5, 10, 10}, kept);
        const QImage cleaned = WithCleanEdges(picture, BuildRegionFromPicture(picture));
        QImage expected = picture;
        Fill(expected, {4, 4, 12, 12}, kept);
        QCOMPARE(cleaned, expected);
        QImage full = Filled(6, 4, cut);
        QCOMPARE(WithCleanEdges(full, QRect(0, 0, 6, 4)), full);
    }
};

QTEST_MAIN(TestWindowShape)
#include "test_window_shape.moc"
