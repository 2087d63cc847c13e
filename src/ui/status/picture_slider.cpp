#include "ui/status/picture_slider.h"

#include "ui/skin/picture_button.h"
#include "ui/widgets/contrast.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr QSize plainTrack(200, 24);
constexpr QSize plainHandle(12, 24);
constexpr int plainGroove = 6;

}  // namespace

PictureSlider::PictureSlider(const SliderValues& sliderValues, QWidget* parent)
    : QAbstractSlider(parent), values(sliderValues) {
    setOrientation(Qt::Horizontal);
    setRange(values.Lowest, values.Highest);
    // Reached with Tab; the mouse leaves no ring behind.
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractSlider::actionTriggered, this, &PictureSlider::TakeStep);
}

void PictureSlider::SetPictures(const QPixmap& trackPicture, const QPixmap& handlePicture,
                                const QPixmap& litPicture) {
    track = trackPicture;
    handle = handlePicture;
    lit = litPicture.isNull() ? handlePicture : litPicture;
    updateGeometry();
    update();
}

void PictureSlider::Place(const QPoint& trackTopLeft, int handleTop) {
    const QRect onTrack(trackTopLeft, track.isNull() ? plainTrack : track.size());
    const QRect path(onTrack.left(), handleTop, onTrack.width(), HandleSize().height());
    const QRect all = onTrack.united(path);
    setGeometry(all);
    place = onTrack.translated(-all.topLeft());
    handleY = handleTop - all.top();
    update();
}

void PictureSlider::SetValue(int newValue) {
    if (!Choosing()) setValue(newValue);
}

QSize PictureSlider::sizeHint() const {
    return (track.isNull() ? plainTrack : track.size()).expandedTo(HandleSize());
}

// Without a picture the slider fills whatever room it is given.
QRect PictureSlider::Track() const {
    return track.isNull() ? rect() : place;
}

QSize PictureSlider::HandleSize() const {
    return handle.isNull() ? plainHandle : handle.size();
}

// How far the handle can go: it stays on its track with its whole width.
int PictureSlider::Span() const {
    return std::max(1, Track().width() - HandleSize().width());
}

QRect PictureSlider::Handle() const {
    const int way = QStyle::sliderPositionFromValue(minimum(), maximum(), value(), Span());
    const int top = track.isNull() ? (height() - HandleSize().height()) / 2 : handleY;
    return {QPoint(held ? *held : Track().left() + way, top), HandleSize()};
}

void PictureSlider::Offer(int newValue) {
    offered = true;
    setValue(newValue);
    update();
    emit Offered(value());
}

void PictureSlider::LetGo(bool choose) {
    if (!Choosing()) return;
    held.reset();
    pressedKey.reset();
    update();
    emit Released();
    // A mere click chooses nothing: the value in force may lie beyond the range.
    if (choose && offered) emit Chosen(value());
}

void PictureSlider::mousePressEvent(QMouseEvent* event) {
    const bool onHandle = Handle().contains(event->position().toPoint());
    if (event->button() != Qt::LeftButton || Choosing() || !onHandle) return;
    held = Handle().left();
    offered = false;
    update();
    emit Taken();
}

void PictureSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!held || !(event->buttons() & Qt::LeftButton)) return;
    const int left = qRound(event->position().x()) - HandleSize().width() / 2;
    const int way = left - Track().left();
    if (way < 0 || way > Span()) return;  // not even to the end
    held = left;
    Offer(values.Nearest(QStyle::sliderValueFromPosition(minimum(), maximum(), way, Span())));
}

void PictureSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (held && event->button() == Qt::LeftButton) LetGo(true);
}

void PictureSlider::TakeStep(int action) {
    if (values.Step) setSliderPosition(values.Step(value(), static_cast<SliderAction>(action)));
}

void PictureSlider::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(!held);
    if (!held) QAbstractSlider::keyPressEvent(event);
    if (!event->isAccepted()) return;
    const bool taken = !pressedKey;
    pressedKey = event->key();
    if (taken) {
        offered = false;
        emit Taken();
    }
    Offer(value());
}

void PictureSlider::keyReleaseEvent(QKeyEvent* event) {
    // A key that is held down chooses once, at its end.
    const bool ends = pressedKey == event->key() && !event->isAutoRepeat();
    event->setAccepted(ends);
    if (ends) LetGo(true);
}

void PictureSlider::focusOutEvent(QFocusEvent* event) {
    QAbstractSlider::focusOutEvent(event);
    if (pressedKey) LetGo(true);
}

void PictureSlider::hideEvent(QHideEvent* event) {
    QAbstractSlider::hideEvent(event);
    LetGo(false);
}

void PictureSlider::wheelEvent(QWheelEvent* event) {
    // Scrolling past must not change a setting.
    event->ignore();
}

void PictureSlider::PaintPlain(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Contrast::Outline(palette()));
    painter.setBrush(palette().mid());
    QRectF groove(0, 0, width(), plainGroove);
    groove.moveCenter(QRectF(rect()).center());
    painter.drawRoundedRect(groove.adjusted(1, 0, -1, 0), 2, 2);
}

void PictureSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    track.isNull() ? PaintPlain(painter) : painter.drawPixmap(place.topLeft(), track);
    if (handle.isNull()) {
        painter.setPen(palette().color(QPalette::WindowText));
        painter.setBrush(held ? palette().highlight() : palette().button());
        painter.drawRoundedRect(QRectF(Handle()).adjusted(1, 1, -1, -1), 2, 2);
    } else {
        painter.drawPixmap(Handle().topLeft(), held ? lit : handle);
    }
    if (hasFocus()) PaintFocusRing(painter, rect());
}
