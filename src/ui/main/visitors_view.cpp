#include "ui/main/visitors_view.h"

#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "ui/widgets/preview_area.h"

#include <QLabel>
#include <QVBoxLayout>

namespace {

constexpr int milliseconds = 1000;
constexpr int sixty = 60;
constexpr qint64 longInSeconds = 120;  // more is told in minutes, and the same again in hours

}  // namespace

VisitorsView::VisitorsView(Program& ownProgram, int rightMargin, QWidget* parent)
    : QWidget(parent),
      Picture(new PreviewArea),
      lblAge(new QLabel),
      program(ownProgram),
      second(ownProgram.Wait.OwnClock(), milliseconds) {
    hide();
    setAutoFillBackground(true);
    setPalette(
        QPalette(Qt::white, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::white, Qt::black));
    lblAge->setWordWrap(true);
    lblAge->setContentsMargins(4, 2, rightMargin, 2);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    rows->addWidget(Picture, 1);
    rows->addWidget(lblAge);
    connect(&second, &Timer::Tick, this, &VisitorsView::Follow);
}

void VisitorsView::ShowTexts(const Texts& ownTexts) {
    texts = &ownTexts;
    if (isVisible()) Follow();
}

QString VisitorsView::Age() const {
    const auto text = [this](const QString& key) { return texts->Get("frmSkin", key); };
    if (!program.State.Published) return text("NothingPublished");
    const qint64 now = program.Wait.OwnClock().Milliseconds();
    const qint64 seconds = (now - program.State.Published->At) / milliseconds;
    const qint64 minutes = seconds / sixty;
    const QString age = seconds < longInSeconds   ? text("AgeSeconds").arg(seconds)
                        : minutes < longInSeconds ? text("AgeMinutes").arg(minutes)
                                                  : text("AgeHours").arg(minutes / sixty);
    return text("VisitorsSee").arg(age);
}

void VisitorsView::Follow() {
    const auto& published = program.State.Published;
    if (published && shown != published->At) {
        // Kept no larger than it is shown.
        const QSize room = (QSizeF(size()) * devicePixelRatioF()).toSize();
        const QImage whole(published->File);
        const bool large = whole.width() > room.width() && whole.height() > room.height();
        Picture->SetPicture(
            large ? whole.scaled(room, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation)
                  : whole);
        shown = published->At;
    }
    lblAge->setText(Age());
}

void VisitorsView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    shown.reset();
    Follow();
    second.SetEnabled(true);
}

void VisitorsView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    second.SetEnabled(false);
    Picture->Clear();
}
