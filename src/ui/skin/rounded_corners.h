#pragma once

class QWidget;

namespace RoundedCorners {

constexpr int Radius = 6;  // pixels

// Makes a window one whose corners can be cut away; before it is shown for the first time.
void Prepare(QWidget& window);

// Cuts the corners of a window of its present size away.
void Cut(QWidget& window);

// Paints the ground and the line along the edge that go with them.
void Paint(QWidget& window);

}  // namespace RoundedCorners
