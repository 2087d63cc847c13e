#pragma once

#include "core/report/report_gathering.h"
#include "ui/dialogs/lines_window.h"

class Program;

// The system report, made anew each time it is opened, for somebody who shall help.
class frmReport : public LinesWindow {
    Q_OBJECT

  public:
    // Both outlive the window.
    frmReport(Program& program, Texts& ownTexts);

    QPushButton* btnCopy;
    QPushButton* btnSave;

    void Open();
    // Writes the report into that file and says whether it could be.
    void Save(const QString& file);

  protected:
    void ShowTexts() override;
    void showEvent(QShowEvent* event) override;

  private:
    void SetReady(bool ready);
    void AskWhere();

    Program& core;
    Texts& words;
    ReportGathering gathering;
};
