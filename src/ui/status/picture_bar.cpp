#include "ui/status/picture_bar.h"

#include <QPainter>

namespace {
constexpr QSize plainSize(120, 18);
constexpr double faint = 0.25;  // how much of the colour a plain bar has where it is empty
}  // namespace

PictureBar::PictureBar(QWidget* parent) : QProgressBar(parent) {}

void PictureBar::SetPictures(const QPixmap& emptyPicture, const QPixmap& fullPicture) {
    empty = emptyPicture;
    full = fullPicture;
    resize(sizeHint());
    updateGeometry();
    update();
}

void PictureBar::SetValue(int newValue) {
    if (newValue == value()) return;
    // What changes on a window is painted in one go: several small paints cost several times that.
    setUpdatesEnabled(false);
    setValue(newValue);
    setUpdatesEnabled(true);
}

void PictureBar::SetColour(const QColor& fill) {
    colour = fill;
    update();
}

void PictureBar::SetCaption(Caption kind, const QString& before, const QString& after) {
    caption = kind;
    textBefore = before;
    textAfter = after;
    update();
}

QString PictureBar::text() const {
    if (caption == Caption::None || maximum() <= minimum()) return {};
    const QString percentage =
        QString::number((value() - minimum()) * 100 / (maximum() - minimum()));
    return caption == Caption::Percentage ? percentage + " %" : textBefore + percentage + textAfter;
}

QSize PictureBar::sizeHint() const {
    return empty.isNull() ? plainSize : empty.size();
}

void PictureBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const int filled = width() * (value() - minimum()) / std::max(1, maximum() - minimum());
    const QRect fill(0, 0, filled, height());
    const QColor plain = colour.isValid() ? colour : palette().color(QPalette::WindowText);
    if (empty.isNull() && caption == Caption::None) {
        painter.setOpacity(faint);
        painter.fillRect(rect(), plain);
        painter.setOpacity(1);
    } else if (empty.isNull()) {
        painter.fillRect(rect(), Qt::darkGray);  // the text on it is white
    } else {
        painter.drawPixmap(rect(), empty);
    }
    if (full.isNull()) {
        painter.fillRect(fill, plain);
    } else {
        painter.setClipRect(fill);
        painter.drawPixmap(rect(), full);
        painter.setClipping(false);
    }
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}
