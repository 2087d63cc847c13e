#include "support/data_rows.h"
#include "ui/settings/hours/frm_hours.h"
#include "ui/settings/hours/week_picture.h"
#include "ui/settings_fixture.h"

#include <QLabel>
#include <QTest>
#include <QTimeZone>

namespace {

class Fixture : public SettingsFixture {
  public:
    explicit Fixture(const QString& lines = {}) {
        Write("[Einstellungen]\n" + lines);
        Window.Open();
    }
    void Drag(QPoint from, QPoint to) {  // day, hour
        WeekPicture* week = Window.Week;
        QTest::mousePress(week, Qt::LeftButton, {}, week->CellAt(from.x(), from.y()).center());
        QMouseEvent move(QEvent::MouseMove, week->CellAt(to.x(), to.y()).center(), QPointF(),
                         Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(week, &move);
        QTest::mouseRelease(week, Qt::LeftButton, {}, week->CellAt(to.x(), to.y()).center());
    }

    frmHours Window{Around(), nullptr};
};

}  // namespace

class TestHoursWindow : public QObject {
    Q_OBJECT

  private slots:
    void SavesWhatItShows_data() {
        const Rows<QString> row;
        row("nothing set", "");
        row("a week", "mo-fr 06:00-22:00; sa,su 08:00-20:00");
        row("the sun", "sun");
    }
    void SavesWhatItShows() {
        const auto [hours] = Row<QString>();
        const QString others =
            "Place=52.52, 13.41\nOutsideHours=last\nOfflineAfter=7\nFrozenAfter=3\nOnTheMinute=1\n";
        Fixture f("Hours=" + hours + "\n" + others);
        const QStringList before = f.Lines();
        QCOMPARE(f.Window.Week->isEnabled(), hours.startsWith("mo"));
        QVERIFY(f.Window.Save());
        QCOMPARE(f.Lines(), before);
        QCOMPARE(f.Core->State.Values.OfflineAfter, 7);
    }

    void HoursArePainted() {
        Fixture f("Hours=mo-su 06:00-22:00\n");
        f.Drag({1, 6}, {5, 7});
        QCOMPARE(f.Window.txtWeek->text(), "mo-fr 08:00-22:00; sa,su 06:00-22:00");
        f.Drag({7, 23}, {7, 22});
        QVERIFY(f.Window.txtWeek->text().endsWith("sa 06:00-22:00; su 06:00-24:00"));
        // The keyboard is where the mouse was.
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Space}) QTest::keyClick(f.Window.Week, key);
        QVERIFY(f.Window.txtWeek->text().endsWith("sa 06:00-23:00; su 06:00-24:00"));
        QVERIFY(f.Window.lblShown->text().startsWith("Sa 22:00-23:00: pictures"));
        QTest::keyClick(f.Window.Week, Qt::Key_Right, Qt::ShiftModifier);
        QVERIFY(f.Window.txtWeek->text().endsWith("sa,su 06:00-24:00"));
        f.Window.txtWeek->clear();
        QTest::keyClicks(f.Window.txtWeek, "fr 7-9");
        QVERIFY(f.Window.Week->Week().Holds(5, 8 * 60) && !f.Window.Week->Week().Holds(6, 8 * 60));
    }

    void MoreThanCanBeWritten() {
        Fixture f("Hours=mo-su 06:00-22:00\n");
        for (int day = 1; day <= 7; ++day)
            for (int hour = day; hour < 24; hour += 2) f.Drag({day, hour}, {day, hour});
        QVERIFY(f.Window.txtWeek->text().size() <= 255);
        std::optional<HoursFault> fault;
        QVERIFY(Hours::Parse(f.Window.txtWeek->text(), fault).Week == f.Window.Week->Week());
        QVERIFY(f.Window.lblNote->text().contains("255"));
    }

    void Refuses_data() {
        const Rows<QString, QString, QString> row;  // which field; why
        row("no day", "Hours=xy 06:00-22:00\n", "Hours", "\"xy\" is no day");
        row("no place", "Hours=sun\nPlace=here\n", "Place", "needs a place");
        row("no hours", "Hours=mo-su 06:00-22:00\n", "Hours", "at least one hour");
    }
    void Refuses() {
        const auto [lines, field, why] = Row<QString, QString, QString>();
        Fixture f(lines);
        if (why.startsWith("at least")) f.Drag({1, 6}, {7, 21});
        QVERIFY(!f.Window.Save() && f.Window.isVisible());
        QVERIFY2(f.Window.lblNote->text().contains(why), qPrintable(f.Window.lblNote->text()));
        QCOMPARE(f.Window.focusWidget()->objectName(), field);
    }

    void ShowsTheLight() {
        Fixture f("Hours=sun\nPlace=52.52, 13.41\n");
        f.Time.SetNow(QDateTime(QDate(2026, 6, 21), QTime(12, 0), QTimeZone("Europe/Berlin")));
        f.Window.optAlways->click();
        f.Window.optSun->click();
        QCOMPARE(f.Window.lblShown->text(), "Pictures until 22:03.");
        QVERIFY(f.Window.Week->Week().Holds(1, 5 * 60) && !f.Window.Week->Week().Holds(1, 3 * 60));
    }

    void IsReachedAndFits() {
        Fixture f("Hours=mo-su 06:00-22:00\n");
        f.Window.optAlways->setFocus();
        QCOMPARE(TabFaults(f.Window).join("\n"), QString());
        QCOMPARE(ClippedAnywhere(f.Window, f.Words).join("\n"), QString());
    }
};

QTEST_MAIN(TestHoursWindow)
#include "test_hours_window.moc"
