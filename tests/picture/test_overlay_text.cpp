#include "base/waiting.h"
#include "picture/overlay/text_file.h"
#include "picture/overlay/text_overlay.h"
#include "support/data_rows.h"
#include "support/file_bytes.h"
#include "support/recording_display.h"
#include "support/test_clock.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

const QDateTime Evening(QDate(2026, 11, 14), QTime(21, 40, 15));

// "A,B,,D" as the first lines.
SpecialText Text(const char* lines, int picturesPerRow = 0) {
    SpecialText text;
    const QStringList words = QString::fromUtf8(lines).split('|');
    std::copy(words.begin(), words.end(), text.Lin.begin());
    text.TextInRows = picturesPerRow > 0;
    text.TextRowsAlone = true;
    text.TextPic = picturesPerRow;
    return text;
}

}  // namespace

class TestOverlayText : public QObject {
    Q_OBJECT

  private slots:
    void TakesTheLinesOfATextFile_data() {
        const Rows<QByteArray, QString> row;  // with | for the line breaks
        row("UTF-8",
            "21 \xC2\xB0"
            "C\r\nwind 3\n\n",
            QString::fromUtf8("21 \xC2\xB0"
                              "C|wind 3"));
        row("Windows-1252",
            "21 \xB0"
            "C\rrain",
            QString::fromUtf8("21 \xC2\xB0"
                              "C|rain"));
        row("eight lines", "1\n2\n3\n\n5\n6\n7\n8\n9", "1|2|3||5|6|7|8");
        row("what cannot be drawn", QByteArray("a\tb\0c\n", 6), "a b c");
        row("none", "\n\n", "");
    }
    void TakesTheLinesOfATextFile() {
        const auto [bytes, lines] = Row<QByteArray, QString>();
        QCOMPARE(LinesOfTextFile(bytes).replace("\r\n", "|"), lines);
    }

    void PutsThemAmongTheOperatorsLines_data() {
        const Rows<QString, int, QString, QString> row;  // lines, mode, of the file, on the picture
        row("in place of the word", "Pier|TextFile|north", 3, "1|2", "Pier|1|2|north|||||");
        row("nothing in its place", "Pier|TextFile|north", 3, "", "Pier|north|||||");
        row("below", "Pier||north", 3, "1|2", "Pier||north|1|2");
        row("words of the file mean nothing", "TextFile", 3, "Date, Time", "Date, Time|||||||");
        row("beside the date", "TextFile", 2, "1|2", " D, T  1|2 ");
        row("below the date", "", 2, "1", " D, T   |1");
    }
    void PutsThemAmongTheOperatorsLines() {
        auto [lines, mode, file, expected] = Row<QString, int, QString, QString>();
        OverlaySettings settings;
        static_cast<SpecialText&>(settings) = Text(qPrintable(lines));
        settings.Overlay = OverlayMode(mode);
        settings.TextFile = "weather.txt";
        settings.TextFileLines = file.replace("|", "\r\n");
        RecordingDisplay display;
        TextOverlay overlay(display, QLocale("de_DE"));
        overlay.BuildOverlayText(settings, Evening);
        const QString dateTime = overlay.DateText + ", " + overlay.TimeText;
        QCOMPARE(overlay.OverlayText.replace(dateTime, "D, T").replace("\r\n", "|"), expected);
    }

    void ReadsATextFileWholeOrNotAtAll() {
        TestClock clock;
        Waiting waiting(clock);
        RecordingDisplay display;
        TextFileReader reader(display, waiting);
        const QTemporaryDir folder;
        OverlaySettings settings;
        settings.Overlay = OverlayMode::SpecialText;
        settings.TextFile = folder.filePath("weather.txt");
        settings.TextFileAge = 10;
        const auto lines = [&](const QByteArray& written, int minutesLater = 0) {
            if (!written.isNull() && !WriteBytes(settings.TextFile, written)) return QString("?");
            reader.Ask(settings);
            if (!QTest::qWaitFor([&] { return reader.Answered(); })) return QString("no answer");
            const QDateTime now = QDateTime::currentDateTime();
            return reader.Lines(settings, now.addSecs(60 * minutesLater));
        };
        QCOMPARE(lines({}), QString());
        QCOMPARE(lines("wind 3"), "wind 3");
        QCOMPARE(lines({}, 9), "wind 3");
        QCOMPARE(lines({}, 12), QString());
        QCOMPARE(lines({}, -12), QString());
        QCOMPARE(lines(QByteArray(2048, 'x')).size(), 255);
        QCOMPARE(lines(QByteArray(2049, 'x')), QString());
        QVERIFY(QFile::remove(settings.TextFile) && QDir().mkdir(settings.TextFile));
        QCOMPARE(lines({}), QString());
        QStringList told;
        for (const QString& text : std::as_const(display.Statuses))
            told << QString(text).remove("Text file " + settings.TextFile + u' ');
        QCOMPARE(told.join(u'|'),
                 "is missing|is on the pictures again|is too old|is on the pictures "
                 "again|is larger than 2 KB|cannot be read");
    }

    void FormatsDateAndTime_data() {
        // locale, forms of date and time, time
        Rows<QString, QString>({{"de_DE 0 0 09:15:00", "14.11.2026, 09:15:00"},
                                {"de_DE 2 1 21:40:15", "Samstag, 14. November 2026, 21:40"},
                                {"de_DE 3 2 21:40:15", "Sa, 14. November 2026, PM 21:40:15"},
                                {"de_DE 4 3 00:00:00", "Sa, 14. Nov. 2026, AM 00:00"},
                                {"en_US 0 0 21:40:15", "11/14/2026, 9:40:15 PM"},
                                {"en_US 1 3 11:59:59", "14.11.2026, AM 11:59"},
                                {"en_US 2 3 12:00:00", "Saturday, November 14, 2026, PM 12:00"},
                                {"fr_FR 4 0 21:40:15", "sam., 14. nov. 2026, 21:40:15"}});
    }
    void FormatsDateAndTime() {
        const auto [forms, expected] = Row<QString, QString>();
        const QStringList form = forms.split(u' ');
        const QLocale locale(form[0]);
        const QTime time = QTime::fromString(form[3], "HH:mm:ss");
        QCOMPARE(FormatDate(DateForm{form[1].toInt()}, Evening.date(), locale) + ", " +
                     FormatTime(TimeForm{form[2].toInt()}, time, locale),
                 expected);
    }

    void ShowsTheWholeText_data() {
        const Rows<QString, QString> row;  // with | for the line breaks
        row("all", "1|2|3|4|5|6|7|8", "1|2|3|4|5|6|7|8");
        row("date and time first", "Date, Time", "D, T|||||||");
        row("date first, the rest of the line is dropped", "Dates of the week|x", "D, T|x||||||");
        row("within", "Pier|at Date, Time, north", "Pier|at D, T, north||||||");
        row("only once", "x Date, Time|Date, Time", "x D, T|Date, Time||||||");
    }
    void ShowsTheWholeText() {
        auto [lines, expected] = Row<QString, QString>();
        QCOMPARE(WholeText(Text(qPrintable(lines)), "D, T"), expected.replace("|", "\r\n"));
    }

    void ShowsRowsInTurn_data() {
        const Rows<QString, int, QString> row;  // - for no text
        row("all, two each", "A|B|C|D|E|F|G|H", 2, "A A B B C C D D E E F F G G H H A A B");
        row("an empty row costs one picture", "A||C|D|E|F|G|H", 2,
            "A A C C C D D E E F F G G H H A A C");
        row("without, behind the last", "A||C", 2, "A A C C C - - A A C");
        row("all empty", "", 3, "- - - - - -");
        row("no number, first rows empty", "||C|D", 0, "C C C");
        row("date", "Date|Date|at Date, Time|D|E|F|G|H", 1, "D, T Date at D, T D E F G H D, T");
    }
    void ShowsRowsInTurn() {
        const auto [lines, each, expected] = Row<QString, int, QString>();
        RowTurns turns;
        // Date and time stand for one row too.
        const QRegularExpression separators("(?<!D,|at|Date,) ");
        QStringList shown;
        while (shown.size() < expected.split(separators).size()) {
            const QString row = NextRow(Text(qPrintable(lines), each), turns, "D, T");
            shown << (row.isEmpty() ? "-" : row);
        }
        QCOMPARE(shown.join(u' '), expected);
    }

    void FollowsTheMode_data() {
        const Rows<OverlayMode, bool, bool, QString, const char*> rows;
        // The texts of two pictures, / between.
        const auto row = [&rows](const char* name, OverlayMode mode, bool inRows, bool alone,
                                 const QString& expected, const char* lines = "A|B") {
            rows(name, mode, inRows, alone, expected, lines);
        };
        using enum OverlayMode;
        row("date", Date, false, true, " 14.11.2026 / 14.11.2026 ");
        row("time", Time, false, true, " 21:40:15 / 21:40:15 ");
        row("date, time, text", DateTimeText, false, true, " D, T  A|B / D, T  A|B ");
        row("date, time, row", DateTimeText, true, false, " D, T  A / D, T  B ");
        row("no second date", DateTimeText, false, true, " D, T  from A|B / D, T  from A|B ",
            "Date, Time from A|B");
        row("no second date in a row", DateTimeText, true, true, " D, T  B / D, T   ", "Date|B");
        row("special text", SpecialText, false, true, "A|B||||||/A|B||||||");
        row("first row is for rows only", SpecialText, false, false, "A|B||||||/A|B||||||");
        row("rows", SpecialText, true, true, "A/B");
        row("rows below the date", SpecialText, true, false, "D, T|A/D, T|B");
        row("picture only", PictureOnly, false, true, "/");
    }
    void FollowsTheMode() {
        auto [mode, inRows, alone, expected, lines] =
            Row<OverlayMode, bool, bool, QString, const char*>();
        RecordingDisplay display;
        TextOverlay overlay(display, QLocale("de_DE"));
        OverlaySettings settings;
        static_cast<::SpecialText&>(settings) = Text(lines, 1);
        settings.Overlay = mode;
        settings.TextInRows = inRows;
        settings.TextRowsAlone = alone;
        overlay.BuildOverlayText(settings, Evening);
        const QString first = overlay.OverlayText;
        overlay.BuildOverlayText(settings, Evening);
        expected.replace("|", "\r\n").replace("D, T", "14.11.2026, 21:40:15");
        QCOMPARE(first + '/' + overlay.OverlayText, expected);
        QVERIFY(display.Statuses.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestOverlayText)
#include "test_overlay_text.moc"
