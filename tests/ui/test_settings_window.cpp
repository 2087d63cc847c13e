#include "support/data_rows.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings/settings_rows.h"
#include "ui/settings_fixture.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// A text, a number with a range and an option with texts of the FTP settings.
class Example : public SettingsWindow {
  public:
    explicit Example(const Surroundings& surroundings)
        : SettingsWindow(surroundings, "frmFTP", nullptr) {
        auto* rows = new SettingsRows(Controls);
        rows->Add(User, "User");
        rows->Add(Port, {.Key = "Port", .Enabled = [this] { return User->text() != "nobody"; }});
        rows->Add(History, {.Key = "lastpictures", .Text = "HistoryOption"});
        rows->Add<QLineEdit>({.Key = "PW", .Text = "Password"});
        Body().addLayout(rows);
        Finish();
    }

    QLineEdit* User = new QLineEdit;
    NumberBox* Port = new NumberBox;
    QCheckBox* History = new QCheckBox;
    bool Fine = true;

  protected:
    bool Check() override { return Fine; }
};

}  // namespace

class TestSettingsWindow : public QObject {
    Q_OBJECT

  private slots:
    void EnterSavesAllInOrderAndEscapeNothing() {
        SettingsFixture fixture;
        fixture.Write("[Einstellungen]\nPort=2100\nlastpictures=1\n");
        Example window(fixture.Around());
        window.Open();
        QCOMPARE(window.Port->value(), 2100);
        QVERIFY(window.History->isChecked());
        window.Port->setValue(990);
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        QCOMPARE(fixture.Lines(), QStringList({"Port=2100", "lastpictures=1"}));

        fixture.Write("[Einstellungen]\n");
        window.Open();
        window.User->setText("me");
        QTest::keyClick(window.User, Qt::Key_Return);
        QVERIFY(!window.isVisible());
        QCOMPARE(fixture.Lines(), QStringList({"User=me", "Port=21", "lastpictures=0", "PW="}));
        QCOMPARE(fixture.Core->State.Values.User, QString("me"));

        window.Open();
        window.Fine = false;
        QVERIFY(!window.Save());
        QVERIFY(window.isVisible());
    }

    void NumbersStayInTheirRange_data() {
        const Rows<QString, int> row;
        row("the most", "65535", 65535);
        row("blanks around it", " 99 ", 99);
        row("nothing, which stands for the usual one", "", 21);
        row("below", "0", 1);
        row("above: the digit that is too much is not taken", "65536", 6553);
        row("a fraction: the point is not taken", "2.5", 25);
    }
    void NumbersStayInTheirRange() {
        const auto [typed, saved] = Row<QString, int>();
        SettingsFixture fixture;
        fixture.Write("[Einstellungen]\nPort=700\n");
        Example window(fixture.Around());
        window.Open();
        window.Port->selectAll();
        QTest::keyClick(window.Port, Qt::Key_Delete);
        QTest::keyClicks(window.Port, typed);
        QTest::keyClick(window.Port, Qt::Key_Return);
        QCOMPARE(fixture.Setting("Einstellungen", "Port").toInt(), saved);
    }

    void AFileThatCannotBeWrittenKeepsTheWindow() {
        SettingsFixture fixture;
        Example window(fixture.Around());
        window.Open();
        const QStringList before = fixture.Lines();
        window.User->setText(QString("a") + QChar(0) + "b");  // no file can hold it
        QVERIFY(!window.Save());
        QVERIFY(window.isVisible());
        QCOMPARE(fixture.Lines(), before);
        QCOMPARE(fixture.Boxes.Icons, QList{MessageBoxes::Icon::Critical});
    }

    void LettersAreGivenOnceAndFollowTheLanguage() {
        SettingsFixture fixture;
        Example window(fixture.Around());
        window.Open();
        QCOMPARE(window.btnSave->text(), QString("&Save"));
        QCOMPARE(window.btnClose->text(), QString("&Close"));
        QCOMPARE(window.History->text(), QString("&history upload every 10 pictures"));
        fixture.Words.SetLanguage(Texts::Language::German);
        QCOMPARE(window.btnSave->text(), QString("&Speichern"));
        QCOMPARE(window.btnClose->text(), QString("S&chliessen"));
        QCOMPARE(ClippedAnywhere(window, fixture.Words).join("\n"), QString());
    }

    void ControlsAreSwitchedOnAndOffWithWhatTheyDependOn() {
        SettingsFixture fixture;
        fixture.Write("[Einstellungen]\nUser=nobody\n");
        Example window(fixture.Around());
        window.Open();
        QVERIFY(!window.Port->isEnabled());
        window.User->setText("me");
        QVERIFY(window.Port->isEnabled());
    }

    void AnOpenWindowKeepsWhatWasTyped() {
        SettingsFixture fixture;
        Example window(fixture.Around());
        window.Open();
        window.Port->setValue(2121);
        window.Open();
        QCOMPARE(window.Port->value(), 2121);
        window.reject();
        window.Open();
        QCOMPARE(window.Port->value(), 21);
    }
};

QTEST_MAIN(TestSettingsWindow)
#include "test_settings_window.moc"
