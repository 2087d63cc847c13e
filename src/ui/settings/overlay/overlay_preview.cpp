#include "ui/settings/overlay/overlay_preview.h"

#include "base/waiting.h"
#include "core/program.h"
#include "ui/widgets/preview_area.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int soonMilliseconds = 40;
constexpr int calmMilliseconds = 1000;
constexpr int renewalsPerTurn = 3;
// On a slow machine the previews take at most this part of its time.
constexpr int share = 8;
constexpr QSize leastArea(192, 108);
constexpr QSize usualArea(544, 306);

}  // namespace

OverlayPreview::OverlayPreview(Program& core, const Texts& words, QWidget* parent)
    : QWidget(parent),
      maker(core, words),
      clock(core.Wait.OwnClock()),
      area(new PreviewArea(this)),
      note(new QLabel(this)),
      soon(core.Wait.OwnClock(), soonMilliseconds),
      calm(core.Wait.OwnClock(), calmMilliseconds) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    area->setMinimumSize(leastArea);
    area->SetCentred(true);
    all->addWidget(area, 1);
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    note->hide();
    all->addWidget(note);
    connect(&soon, &Timer::Tick, this, [this] {
        soon.SetEnabled(false);
        Draw();
    });
    connect(&calm, &Timer::Tick, this, &OverlayPreview::AskCamera);
}

// On a small screen the picture gives way first.
QSize OverlayPreview::sizeHint() const {
    return QWidget::sizeHint().expandedTo(usualArea);
}

void OverlayPreview::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    renewals = 0;
    soon.SetEnabled(true);
    calm.SetInterval(1);
    calm.SetEnabled(true);
}

void OverlayPreview::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    soon.SetEnabled(false);
    calm.SetEnabled(false);
    picture = {};
    area->Clear();
    maker.Rest();
}

void OverlayPreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Renew();
}

void OverlayPreview::Renew() {
    if (!isVisible()) return;
    soon.SetEnabled(false);
    soon.SetEnabled(true);
}

void OverlayPreview::Restart() {
    renewals = 0;
    maker.Restart();
    Renew();
}

void OverlayPreview::SetNote(const QString& text) {
    note->setText(text);
    note->setVisible(!text.isEmpty());
}

QString OverlayPreview::Note() const {
    return note->text();
}

// The wait for the frame may outlast the window.
void OverlayPreview::AskCamera() {
    if (asking) return;
    asking = true;
    calm.SetInterval(calmMilliseconds);
    maker.Camera.Ask();
    asking = false;
    if (!isVisible()) {
        maker.Rest();
        return;
    }
    if (++renewals > renewalsPerTurn) {
        renewals = 0;
        maker.Turn();
    }
    Draw();
}

void OverlayPreview::Draw() {
    const qint64 begin = clock.Milliseconds();
    picture = maker.Make(entries ? entries() : QList<ProfileEntry>());
    ShowScaled();
    const qint64 taken = clock.Milliseconds() - begin;
    calm.SetInterval(std::max(calmMilliseconds, static_cast<int>(taken) * share));
    emit Renewed();
}

// Scaled down here, because the area's own way leaves out whole lines of small letters.
void OverlayPreview::ShowScaled() {
    const QSize room = area->size() * devicePixelRatioF();
    const bool larger = picture.width() > room.width() || picture.height() > room.height();
    area->SetPicture(larger ? picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                            : picture);
}
