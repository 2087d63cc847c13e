#include "ui/status/readout_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QToolTip>

ReadoutLabel::ReadoutLabel(QWidget* parent) : QLabel(parent) {
    // What comes from a server is shown as it is.
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ReadoutLabel::SetColour(const QColor& colour) {
    if (!colour.isValid()) {
        setPalette({});
        return;
    }
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, colour);
    setPalette(colours);
}

QStringList ReadoutLabel::Lines() const {
    const QFontMetrics metrics = fontMetrics();
    const auto lastLine = [&](const QString& rest) {
        return metrics.elidedText(rest, Qt::ElideRight, width());
    };
    const int most = wordWrap() ? std::max(1, height() / metrics.lineSpacing()) : 1;
    if (most == 1) return {lastLine(text())};
    QStringList lines;
    QTextLayout layout(text(), font());
    layout.setTextOption(QTextOption());  // its wrap mode is at word boundaries or anywhere
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width());
        const QString rest = text().mid(line.textStart());
        const bool last = lines.size() + 1 == most;
        lines << (last ? lastLine(rest) : rest.left(line.textLength()).trimmed());
        if (last) break;
    }
    layout.endLayout();
    return lines;
}

bool ReadoutLabel::Cut() const {
    const QStringList lines = Lines();
    return !lines.isEmpty() && lines.last().endsWith(QChar(0x2026)) &&
           !text().endsWith(lines.last());
}

bool ReadoutLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    if (Cut())
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
    else
        QToolTip::hideText();
    return true;
}

void ReadoutLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const Qt::Alignment at = wordWrap() ? Qt::AlignLeft | Qt::AlignTop : alignment();
    painter.drawText(rect(), static_cast<int>(at), Lines().join(u'\n'));
}
