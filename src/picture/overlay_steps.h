#pragma once

// The two steps of a picture cycle that put something on the frame. Both work on Picture2 and on
// the overlay fields of the PictureState that the pipeline has read for this cycle.
class OverlaySteps {
  public:
    virtual ~OverlaySteps() = default;

    // Loads "1pw.bmp" (or the overlay alone) into Picture2 and stamps the overlay picture on it.
    // Returns false when Picture2 does not hold this cycle's picture afterwards: the cycle then
    // makes no picture.
    [[nodiscard]] virtual bool StampOverlayPicture() = 0;

    // Draws the text of this cycle on Picture2.
    virtual void DrawOverlayText() = 0;
};
