#include "ui/main/visitors_view.h"

#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"

#include <QPainter>

namespace {

constexpr int milliseconds = 1000;
constexpr int sixty = 60;
constexpr qint64 longInSeconds = 120;  // more is told in minutes, and the same again in hours

}  // namespace

VisitorsView::VisitorsView(Program& ownProgram, QWidget* parent)
    : PreviewArea(parent), program(ownProgram), second(ownProgram.Wait.OwnClock(), milliseconds) {
    hide();
    connect(&second, &Timer::Tick, this, &VisitorsView::Follow);
}

QString VisitorsView::Caption() const {
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
        SetPicture(
            large ? whole.scaled(room, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation)
                  : whole);
        shown = published->At;
    }
    setAccessibleName(Caption());
    update();
}

void VisitorsView::paintEvent(QPaintEvent* event) {
    PreviewArea::paintEvent(event);
    constexpr int margin = 4;
    const QColor veil(0, 0, 0, 0xb0);
    QPainter painter(this);
    QRect strip = rect();
    strip.setTop(strip.bottom() + 1 - fontMetrics().height() - 2 * margin);
    painter.fillRect(strip, veil);
    painter.setPen(Qt::white);
    const QRect words = strip.adjusted(2 * margin, 0, -2 * margin, 0);
    painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(Caption(), Qt::ElideRight, words.width()));
}

void VisitorsView::showEvent(QShowEvent* event) {
    PreviewArea::showEvent(event);
    shown.reset();
    Follow();
    second.SetEnabled(true);
}

void VisitorsView::hideEvent(QHideEvent* event) {
    PreviewArea::hideEvent(event);
    second.SetEnabled(false);
    Clear();
}
