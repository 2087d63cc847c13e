#include "picture/bitmap_bytes.h"
#include "picture/overlay_text_date.h"
#include "picture/text_overlay.h"
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

}  // namespace

class TestOverlayText : public QObject {
    Q_OBJECT

  private slots:
    void FormatsDate_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("index");
        QTest::addColumn<QString>("expected");  // null: nothing
        const auto row = [](const char* locale, const char* index, const char* expected) {
            QTest::addRow("%s \"%s\"", locale, index)
                << QString::fromLatin1(locale) << QString::fromLatin1(index)
                << (expected ? QString::fromUtf8(expected) : QString());
        };
        row("de_DE", "", "14.11.2026");
        row("de_DE", "0", "14.11.2026");
        row("de_DE", "1", "14.11.2026");
        row("de_DE", "2", "Samstag, 14. November 2026");
        row("de_DE", "3", "Sa, 14. November 2026");
        row("de_DE", "4", "Sa, 14. Nov. 2026");
        row("en_US", "0", "11/14/2026");
        row("en_US", "1", "14.11.2026");
        row("en_US", "2", "Saturday, November 14, 2026");
        row("en_US", "3", "Sat, 14. November 2026");
        row("fr_FR", "0", "14/11/2026");
        row("fr_FR", "2", "samedi 14 novembre 2026");
        row("fr_FR", "4", "sam., 14. nov. 2026");
        row("de_DE", "5", nullptr);
        row("de_DE", "-1", nullptr);
        row("de_DE", "01", nullptr);
    }
    void FormatsDate() {
        QFETCH(QString, locale);
        QFETCH(QString, index);
        QFETCH(QString, expected);
        const auto text = FormatDate(index, Evening.date(), QLocale(locale));
        QCOMPARE(text.has_value(), !expected.isNull());
        QCOMPARE(text.value_or(QString()), expected);
    }

    void FormatsTime_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("index");
        QTest::addColumn<QTime>("time");
        QTest::addColumn<QString>("expected");  // null: nothing
        const auto row = [](const char* locale, const char* index, const QTime& time,
                            const char* expected) {
            QTest::addRow("%s \"%s\" %d:%d", locale, index, time.hour(), time.minute())
                << QString::fromLatin1(locale) << QString::fromLatin1(index) << time
                << (expected ? QString::fromUtf8(expected) : QString());
        };
        const QTime evening = Evening.time();
        row("de_DE", "", evening, "21:40:15");
        row("de_DE", "0", QTime(9, 15), "09:15:00");
        row("de_DE", "1", evening, "21:40");
        row("de_DE", "2", evening, "PM 21:40:15");
        row("de_DE", "3", QTime(9, 15), "AM 09:15");
        row("de_DE", "3", evening, "PM 21:40");
        row("de_DE", "3", QTime(0, 0), "AM 00:00");
        row("de_DE", "3", QTime(11, 59, 59), "AM 11:59");
        row("de_DE", "3", QTime(12, 0), "PM 12:00");
        row("en_US", "0", evening, "9:40:15 PM");
        row("en_US", "2", evening, "PM 9:40:15 PM");
        row("en_US", "3", evening, "PM 21:40");
        row("es_ES", "0", evening, "21:40:15");
        row("fr_CA", "0", evening, "21 h 40 min 15 s");
        row("zh_TW", "0", evening, "21:40:15");
        row("de_DE", "4", evening, nullptr);
        row("de_DE", "x", evening, nullptr);
    }
    void FormatsTime() {
        QFETCH(QString, locale);
        QFETCH(QString, index);
        QFETCH(QTime, time);
        QFETCH(QString, expected);
        const auto text = FormatTime(index, time, QLocale(locale));
        QCOMPARE(text.has_value(), !expected.isNull());
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
        row("date in another line", "|Date", "|Date||||||");
        row("both", "Date|Date, Time", "D, T|D, T||||||");
        row("last line", "1|2|3|4|5|6|7|Date, Time", "1|2|3|4|5|6|7|D, T");
    }
    void ShowsTheWholeText() {
        auto [lines, expected] = Row<QString, QString>();
        QCOMPARE(WholeText(Text(qPrintable(lines)), "D, T"), expected.replace("|", "\r\n"));
    }

    void ShowsRowsInTurn_data() {
        const Rows<QString, int, QString> row;  // - for no text
        row("all, two each", "A|B|C|D|E|F|G|H", 2, "A A B B C C D D E E F F G G H H A A B");
        row("all, one each", "A|B|C|D|E|F|G|H", 1, "A B C D E F G H A B");
        row("an empty row between", "A||C|D|E|F|G|H", 1, "A C D E F G H A C");
        row("an empty row costs one picture", "A||C|D|E|F|G|H", 2,
            "A A C C C D D E E F F G G H H A A C");
        row("first rows empty", "||C|D|E|F|G|H", 1, "C D E F G H C");
        row("without, behind the last", "A||C", 2, "A A C C C - - A A C");
        row("one alone", "A", 8, "A A A A A A A A - - - - - - A");
        row("all empty", "", 3, "- - - - - -");
        row("no number", "A|B", 0, "A A A");
        row("no number, first rows empty", "||C|D", 0, "C C C");
        row("no number, all empty", "", 0, "- -");
        row("date", "Date|Date|at Date, Time|D|E|F|G|H", 1, "D, T Date at D, T D E F G H D, T");
    }
    void ShowsRowsInTurn() {
        const auto [lines, each, expected] = Row<QString, int, QString>();
        RowTurns turns;
        const QRegularExpression separators("(?<!D,|at|Date,) ");
        const int pictures = static_cast<int>(expected.split(separators).size());
        QCOMPARE(RowsShown(Text(qPrintable(lines), each), turns, pictures), expected);
    }

    void GivesLongRowsTheirFullTurn() {
        constexpr int most = 32767;
        const SpecialText text = Text("A|B|C|D|E|F|G|H", most);
        RowTurns turns;
        for (const QString& line : text.Lin)
            for (int i = 0; i < most; ++i)
                if (NextRow(text, turns, {}) != line) QFAIL(qPrintable(line + QString::number(i)));
        QCOMPARE(NextRow(text, turns, {}), text.Lin.front());
    }

    void KeepsTheRowWhenTheTurnsGetShorter() {
        RowTurns turns;
        const QString before = RowsShown(Text("A|Date, Time|C|D|E|F|G|H", 100), turns, 150);
        QVERIFY(before.endsWith("A D, T" + QString(" D, T").repeated(49)));
        QCOMPARE(RowsShown(Text("A|B|C|D|E|F|G|H", 2), turns, 4), "D, T A A B");
    }

    void FollowsTheMode_data() {
        const Rows<int, bool, bool, QString> row;  // of two pictures, / between
        row("date", 0, false, false, " D / D ");
        row("time", 1, false, false, " T / T ");
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
        const QTemporaryDir folder;
        PictureState state;
        state.SettingsFile = folder.filePath("ftpOptions.ini");
        state.Locale = QLocale("de_DE");
        RecordingDisplay display;
        TextOverlay overlay(state, display);
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
        QVERIFY(display.Statuses.isEmpty());
    }

    void KeepsTheFormThatIsNotThere() {
        const QTemporaryDir folder;
        PictureState state;
        state.SettingsFile = folder.filePath("ftpOptions.ini");
        state.Locale = QLocale("de_DE");
        RecordingDisplay display;
        TextOverlay overlay(state, display);
        const auto build = [&](const QByteArray& settings, const QDateTime& now) {
            const bool written = WriteBytes(state.SettingsFile, "[Einstellungen]\n" + settings);
            overlay.BuildDateTime(now);
            return written ? state.DateText + ' ' + state.TimeText : QString();
        };
        QCOMPARE(build("Date=7\nTime=9", Evening), "14.11.2026 21:40:15");
        QCOMPARE(display.Statuses, QStringList({"Overlay text: there is no date format 7",
                                                "Overlay text: there is no time format 9"}));
        QCOMPARE(build("Date=3\nTime=1", Evening), "Sa, 14. November 2026 21:40");
        // The form stays, the time goes on, and the fault that came back is told again, once.
        display.Statuses.clear();
        QCOMPARE(build("Date=7\nTime=1", Evening.addDays(1)), "So, 15. November 2026 21:40");
        QCOMPARE(build("Date=7\nTime=9", Evening.addSecs(60)), "Sa, 14. November 2026 21:41");
        QCOMPARE(display.Statuses, QStringList({"Overlay text: there is no date format 7",
                                                "Overlay text: there is no time format 9"}));
    }
};

QTEST_GUILESS_MAIN(TestOverlayText)
#include "test_overlay_text.moc"
