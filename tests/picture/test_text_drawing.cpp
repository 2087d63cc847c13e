#include "picture/overlay/text_drawing.h"
#include "picture/overlay/text_overlay.h"
#include "picture/overlay/text_style.h"
#include "support/data_rows.h"
#include "support/recording_display.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QTest>

namespace {

const QSize PictureSize(301, 203);
const QColor Paper(70, 80, 90);

QImage Blank(QSize size = PictureSize) {
    QImage picture(size, QImage::Format_BGR888);
    picture.fill(Paper);
    return picture;
}

QImage Printed(const QString& text, int cell) {
    QImage picture = Blank();
    TextSurface surface{picture, PictureFont({}, 20), Qt::yellow, Qt::blue};
    PrintTextAligned(surface, text, cell, false);
    return picture;
}

// The rectangle of what was written over.
QRect Written(const QImage& picture) {
    QRect written;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) != Paper) written |= QRect(x, y, 1, 1);
    return written;
}

int Count(const QImage& picture, const QColor& color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == color;
    return count;
}

bool HasFonts() {
    return !QFontInfo(PictureFont({}, 20)).family().isEmpty();
}

// The text " 14.11.2026 " drawn as the settings say, picture after picture.
struct Bench {
    RecordingDisplay Display;
    TextOverlay Overlay{Display, QLocale("de_DE")};

    [[nodiscard]] QImage Drawn(const OverlaySettings& settings) {
        QImage picture = Blank();
        Overlay.BuildOverlayText(settings, QDateTime(QDate(2026, 11, 14), QTime(9, 30)));
        Overlay.DrawOverlayText(picture, settings);
        return picture;
    }
};

}  // namespace

class TestTextDrawing : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        if (!HasFonts() &&
            qstrcmp(QTest::currentTestFunction(), "LeavesThePictureWithoutFonts") != 0)
            QSKIP("This machine has no font.");
    }

    void AlignsEachLine_data() {
        const Rows<OverlayPlace, int, int> row;  // column and row: 0 at the beginning, 2 at the end
        using enum OverlayPlace;
        row("up left", UpLeft, 0, 0);
        row("up middle", UpMiddle, 1, 0);
        row("down right", DownRight, 2, 2);
        row("down left", DownLeft, 0, 2);
        row("center", Center, 1, 1);
    }
    void AlignsEachLine() {
        const auto [place, column, row] = Row<OverlayPlace, int, int>();
        const QFontMetrics metrics(PictureFont({}, 20));
        // The line breaks around it count for nothing.
        const QImage picture = Printed("\nHHHH\r\n\nHH\r\n\r\n", CellOf(place));
        const int height = metrics.height();
        const int top = (PictureSize.height() - 3 * height) * row / 2;
        for (const auto& [line, y] :
             {std::pair(QString("HHHH"), top), std::pair(QString("HH"), top + 2 * height)}) {
            const int width = metrics.horizontalAdvance(line);
            const QRect box((PictureSize.width() - width) * column / 2, y, width, height);
            const QImage strip = picture.copy(0, y, PictureSize.width(), height);
            QCOMPARE(Written(strip).translated(0, y), box);
        }
        QCOMPARE(Written(picture).height(), 3 * height);
    }

    void StartsInsideThePicture() {
        const QString wide = QString("Harbour ").repeated(30);
        for (const int cell : {1, 2}) QCOMPARE(Printed(wide, cell), Printed(wide, 0));
        const QString high = QString("Pier\r\n").repeated(40);
        for (const int cell : {3, 6}) QCOMPARE(Printed(high, cell), Printed(high, 0));
        QVERIFY(Count(Printed(wide, 2), Qt::yellow) > 0 && Count(Printed(high, 6), Qt::yellow) > 0);
        QCOMPARE(Printed("\r\n\r\n", 4), Blank());

        QImage tiny = Blank({1, 1});
        TextSurface surface{tiny, PictureFont({}, 1333)};
        PrintTextAligned(surface, wide + '\n' + wide, 8, false);
        surface.Picture = {};
        PrintTextAligned(surface, "Pier", 8, false);
    }

    // Each line runs in the direction of its first letter, whatever the language of the desktop. No
    // blank between the two: of which font it is, and so how wide, depends on the order.
    void WritesFromTheRight() {
        const QString hebrew = QString::fromUtf8("\u05e9\u05dc\u05d5\u05dd");
        const QImage picture = Printed("abc" + hebrew, 0);
        QCOMPARE(Printed(hebrew + "abc", 0), picture);
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(Printed("abc" + hebrew, 0), picture);
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void DrawsAsTheSettingsSay_data() {
        const Rows<QColor, QColor, bool, QColor> row;  // the last: of the text as drawn
        row("red on green", Qt::red, Qt::green, false, Qt::red);
        row("transparent", Qt::red, Qt::green, true, Qt::red);
        row("nothing set", Qt::black, Qt::black, false, Qt::white);
        row("white on white", Qt::white, Qt::white, false, Qt::black);
        row("black on the picture", Qt::black, Qt::black, true, Qt::black);
    }
    void DrawsAsTheSettingsSay() {
        const auto [text, background, transparent, drawn] = Row<QColor, QColor, bool, QColor>();
        Bench bench;
        OverlaySettings settings;
        settings.Color = text;
        settings.BackColor = background;
        settings.Transparent = transparent;
        settings.Size = 20;
        settings.Position = OverlayPlace::DownRight;
        const QImage picture = bench.Drawn(settings);
        QVERIFY(Count(picture, drawn) > 20);
        QCOMPARE(picture.pixelColor(PictureSize.width() - 1, PictureSize.height() - 1),
                 transparent ? Paper : background);
        QCOMPARE(picture.pixelColor(0, 0), Paper);
    }

    void TakesSizeAndFaces() {
        Bench bench;
        OverlaySettings settings;
        settings.Position = OverlayPlace::UpLeft;
        settings.BackColor = Qt::blue;
        settings.Size = 30;
        QCOMPARE(Written(bench.Drawn(settings)).height(),
                 QFontMetrics(PictureFont({}, 40)).height());
        QList<QImage> faces{bench.Drawn(settings)};
        for (bool OverlaySettings::*face :
             {&OverlaySettings::Bold, &OverlaySettings::Italic, &OverlaySettings::Underline}) {
            OverlaySettings other = settings;
            other.*face = true;
            const QImage picture = bench.Drawn(other);
            QVERIFY(!faces.contains(picture));
            faces << picture;
        }
    }

    void TellsFaultsOnce() {
        Bench bench;
        QStringList& told = bench.Display.Statuses;
        OverlaySettings settings;
        settings.Faults = {{"Position", "P"}, {"Color", "C"}, {"Size", "S"}, {"Other", "O"}};
        for (int i = 0; i < 2; ++i) (void)bench.Drawn(settings);
        QCOMPARE(told, QStringList({"Overlay text: S", "Overlay text: C", "Overlay text: P"}));
        settings.Font = "No Such Font Anywhere";
        QVERIFY(Count(bench.Drawn(settings), Qt::white) > 0);
        QVERIFY(
            told.last().startsWith("Overlay text: font No Such Font Anywhere is not installed, "));
    }

    void LeavesThePictureWithoutFonts() {
        if (HasFonts()) QSKIP("This machine has fonts.");
        Bench bench;
        OverlaySettings settings;
        settings.Font = "Arial";
        QCOMPARE(bench.Drawn(settings), Blank());
        settings.Size = 1000;
        QCOMPARE(bench.Drawn(settings), Blank());
        QCOMPARE(bench.Display.Statuses, QStringList{"Overlay text: no font is installed"});
    }
};

QTEST_MAIN(TestTextDrawing)
#include "test_text_drawing.moc"
