#include "support/data_rows.h"
#include "ui/settings/ftp/frm_ftp.h"
#include "ui/settings_fixture.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Port and the history's length with texts of the FTP settings.
class Example : public SettingsWindow {
  public:
    explicit Example(const Surroundings& surroundings)
        : SettingsWindow(surroundings, "frmFTP", nullptr) {
        for (QWidget* each : std::initializer_list<QWidget*>{Caption, Port, Free, History})
            Body().addWidget(each);
        Caption->setBuddy(Port);
        Port->SetWhenEmpty(21);
        Finish();
    }

    QLabel* Caption = new QLabel;
    NumberField* Port = new NumberField(1, 65535);
    QLineEdit* Free = new QLineEdit;
    QCheckBox* History = new QCheckBox;
    bool Fine = true;

  protected:
    void ShowSettings() override {
        Port->setText(Setting("Port"));
        History->setChecked(Flag("lastpictures"));
    }
    bool Check() override { return Fine; }
    QList<ProfileEntry> Entries() const override {
        return {Entry("User", Free->text()), Entry("Port", Port->Value().value_or(0)),
                Entry("lastpictures", History->isChecked())};
    }
    void ShowTexts() override {
        Caption->setText(Text("Port"));
        Port->setAccessibleName(Text("Port"));
        History->setText(Text("HistoryOption"));
        SettingsWindow::ShowTexts();
    }
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
        QCOMPARE(window.Port->text(), QString("2100"));
        QVERIFY(window.History->isChecked());
        window.Port->setText("990");
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        QCOMPARE(fixture.Lines(), QStringList({"Port=2100", "lastpictures=1"}));

        fixture.Write("[Einstellungen]\n");
        window.Open();
        window.Free->setText("me");
        QTest::keyClick(window.Free, Qt::Key_Return);
        QVERIFY(!window.isVisible());
        QCOMPARE(fixture.Lines(), QStringList({"User=me", "Port=21", "lastpictures=0"}));
        QCOMPARE(fixture.Core->State.Values.User, QString("me"));

        window.Open();
        window.Fine = false;
        QVERIFY(!window.Save());
        QVERIFY(window.isVisible());
    }

    void NumbersOutOfRangeAreRefusedWhereTheyAreTyped_data() {
        const Rows<QString, bool> row;
        row("the least", "1", true);
        row("the most", "65535", true);
        row("blanks around it", " 21 ", true);
        row("nothing, which stands for a number", "", true);
        row("below", "0", false);
        row("above", "65536", false);
        row("a fraction", "2.5", false);
    }
    void NumbersOutOfRangeAreRefusedWhereTheyAreTyped() {
        const auto [typed, right] = Row<QString, bool>();
        SettingsFixture fixture;
        fixture.Write("");
        Example window(fixture.Around());
        window.Open();
        window.Port->setText(typed);
        const QString note = right ? QString()
                                   : QString(
                                         "Remote-Server Port (standard): a whole number from 1 to "
                                         "65535.");
        QCOMPARE(window.lblNote->text(), note);
        window.Free->setFocus();
        QCOMPARE(window.Save(), right);
        QCOMPARE(window.lblNote->text(), note);
        if (!right) QCOMPARE(window.focusWidget(), window.Port);
        QCOMPARE(fixture.Lines().isEmpty(), !right);
    }

    void AFileThatCannotBeWrittenKeepsTheWindow() {
        SettingsFixture fixture;
        Example window(fixture.Around());
        window.Open();
        const QStringList before = fixture.Lines();
        window.Free->setText(QString("a") + QChar(0) + "b");  // no file can hold it
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
        QCOMPARE(window.Caption->text(), QString("&Remote-Server Port (standard):"));
        QCOMPARE(window.History->text(), QString("&history upload every 10 pictures"));
        fixture.Words.SetLanguage(Texts::Language::German);
        QCOMPARE(window.btnSave->text(), QString("&Speichern"));
        QCOMPARE(window.btnClose->text(), QString("S&chliessen"));
        QCOMPARE(ClippedAnywhere(window, fixture.Words).join("\n"), QString());
    }

    void AnOpenWindowKeepsWhatWasTyped() {
        SettingsFixture fixture;
        Example window(fixture.Around());
        window.Open();
        window.Port->setText("2121");
        window.Open();
        QCOMPARE(window.Port->text(), QString("2121"));
        window.reject();
        window.Open();
        QCOMPARE(window.Port->text(), QString());
    }
};

QTEST_MAIN(TestSettingsWindow)
#include "test_settings_window.moc"
