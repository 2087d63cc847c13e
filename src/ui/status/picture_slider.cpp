#include "ui/status/picture_slider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QSize plainTrack(200, 24);
constexpr QSize plainHandle(12, 24);
constexpr int plainGroove = 6;

std::optional<SliderStep> StepOf(int key) {
    switch (key) {
        case Qt::Key_Left:
        case Qt::Key_Down:
            return SliderStep::Down;
        case Qt::Key_Right:
        case Qt::Key_Up:
            return SliderStep::Up;
        case Qt::Key_PageDown:
            return SliderStep::PageDown;
        case Qt::Key_PageUp:
            return SliderStep::PageUp;
        case Qt::Key_Home:
            return SliderStep::Lowest;
        case Qt::Key_End:
            return SliderStep::Highest;
        default:
            return {};
    }
}

// Dark and light, so that it can be seen on a picture of any colour.
void PaintFocusRing(QPainter& painter, const QRect& around) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(around.adjusted(0, 0, -1, -1));
    painter.setPen(Qt::white);
    painter.drawRect(around.adjusted(1, 1, -2, -2));
}

}  // namespace

PictureSlider::PictureSlider(const SliderValues& sliderValues, QWidget* parent)
    : QAbstractSlider(parent), values(sliderValues) {
    setOrientation(Qt::Horizontal);
    setRange(values.Lowest, values.Highest);
    // Reached with Tab; the mouse leaves no ring behind.
    setFocusPolicy(Qt::TabFocus);
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
QRectF PictureSlider::Track() const {
    return track.isNull() ? QRectF(rect()) : QRectF(place);
}

QSize PictureSlider::HandleSize() const {
    return handle.isNull() ? plainHandle : handle.size();
}

SliderModel PictureSlider::Model() const {
    return SliderModel::OnTrack(values.Lowest, values.Highest, Track().left(), Track().width(),
                                HandleSize().width());
}

QRectF PictureSlider::Handle() const {
    const double left = held ? *held : HandleLeft(Model(), value());
    const int top = track.isNull() ? (height() - HandleSize().height()) / 2 : handleY;
    return {QPointF(left, top), QSizeF(HandleSize())};
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
    keyPressed = false;
    update();
    emit Released();
    // A mere click chooses nothing: the value in force may lie beyond the range.
    if (choose && offered) emit Chosen(value());
}

void PictureSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || Choosing() || !Handle().contains(event->position()))
        return;
    held = Handle().left();
    offered = false;
    update();
    emit Taken();
}

void PictureSlider::mouseMoveEvent(QMouseEvent* event) {
    if (!held || !(event->buttons() & Qt::LeftButton)) return;
    const auto moved = MovedHandle(Model(), *held, event->position().x() - *held);
    if (!moved) return;
    held = *moved;
    Offer(values.Nearest(ValueAt(Model(), *moved)));
}

void PictureSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (held && event->button() == Qt::LeftButton) LetGo(true);
}

void PictureSlider::keyPressEvent(QKeyEvent* event) {
    const auto step = StepOf(event->key());
    if (!step || held) {
        event->ignore();
        return;
    }
    if (!keyPressed) {
        keyPressed = true;
        offered = false;
        emit Taken();
    }
    Offer(values.Step(value(), *step));
}

void PictureSlider::keyReleaseEvent(QKeyEvent* event) {
    // A key that is held down chooses once, at its end.
    if (keyPressed && !event->isAutoRepeat() && StepOf(event->key()))
        LetGo(true);
    else
        event->ignore();
}

void PictureSlider::focusOutEvent(QFocusEvent* event) {
    QAbstractSlider::focusOutEvent(event);
    if (keyPressed) LetGo(true);
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
    painter.setPen(palette().color(QPalette::Dark));
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
        painter.drawRoundedRect(Handle().adjusted(1, 1, -1, -1), 2, 2);
    } else {
        painter.drawPixmap(Handle().topLeft(), held ? lit : handle);
    }
    if (hasFocus()) PaintFocusRing(painter, rect());
}
