#include "ui/dialogs/frm_msg.h"
#include "ui/shell_fixture.h"
#include "ui/skin/picture_button.h"
#include "ui/texts/texts.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using enum Texts::Language;

class TestHangUpQuestion : public QObject {
    Q_OBJECT

  private:
    // The program with a line that it has dialled.
    class Dialled : public ShellFixture {
      public:
        Dialled() {
            Begin();
            System.Dial.EntryList = {"Provider 1"};
            Core->Net.SetDialling(true, "Provider 1");
            Core->Net.DialConfigured();
        }
        QSignalSpy& Ended() {
            if (!ended) ended = std::make_unique<QSignalSpy>(Core.get(), &Program::Ended);
            return *ended;
        }

      private:
        std::unique_ptr<QSignalSpy> ended;
    };

  private slots:
    void Answers_data() {
        QTest::addColumn<int>("key");  // of the question's buttons, or Escape
        QTest::addColumn<bool>("ticked");
        QTest::addColumn<bool>("hungUp");
        QTest::addColumn<bool>("ended");
        QTest::addRow("OK") << int(Qt::Key_Return) << false << true << true;
        QTest::addRow("OK, always") << int(Qt::Key_Return) << true << true << true;
        QTest::addRow("Close") << int(Qt::Key_Space) << true << false << true;
        QTest::addRow("Escape") << int(Qt::Key_Escape) << true << false << false;
    }
    void Answers() {
        QFETCH(int, key);
        QFETCH(bool, ticked);
        QFETCH(bool, hungUp);
        QFETCH(bool, ended);
        Dialled program;
        QSignalSpy& end = program.Ended();
        frmMsg& question = program.Windows->HangUpWindow;
        QTest::mouseClick(program.Windows->MainWindow.btnExit, Qt::LeftButton);
        QVERIFY(question.isVisible());
        QCOMPARE(end.count(), 0);
        QVERIFY(program.System.Dial.HungUp.isEmpty());
        question.chkAlways->setChecked(ticked);
        QWidget* target =
            key == Qt::Key_Space ? static_cast<QWidget*>(question.btnClose) : &question;
        QTest::keyClick(target, static_cast<Qt::Key>(key));
        QVERIFY(!question.isVisible());
        QCOMPARE(end.count(), ended ? 1 : 0);
        QCOMPARE(program.System.Dial.HungUp, hungUp ? QList({1}) : QList<int>());
        // Only OK makes the answer permanent.
        QCOMPARE(program.Setting("Einstellungen", "Abwahl"),
                 hungUp && ticked ? QString("1") : QString());
    }

    // Whoever cannot be asked, or has answered for good, is not.
    void NobodyIsAsked_data() {
        QTest::addColumn<bool>("dialled");
        QTest::addColumn<QString>("always");
        QTest::addColumn<bool>("byOperator");
        QTest::addRow("always hung up") << true << "1" << true;
        QTest::addRow("no line") << false << "" << true;
        QTest::addRow("the system ends it") << true << "" << false;
    }
    void NobodyIsAsked() {
        QFETCH(bool, dialled);
        QFETCH(QString, always);
        QFETCH(bool, byOperator);
        Dialled program;
        if (!dialled) program.Core->Net.HangUp();
        program.Set("Einstellungen", "Abwahl", always);
        QSignalSpy& end = program.Ended();
        if (byOperator)
            program.Windows->MainWindow.close();
        else
            program.Core->Exit();
        QVERIFY(!program.Windows->HangUpWindow.isVisible());
        QCOMPARE(end.count(), 1);
        QCOMPARE(program.System.Dial.HungUp, QList({1}));
    }

    void Verbatim() {
        Dialled program;
        program.Core->Leave();
        const frmMsg& question = program.Windows->HangUpWindow;
        QStringList shown;
        for (const auto language : {German, English, French}) {
            program.Windows->Words.SetLanguage(language);
            shown << question.lblQuestion->text() << question.chkAlways->text()
                  << question.btnOk->text() << question.btnClose->text();
        }
        shown.replaceInStrings("&", QString());
        const QStringList expected{
            "Möchten Sie die DFÜ-Verbindung zu Provider 1 beenden?",
            "DFÜ-Verbindung immer schließen",
            "OK",
            "Schliessen",
            "Would you like to terminate the data-communications connection to Provider 1 ?",
            "Data-communications connection always close",
            "OK",
            "Close",
            "Voudriez-vous terminer la relation à des Provider 1 ?",
            "Une relation terminer toujours",
            "OK",
            "terminer"};
        QCOMPARE(shown, expected);
    }
};

QTEST_MAIN(TestHangUpQuestion)
#include "test_hang_up_question.moc"
