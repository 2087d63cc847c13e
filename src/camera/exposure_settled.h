#pragma once

#include <QtGlobal>

#include <array>

// A camera that has just been opened delivers dark or bleached pictures until its exposure has
// settled. Fed with the mean brightness of each picture, this tells from which one on they are fit
// to be shown: not before 300 ms and three pictures, not later than after 3 s.
class ExposureSettled {
  public:
    // elapsed: milliseconds since the camera was opened; brightness: mean of the picture, 0 to 255.
    // Returns true once settled, and from then on always.
    bool Feed(qint64 elapsed, double brightness);

    [[nodiscard]] bool Settled() const { return settled; }

  private:
    std::array<double, 4> latest{};
    int pictures = 0;
    bool settled = false;
};
