#pragma once

#include "base/clock.h"
#include "texts/texts.h"
#include "ui/widgets/preview_area.h"

#include <optional>

class Program;

// What visitors of the web page see: the picture that was published last, with its age below. Lies
// over the preview while it is shown, and follows.
class VisitorsView : public PreviewArea {
    Q_OBJECT

  public:
    // The program outlives the view.
    VisitorsView(Program& ownProgram, QWidget* parent);

    // Outlive the view.
    void SetTexts(const Texts& ownTexts) { texts = &ownTexts; }

    // "What visitors see: 12 s old"; or that nothing was published yet.
    [[nodiscard]] QString Caption() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void Follow();

    Program& program;
    const Texts* texts = nullptr;
    Timer second;
    std::optional<qint64> shown;  // when the picture that is shown was published
};
