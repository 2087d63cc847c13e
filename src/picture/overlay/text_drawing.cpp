#include "picture/overlay/text_drawing.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

constexpr int columns = 3;
constexpr int cells = 9;

// Where a length starts that lies at the beginning (0), in the middle (1) or at the end (2).
int Start(int place, int available, int length) {
    return std::max(0, (available - length) * place / 2);
}

// The ink of a slanted letter reaches beyond the place that the letter takes.
struct LineExtent {
    int Left;
    int Width;

    LineExtent(const QFontMetrics& metrics, const QString& line) {
        const QRect ink = metrics.boundingRect(line);
        Left = std::min(0, ink.left());
        Width = std::max(metrics.horizontalAdvance(line), ink.left() + ink.width()) - Left;
    }
};

void PrintLine(QPainter& painter, const TextSurface& surface, const QString& line, int column,
               int top) {
    const QFontMetrics metrics = painter.fontMetrics();
    const LineExtent extent(metrics, line);
    const int x = Start(column, surface.Picture.width(), extent.Width);
    if (surface.Background)
        painter.fillRect(x, top, extent.Width, metrics.height(), *surface.Background);
    painter.drawText(x - extent.Left, top + metrics.ascent(), line);
}

QStringList SplitLines(const QString& text, bool trim) {
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) {
        if (line.endsWith(u'\r')) line.chop(1);
        if (trim) line = line.trimmed();
    }
    while (!lines.isEmpty() && lines.back().isEmpty()) lines.removeLast();
    while (!lines.isEmpty() && lines.front().isEmpty()) lines.removeFirst();
    return lines;
}

// What stands in for a font that is not installed, judged by its name.
QFont::StyleHint KindOf(const QString& family) {
    const auto named = [&family](std::initializer_list<const char*> parts) {
        return std::any_of(parts.begin(), parts.end(), [&family](const char* part) {
            return family.contains(QLatin1String(part), Qt::CaseInsensitive);
        });
    };
    if (named({"mono", "courier", "consol", "terminal", "typewriter", "fixed"}))
        return QFont::TypeWriter;
    if (named({"sans"})) return QFont::SansSerif;
    if (named({"serif", "times", "roman", "garamond", "georgia", "palatino", "bookman"}))
        return QFont::Serif;
    return QFont::SansSerif;
}

}  // namespace

QRect PrintTextAligned(TextSurface& surface, const QString& text, int cell, bool trim) {
    if (text.isEmpty() || surface.Picture.isNull()) return {};
    if (cell < 0 || cell >= cells) cell = 0;
    QPainter painter(&surface.Picture);
    painter.setFont(surface.Font);
    painter.setPen(surface.Color);
    // Each line by its own script, whatever the language of the desktop.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    const QStringList lines = SplitLines(text, trim);
    const int height = painter.fontMetrics().height();
    const int block = height * static_cast<int>(lines.size());
    int top = Start(cell / columns, surface.Picture.height(), block);
    // Ink may reach beyond its line, but not that far.
    const QRect band = surface.Picture.rect() &
                       QRect(0, top - height, surface.Picture.width(), block + 2 * height);
    painter.setClipRect(band);
    for (const QString& line : lines) {
        if (top >= surface.Picture.height()) break;
        if (!line.isEmpty()) PrintLine(painter, surface, line, cell % columns, top);
        top += height;
    }
    return band;
}

QFont PictureFont(const QString& family, int pixels) {
    QFont font;
    if (!family.isEmpty()) font.setFamilies({family});
    font.setStyleHint(KindOf(family));
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    // Left to the desktop, it would change with its scale.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setPixelSize(std::max(1, pixels));
    return font;
}
