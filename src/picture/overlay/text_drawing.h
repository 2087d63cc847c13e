#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <optional>

// A picture to write on and what to write with.
struct TextSurface {
    QImage& Picture;  // any format that a QPainter draws on
    QFont Font;
    QColor Color = Qt::white;
    std::optional<QColor> Background =
        {};  // behind each line, as wide as the line; none: the picture
};

// Prints lines, separated by line feeds with or without a carriage return, on the surface. cell:
// the place on a grid of three by three, row by row from the top left, 0 to 8; any other is 0. Each
// line stands at its edge or in the middle, all of them as one block: from the first to the last
// that is not empty, with the empty ones between them. What is wider or higher than the picture
// starts at its left or upper edge and is cut off at the other. trim: without the blanks around
// each line. An empty text prints nothing. Returns the part of the picture outside of which nothing
// was drawn.
QRect PrintTextAligned(TextSurface& surface, const QString& text, int cell, bool trim);

// The font for a picture: `family` in `pixels` (at least 1), or what is installed of its kind, its
// edges smoothed without the colours that suit a screen only.
[[nodiscard]] QFont PictureFont(const QString& family, int pixels);
