#include "picture/bitmap_bytes.h"
#include "picture/overlay/date_time_form.h"
#include "picture/overlay/text_overlay.h"
#include "support/data_rows.h"
#include "support/recording_display.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

const QDateTime Evening(QDate(2026, 11, 14), QTime(21, 40, 15));

// "A,B,,D" as the first lines.
SpecialText Text(const char* lines, int picturesPerRow = 0) {
    SpecialText text;
    const QStringList words = QString::fromUtf8(lines).split('|');
    std::copy(words.begin(), words.end(), text.Lin.begin());
    text.InRows = picturesPerRow > 0;
    text.PicturesPerRow = picturesPerRow;
    return text;
}

QString RowsShown(const SpecialText& text, RowTurns& turns, int pictures) {
    QStringList shown;
    for (int i = 0; i < pictures; ++i) {
        const QString row = NextRow(text, turns, "D, T");
        shown << (row.isEmpty() ? "-" : row);
    }
    return shown.join(' ');
}

struct Bench {
    Bench() {
        State.SettingsFile = Folder.filePath("ftpOptions.ini");
        State.Locale = QLocale("de_DE");
    }
    QTemporaryDir Folder;
    PictureState State;
    RecordingDisplay Display;
    TextOverlay Overlay{State, Display};
};

}  // namespace

class TestOverlayText : public QObject {
    Q_OBJECT

  private slots:
    void FormatsDate_data() {
        // locale and index; nothing: no such form
        Rows<QString, QString>({{"de_DE ", "14.11.2026"},
                                {"de_DE 1", "14.11.2026"},
                                {"de_DE 2", "Samstag, 14. November 2026"},
                                {"de_DE 3", "Sa, 14. November 2026"},
                                {"de_DE 4", "Sa, 14. Nov. 2026"},
                                {"en_US 0", "11/14/2026"},
                                {"en_US 1", "14.11.2026"},
                                {"en_US 2", "Saturday, November 14, 2026"},
                                {"fr_FR 4", "sam., 14. nov. 2026"},
                                {"de_DE 5", ""},
                                {"de_DE -1", ""},
                                {"de_DE 01", ""}});
    }
    void FormatsDate() {
        const auto [form, expected] = Row<QString, QString>();
        const QLocale locale(form.section(' ', 0, 0));
        const auto text = FormatDate(form.section(' ', 1), Evening.date(), locale);
        QCOMPARE(text.value_or(QString()), expected);
    }

    void FormatsTime_data() {
        Rows<QString, QString>({{"de_DE  21:40:15", "21:40:15"},
                                {"de_DE 0 09:15:00", "09:15:00"},
                                {"de_DE 1 21:40:15", "21:40"},
                                {"de_DE 2 21:40:15", "PM 21:40:15"},
                                {"de_DE 3 00:00:00", "AM 00:00"},
                                {"de_DE 3 11:59:59", "AM 11:59"},
                                {"de_DE 3 12:00:00", "PM 12:00"},
                                {"en_US 0 21:40:15", "9:40:15 PM"},
                                {"en_US 3 21:40:15", "PM 21:40"},
                                {"fr_CA 0 21:40:15", "21 h 40 min 15 s"},
                                {"de_DE 4 21:40:15", ""},
                                {"de_DE x 21:40:15", ""}});
    }
    void FormatsTime() {
        const auto [form, expected] = Row<QString, QString>();
        const QTime time = QTime::fromString(form.section(' ', 2), "HH:mm:ss");
        const QLocale locale(form.section(' ', 0, 0));
        const auto text = FormatTime(form.section(' ', 1, 1), time, locale);
        QCOMPARE(text.value_or(QString()), expected);
    }

    void SuitsEveryLocale() {
        const auto all =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
        QVERIFY(all.size() > 100);
        for (const QLocale& locale : all) {
            const QString date = *FormatDate("0", Evening.date(), locale);
            QVERIFY2(date.contains(locale.toString(Evening.date(), "yyyy")), qPrintable(date));
            const QString time = *FormatTime("0", Evening.time(), locale);
            QVERIFY2(time != FormatTime("0", Evening.time().addSecs(1), locale), qPrintable(time));
            QVERIFY2(!time.contains(QRegularExpression("UTC|GMT|[()\\[\\]]|[\\s,]$")),
                     qPrintable(locale.name() + ' ' + time));
        }
    }

    void ShowsTheWholeText_data() {
        const Rows<QString, QString> row;  // with | for the line breaks
        row("nothing", "", "|||||||");
        row("all", "1|2|3|4|5|6|7|8", "1|2|3|4|5|6|7|8");
        row("date and time first", "Date, Time", "D, T|||||||");
        row("date first, the rest of the line is dropped", "Dates of the week|x", "D, T|x||||||");
        row("small letters", "date|x", "date|x||||||");
        row("within", "Pier|at Date, Time, north", "Pier|at D, T, north||||||");
        row("only once", "x Date, Time|Date, Time", "x D, T|Date, Time||||||");
        row("both", "Date|Date, Time", "D, T|D, T||||||");
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
        row("first rows empty", "||C|D|E|F|G|H", 1, "C D E F G H C");
        row("without, behind the last", "A||C", 2, "A A C C C - - A A C");
        row("one alone", "A", 8, "A A A A A A A A - - - - - - A");
        row("all empty", "", 3, "- - - - - -");
        row("no number", "A|B", 0, "A A A");
        row("no number, first rows empty", "||C|D", 0, "C C C");
        row("date", "Date|Date|at Date, Time|D|E|F|G|H", 1, "D, T Date at D, T D E F G H D, T");
    }
    void ShowsRowsInTurn() {
        const auto [lines, each, expected] = Row<QString, int, QString>();
        RowTurns turns;
        const QRegularExpression separators("(?<!D,|at|Date,) ");
        const int pictures = static_cast<int>(expected.split(separators).size());
        QCOMPARE(RowsShown(Text(qPrintable(lines), each), turns, pictures), expected);
    }

    void KeepsTheRowWhenTheTurnsGetShorter() {
        RowTurns turns;
        const QString before = RowsShown(Text("A|Date, Time|C|D|E|F|G|H", 300), turns, 350);
        QVERIFY(before.endsWith("A D, T" + QString(" D, T").repeated(49)));
        QCOMPARE(RowsShown(Text("A|B|C|D|E|F|G|H", 2), turns, 4), "D, T A A B");
    }

    void FollowsTheMode_data() {
        const Rows<int, bool, bool, QString> row;  // of two pictures, / between
        row("date", 0, false, false, " D / D ");
        row("date, time, text", 2, false, false, " D, T  A|B / D, T  A|B ");
        row("date, time, row", 2, true, true, " D, T  A / D, T  B ");
        row("special text", 3, false, false, "A|B||||||/A|B||||||");
        row("first row is for rows only", 3, false, true, "A|B||||||/A|B||||||");
        row("rows", 3, true, false, "A/B");
        row("rows below the date", 3, true, true, "D, T|A/D, T|B");
        row("picture only", 4, false, false, "/");
        row("no overlay", 5, true, true, "/");
    }
    void FollowsTheMode() {
        auto [mode, inRows, dateFirst, expected] = Row<int, bool, bool, QString>();
        SpecialText text = Text("A|B", 1);
        text.InRows = inRows;
        text.DateInFirstRow = dateFirst;
        RowTurns turns;
        const QString first = TextOfMode(mode, "D", "T", text, turns);
        const QString second = TextOfMode(mode, "D", "T", text, turns);
        QCOMPARE(first + '/' + second, expected.replace("|", "\r\n"));
        // Without a row there is no empty line either.
        if (inRows && dateFirst && mode == 3)
            QCOMPARE(TextOfMode(mode, "D", "T", SpecialText{{}, true, true, 1}, turns), "D, T");
    }

    void ReadsTheSettingsForEachPicture() {
        Bench bench;
        PictureState& state = bench.State;
        TextOverlay& overlay = bench.Overlay;
        overlay.BuildOverlayText(0, Evening);
        QCOMPARE(state.OverlayText, " 14.11.2026 ");

        QVERIFY(
            WriteBytes(state.SettingsFile,
                       "[Einstellungen]\r\nDate=4\r\nTime=3\r\n[Text]\r\nEffect=Zeile\r\nUB=1\r\n"
                       "Pic=1\r\nLin0=Pier\r\nLin1=Date\r\nLin7=Ende\r\n"));
        overlay.BuildOverlayText(3, Evening);
        QCOMPARE(state.OverlayText, "Pier");
        QCOMPARE(state.DateText, "Sa, 14. Nov. 2026");
        overlay.BuildOverlayText(2, Evening.addSecs(60));
        QCOMPARE(state.OverlayText, " Sa, 14. Nov. 2026, PM 21:41  Date ");
        overlay.BuildOverlayText(3, Evening);
        QCOMPARE(state.OverlayText, "Ende");

        // Any other number has the date first; the effect is one word in one spelling.
        QVERIFY(WriteBytes(state.SettingsFile, "[Text]\nEffect=Zeile\nUB=2\nPic=-4\nLin1=Pier\n"));
        overlay.BuildOverlayText(3, Evening);
        QCOMPARE(state.OverlayText, "14.11.2026, 21:40:15\r\nPier");
        QVERIFY(WriteBytes(state.SettingsFile, "[Text]\nEffect=zeile\nLin7=Ende\n"));
        overlay.BuildOverlayText(3, Evening);
        QCOMPARE(state.OverlayText, QString("\r\n").repeated(7) + "Ende");
        QVERIFY(bench.Display.Statuses.isEmpty());
    }

    void KeepsTheFormThatIsNotThere() {
        Bench bench;
        PictureState& state = bench.State;
        TextOverlay& overlay = bench.Overlay;
        const auto build = [&](const QByteArray& settings, const QDateTime& now) {
            const bool written = WriteBytes(state.SettingsFile, "[Einstellungen]\n" + settings);
            overlay.BuildDateTime(now);
            return written ? state.DateText + ' ' + state.TimeText : QString();
        };
        QCOMPARE(build("Date=7\nTime=9", Evening), "14.11.2026 21:40:15");
        QCOMPARE(bench.Display.Statuses, QStringList({"Overlay text: there is no date format 7",
                                                      "Overlay text: there is no time format 9"}));
        QCOMPARE(build("Date=3\nTime=1", Evening), "Sa, 14. November 2026 21:40");
        // The form stays, the time goes on, and the fault that came back is told again, once.
        bench.Display.Statuses.clear();
        QCOMPARE(build("Date=7\nTime=1", Evening.addDays(1)), "So, 15. November 2026 21:40");
        QCOMPARE(build("Date=7\nTime=9", Evening.addSecs(60)), "Sa, 14. November 2026 21:41");
        QCOMPARE(bench.Display.Statuses, QStringList({"Overlay text: there is no date format 7",
                                                      "Overlay text: there is no time format 9"}));
    }
};

QTEST_GUILESS_MAIN(TestOverlayText)
#include "test_overlay_text.moc"
