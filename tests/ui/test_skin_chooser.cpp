#include "support/data_rows.h"
#include "ui/frm_oberflaeche.h"
#include "ui/skin/check_row.h"
#include "ui/skin/picture_button.h"
#include "ui/skin/skin.h"
#include "window_fixture.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

namespace {

// A second window that writes down what happens to it, and what the settings said at that moment.
class RecordingWindow : public SkinnedWindow {
  public:
    explicit RecordingWindow(const WindowFixture& ownProgram) : program(ownProgram) {}

    QStringList Steps;

    void LoadBackground(Skin& skin) override { Add("background", skin); }
    void ApplyLayout(Skin& skin) override { Add("layout", skin); }

  private:
    void Add(const QString& step, Skin& skin) {
        Steps << step + " " + skin.Name() + ", setting " + program.Setting("Einstellungen", "Skin");
    }

    const WindowFixture& program;
};

// The program with the chooser for its window and a second one.
class ChooserFixture : public WindowFixture {
  public:
    ChooserFixture() {
        Start();
        Chooser = std::make_unique<frmOberflaeche>(*Core, Skins, Boxes);
        Chooser->AddWindow(*Window);
        Chooser->AddWindow(Second);
        Chooser->Show({10, 10});
    }

    RecordingWindow Second{*this};
    std::unique_ptr<frmOberflaeche> Chooser;
};

}  // namespace

class TestSkinChooser : public QObject {
    Q_OBJECT

  private slots:
    void ListsSkinsAndChecksTheOneInUse() {
        ChooserFixture program;
        const QList<CheckRow*>& rows = program.Chooser->Label1;
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0]->text(), "Default");
        QVERIFY(!rows[0]->isChecked() && rows[1]->isChecked());
        QCOMPARE(rows[1]->y(), rows[0]->y() + rows[0]->height());
        QDir().mkpath(program.Skin("Yellow"));
        program.Chooser->Show({10, 10});
        QCOMPARE(program.Chooser->Label1.size(), 3);
        QVERIFY(program.Chooser->Label1[1]->isChecked());
        const auto mark = [](CheckRow* row) {
            return row->grab().toImage().pixelColor(20, row->height() / 2);
        };
        QVERIFY(Alike(mark(program.Chooser->Label1[1]), SkinMaker::CheckColour));
        QVERIFY(!Alike(mark(program.Chooser->Label1[2]), SkinMaker::CheckColour));
    }

    void AClickDressesAllWindowsAtOnce() {
        ChooserFixture program;
        const QSignalSpy choosing(program.Chooser.get(), &frmOberflaeche::Choosing);
        QTest::mouseClick(program.Chooser->Label1[0], Qt::LeftButton);
        QCOMPARE(choosing.size(), 1);
        QCOMPARE(program.Second.Steps, QStringList({"background Default, setting Green",
                                                    "layout Default, setting Default"}));
        QCOMPARE(program.Core->State.SkinName, "Default");
        QCOMPARE(program.Boxes.Shown, QStringList());
        QVERIFY(Alike(MiddleColour(*program.Window->btnStart), Qt::blue));
        const QColor ground = program.Window->grab().toImage().pixelColor(10, 160);
        QVERIFY(Alike(ground, QColor(Qt::blue).darker()));
        QVERIFY(!program.Chooser->isVisible());
    }

    void Keyboard() {
        ChooserFixture program;
        frmOberflaeche& chooser = *program.Chooser;
        QVERIFY(QTest::qWaitForWindowActive(&chooser));
        chooser.FocusRow();
        QCOMPARE(chooser.focusWidget(), chooser.Label1[1]);
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Escape);
        QVERIFY(!chooser.isVisible() && program.Second.Steps.isEmpty());
        chooser.Show({10, 10});
        QVERIFY(QTest::qWaitForWindowActive(&chooser));
        chooser.FocusRow();
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Up);
        QCOMPARE(chooser.focusWidget(), chooser.Label1[0]);
        QTest::keyClick(chooser.focusWidget(), Qt::Key_Return);
        QCOMPARE(program.Setting("Einstellungen", "Skin"), "Default");
    }

    // Faults are told once, with the file's name, and never leave a window behind that is no use.
    void BrokenSkins_data() {
        const Rows<QString, QString, QString> row;
        row("no background", "splash.bmp", "splash.bmp (Default)", "Default");
        row("no picture", "LEDleft2.jpg", "LEDleft2.jpg (Default)", "Default");
        row("no layout: no fault", "Position.ini", "", "Default");
        row("folder gone", "", "Default is missing", "Green");
    }

    void BrokenSkins() {
        const auto [removed, told, skin] = Row<QString, QString, QString>();
        ChooserFixture program;
        if (removed.isEmpty()) QDir(program.Skin("Default")).removeRecursively();
        QFile::remove(program.Skin("Default", removed));
        QTest::mouseClick(program.Chooser->Label1[0], Qt::LeftButton);
        QCOMPARE(program.Boxes.Shown.size(), told.isEmpty() ? 0 : 1);
        if (!told.isEmpty())
            QVERIFY(program.Boxes.Shown[0].startsWith("Stillpost: Error: " + told));
        QCOMPARE(program.Setting("Einstellungen", "Skin"), skin);
        QCOMPARE(program.Core->State.SkinName, skin);
        QVERIFY(program.Window->isVisible());
        // Back from there to a whole skin.
        program.Chooser->Show({10, 10});
        QTest::mouseClick(program.Chooser->Label1.last(), Qt::LeftButton);
        QCOMPARE(program.Window->size(), QSize(400, 320));
        QCOMPARE(program.Window->btnStart->geometry(), QRect(40, 290, 40, 20));
        QVERIFY(!program.Window->mask().isEmpty());
    }

    void NeverBelowTheScreen_data() {
        const Rows<int, int> row;
        row("fits", 300, 300);
        row("ends with the screen", 668, 668);
        row("one pixel too low", 669, 635);
        row("far below", 2000, 635);
    }

    void NeverBelowTheScreen() {
        const auto [top, expected] = Row<int, int>();
        QCOMPARE(frmOberflaeche::TopOnScreen(top, 100, {0, 0, 1024, 768}), expected);
        QCOMPARE(frmOberflaeche::TopOnScreen(top, 900, {0, 0, 1024, 768}), 0);
    }
};

QTEST_MAIN(TestSkinChooser)
#include "test_skin_chooser.moc"
