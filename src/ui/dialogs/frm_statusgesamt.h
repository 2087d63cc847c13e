#pragma once

#include "base/clock.h"

#include <QWidget>

class DayView;
class Program;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class RunFigures;
class Texts;

// The overview: the last 24 hours, every figure of the run and the server's replies. It follows the
// run only while it is shown.
class frmStatusgesamt : public QWidget {
    Q_OBJECT

  public:
    // All outlive the window.
    frmStatusgesamt(Program& ownProgram, const RunFigures& ownFigures, Texts& ownTexts);

    DayView* Day;
    QPushButton* btnRemedy;  // shown while something can be put right
    QPlainTextEdit* txtLog;
    QPushButton* btnLog;
    QPushButton* btnClose;

    void Show();
    // What stands beside the caption with that key of the texts: "State", "Server" and so on.
    [[nodiscard]] QString Value(const QString& key) const;

  signals:
    // What is wrong is to be put right.
    void RemedyWanted();
    // What has been written down of the last days is to be shown.
    void LogWanted();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Line {
        QString Key;
        QLabel* Caption;
        QLabel* Value;
    };

    void AddLines(QGridLayout& grid);
    void FitToScreen();
    void ShowTexts();
    void ShowFigures();
    void ShowLog();
    void ShowRemedy();
    void Set(const QString& key, const QString& value);
    [[nodiscard]] QString Text(const QString& key) const;
    [[nodiscard]] QString ServerText() const;
    [[nodiscard]] QString StateText() const;
    [[nodiscard]] QString ArchiveText() const;
    [[nodiscard]] QString HoursText() const;
    [[nodiscard]] QString NextPictureText() const;
    [[nodiscard]] QString Seconds(qint64 milliseconds) const;

    Program& program;
    const RunFigures& figures;
    Texts& texts;
    QList<Line> lines;
    QLabel* logCaption;
    Timer refresh;
};
