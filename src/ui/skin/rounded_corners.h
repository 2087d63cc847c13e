#pragma once

class QWidget;

namespace RoundedCorners {

constexpr int Radius = 6;  // pixels

// Cuts the corners of a window of its present size away.
void Cut(QWidget& window);

// Draws the line along the edge that goes with them.
void DrawEdge(QWidget& window);

}  // namespace RoundedCorners
