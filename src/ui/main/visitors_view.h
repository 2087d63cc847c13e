#pragma once

#include "base/clock.h"
#include "texts/texts.h"
#include "ui/widgets/preview_area.h"

#include <QWidget>

#include <optional>

class PreviewArea;
class Program;
class QLabel;

// What visitors of the web page see: the picture that was published last, with its age below. Lies
// over the preview while it is shown, and follows.
class VisitorsView : public QWidget {
    Q_OBJECT

  public:
    // The program outlives the view. rightMargin: pixels beside the age that stay free.
    VisitorsView(Program& ownProgram, int rightMargin, QWidget* parent);

    PreviewArea* Picture;
    QLabel* lblAge;  // "Visitors see a picture 12 s old", or that nothing was published yet

    // The texts outlive the view.
    void ShowTexts(const Texts& ownTexts);

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    [[nodiscard]] QString Age() const;
    void Follow();

    Program& program;
    const Texts* texts = nullptr;
    Timer second;
    std::optional<qint64> shown;  // when the picture that is shown was published
};
