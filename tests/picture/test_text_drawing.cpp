#include "picture/overlay/text_drawing.h"
#include "picture/overlay/text_overlay.h"
#include "picture/overlay/text_style.h"
#include "support/data_rows.h"
#include "support/recording_display.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>
#include <QTest>
#include <QTextLayout>

namespace {

const QSize PictureSize(301, 203);
const QColor Paper(70, 80, 90);

QImage Blank(QSize size = PictureSize) {
    QImage picture(size, QImage::Format_BGR888);
    picture.fill(Paper);
    return picture;
}

QImage Printed(const QString& text, int cell, std::optional<QColor> background = Qt::blue,
               bool trim = false) {
    QImage picture = Blank();
    TextSurface surface{picture, PictureFont({}, 20), Qt::yellow, background};
    PrintTextAligned(surface, text, cell, trim);
    return picture;
}

// Whether all pixels outside the boxes are untouched and each box was written on, to its corners
// where it is filled.
bool WrittenIn(const QImage& picture, const QList<QRect>& boxes, bool filled) {
    QRegion inside;
    for (const QRect& box : boxes) inside += box;
    QList<int> written(boxes.size());
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == Paper) continue;
            if (!inside.contains(QPoint(x, y))) return false;
            for (qsizetype i = 0; i < boxes.size(); ++i) written[i] += boxes[i].contains(x, y);
        }
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        const int area = boxes[i].width() * boxes[i].height();
        if (filled ? written[i] != area : written[i] == 0 || written[i] > area / 2) return false;
    }
    return true;
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

    void AlignsInCells_data() {
        const Rows<int, bool> row;
        for (int cell = 0; cell < 9; ++cell)
            for (const bool filled : {true, false})
                row(qPrintable(QString("%1%2").arg(cell).arg(filled ? QString()
                                                                    : QString(", transparent"))),
                    cell, filled);
    }
    void AlignsInCells() {
        const auto [cell, filled] = Row<int, bool>();
        const QStringList lines{"HHHH", "", "HH", ""};
        const QFontMetrics metrics(PictureFont({}, 20));
        const int row = cell / 3;
        const int column = cell % 3;
        QList<QRect> boxes;
        for (int i = 0; i < lines.size(); ++i) {
            const int spareWidth = PictureSize.width() - metrics.horizontalAdvance(lines[i]);
            const int spareHeight = PictureSize.height() - 4 * metrics.height();
            const QPoint at(spareWidth * column / 2, spareHeight * row / 2 + i * metrics.height());
            if (!lines[i].isEmpty())
                boxes << QRect(at, QSize(metrics.horizontalAdvance(lines[i]), metrics.height()));
        }
        const auto background = filled ? std::optional<QColor>(Qt::blue) : std::nullopt;
        const QImage picture = Printed(lines.join("\r\n"), cell, background);
        QVERIFY(WrittenIn(picture, boxes, filled));
        // Smoothed: there are shades between the text and what is behind it.
        const QColor behind = filled ? QColor(Qt::blue) : Paper;
        const int pure = Count(picture, Qt::yellow);
        const int area =
            boxes[0].width() * boxes[0].height() + boxes[1].width() * boxes[1].height();
        const int untouched = PictureSize.width() * PictureSize.height() - area;
        const int plain = Count(picture, behind) - (filled ? 0 : untouched);
        QVERIFY(pure > 0 && plain > 0 && pure + plain < area);
    }

    void StartsInsideThePicture() {
        const QString wide = QString("Harbour ").repeated(30);
        for (const int cell : {1, 2}) QCOMPARE(Printed(wide, cell), Printed(wide, 0));
        const QString high = QString("Pier\r\n").repeated(40);
        for (const int cell : {3, 6}) QCOMPARE(Printed(high, cell), Printed(high, 0));
        QVERIFY(Count(Printed(wide, 2), Qt::yellow) > 0 && Count(Printed(high, 6), Qt::yellow) > 0);
        // The place is one of nine; a text that is not there prints nothing.
        for (const int cell : {-1, 9}) QCOMPARE(Printed("Pier", cell), Printed("Pier", 0));
        QCOMPARE(Printed({}, 0), Blank());
        QCOMPARE(Printed("\r\n\r\n", 4), Blank());

        QImage tiny = Blank({1, 1});
        TextSurface surface{tiny, PictureFont({}, 1333)};
        PrintTextAligned(surface, wide + '\n' + wide, 8, false);
        surface.Picture = {};
        PrintTextAligned(surface, "Pier", 8, false);
    }

    void SplitsAndTrims() {
        QCOMPARE(Printed("Pier\nNorth\n", 8), Printed("Pier\r\nNorth\r\n", 8));
        QVERIFY(Printed("Pier\r\n", 8) != Printed("Pier", 8));
        QCOMPARE(Printed("  Pier \r\n North  ", 8, Qt::blue, true), Printed("Pier\r\nNorth", 8));
        QVERIFY(Printed("  Pier \r\n North  ", 8) != Printed("Pier\r\nNorth", 8));
    }

    // Each line runs in the direction of its first letter.
    void WritesFromTheRight() {
        const QString hebrew = QString::fromUtf8("\u05e9\u05dc\u05d5\u05dd");
        const auto laidOut = [](const QString& line, Qt::LayoutDirection direction) {
            const QFont font = PictureFont({}, 20);
            QTextLayout layout(line, font);
            QTextOption option;
            option.setTextDirection(direction);
            layout.setTextOption(option);
            layout.beginLayout();
            layout.createLine();
            layout.endLayout();
            QImage picture = Blank();
            QPainter painter(&picture);
            painter.setPen(Qt::yellow);
            // Another font may stand in for some of the letters, and rise higher.
            layout.draw(&painter, {0, QFontMetricsF(font).ascent() - layout.lineAt(0).ascent()});
            return picture;
        };
        for (const QString& line : {hebrew + " abc", "abc " + hebrew}) {
            const bool fromTheRight = line.startsWith(hebrew);
            const QImage right = laidOut(line + " 1.", Qt::RightToLeft);
            const QImage left = laidOut(line + " 1.", Qt::LeftToRight);
            QVERIFY(right != left);
            QCOMPARE(Printed(line + " 1.", 0, {}), fromTheRight ? right : left);
        }
    }

    void UnderstandsStyles() {
        QCOMPARE(FontPixels(8.25, 480), 11);
        QCOMPARE(FontPixels(0.1, 480), 1);
        QCOMPARE(FontPixels(0, 1080), 36);
        QCOMPARE(FontPixels(0, 240), 12);
        const QList<int> cells{2, 0, 1, 8, 6, 7, 4};
        for (int place = 0; place < 7; ++place) QCOMPARE(CellOf(OverlayPlace{place}), cells[place]);
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
        // Twice, for the second picture is no other than the first.
        for (int i = 0; i < 2; ++i) {
            const QImage picture = bench.Drawn(settings);
            QVERIFY(Count(picture, drawn) > 20);
            const QColor corner =
                picture.pixelColor(PictureSize.width() - 1, PictureSize.height() - 1);
            QCOMPARE(corner, transparent ? Paper : background);
            QCOMPARE(picture.pixelColor(0, 0), Paper);
        }
    }

    void TakesSizeAndFaces() {
        Bench bench;
        OverlaySettings settings;
        settings.Position = OverlayPlace::UpLeft;
        settings.BackColor = Qt::blue;
        for (const int points : {9, 18, 30}) {
            settings.Size = points;
            const QImage picture = bench.Drawn(settings);
            int filled = 0;
            while (filled < picture.height() && picture.pixelColor(0, filled) == Qt::blue) ++filled;
            QCOMPARE(filled, QFontMetrics(PictureFont({}, points * 96 / 72)).height());
        }
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
        // Another fault of the same setting, and the same one after it was repaired.
        settings.Faults = {{"Color", "D"}, {"Size", "S"}};
        (void)bench.Drawn(settings);
        settings.Faults["Position"] = "P";
        (void)bench.Drawn(settings);
        QCOMPARE(told.mid(3), QStringList({"Overlay text: D", "Overlay text: P"}));
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
