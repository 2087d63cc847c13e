#pragma once

#include "base/status_display.h"
#include "picture/overlay/overlay_file.h"
#include "picture/overlay/overlay_list.h"
#include "picture/overlay/picture_state.h"

#include <QMap>
#include <QPoint>

// Where the overlay's upper left corner goes on the frame, pixels; negative where the overlay is
// larger. position: 0 up right, 1 up left, 2 up middle, 3 down right, 4 down left, 5 down middle,
// 6 center, any other number as 0. Half pixels go to the even neighbour.
[[nodiscard]] QPoint OverlayPosition(int position, QSize frame, QSize overlay);

// Puts a picture of the program's overlay folder on the camera's, or in its place: always the same
// one, or the next of a list after a number of pictures. The colour of its upper left pixel lets
// the camera picture through; in a picture that has transparency of its own (PNG, GIF), that and
// not the colour decides, half transparent pixels being mixed.
class PictureOverlay {
  public:
    // Both must outlive the overlay.
    PictureOverlay(PictureState& state, StatusDisplay& display);

    // Loads "1pw.bmp" into Picture2 and stamps the overlay on it; with OnlyOverlay the overlay
    // itself becomes Picture2. An overlay that is missing or broken leaves the plain frame. With
    // OnlyOverlay that frame is not meant for the public: it is removed and there is no picture.
    // The status names each fault once until the file is good again. Returns whether Picture2
    // holds the picture to publish.
    [[nodiscard]] bool StampOverlayPicture();

  private:
    [[nodiscard]] QString Setting(const QString& section, const QString& key) const;
    [[nodiscard]] QString OverlayName();
    [[nodiscard]] QString FramePath() const;
    [[nodiscard]] bool TakeAlone(const FilePicture& overlay);
    void PlaceOverlay(const QImage& overlay);
    void Report(const QString& name, PictureFault fault);

    PictureState& state;
    StatusDisplay& display;
    OverlayList list;
    PictureOverlayFile file;
    QMap<QString, PictureFault> reported;  // faults that stand, by the overlay's name
};
