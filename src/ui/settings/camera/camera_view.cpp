#include "ui/settings/camera/camera_view.h"

#include "camera/ezvidcap.h"
#include "core/fault_advice.h"
#include "texts/texts.h"
#include "ui/widgets/preview_area.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

const QString section = "CameraFaults";

}  // namespace

CameraView::CameraView(const ezVidCap& ownCapture, const Texts& ownTexts, QWidget* parent)
    : QWidget(parent),
      Area(new PreviewArea(this)),
      lblState(new QLabel(this)),
      capture(ownCapture),
      texts(ownTexts) {
    constexpr QSize least(288, 216);
    Area->setMinimumSize(least);
    Area->SetCentred(true);
    lblState->setWordWrap(true);
    lblState->setTextFormat(Qt::PlainText);
    // Room for two lines from the start: a fault must not make the window jump.
    lblState->setMinimumHeight(2 * lblState->fontMetrics().lineSpacing());
    lblState->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(Area, 1);
    column->addWidget(lblState);
    connect(&capture, &ezVidCap::PreviewFrame, this, &CameraView::ShowFrame);
    connect(&capture, &ezVidCap::FaultChanged, this, &CameraView::ShowFault);
    connect(&texts, &Texts::Changed, this, &CameraView::ShowTexts);
    ShowTexts();
}

void CameraView::Begin(bool waiting) {
    Area->Clear();
    state = waiting ? State::Waiting : State::Idle;
    if (waiting && !capture.Fault().isEmpty()) state = State::Failed;
    ShowTexts();
}

void CameraView::ShowFrame(const QImage& image) {
    if (state == State::Idle) return;
    Area->SetPicture(image);
    state = State::Showing;
    ShowTexts();
}

void CameraView::ShowFault(const QString& fault) {
    if (state == State::Idle || fault.isEmpty()) return;
    Area->Clear();
    state = State::Failed;
    ShowTexts();
}

void CameraView::ShowTexts() {
    QString text;
    if (state == State::Waiting) text = texts.Get(section, "Waiting");
    if (state == State::Failed) text = FaultAdvice(capture.FaultCause(), texts);
    if (state == State::Showing)
        text = texts.Get(section, "Showing").arg(capture.Width()).arg(capture.Height());
    lblState->setText(text);
    Area->setAccessibleName(texts.Get(section, "Picture"));
}
