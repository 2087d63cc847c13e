#pragma once

#include "base/status_display.h"
#include "picture/overlay/overlay_list.h"
#include "picture/overlay/overlay_reader.h"
#include "picture/overlay/overlay_settings.h"

#include <QMap>
#include <QPoint>
#include <QStringList>

// Where the overlay's upper left corner goes on the frame, pixels; negative where the overlay is
// larger. Half pixels go to the even neighbour.
[[nodiscard]] QPoint OverlayPosition(OverlayPlace place, QSize frame, QSize overlay);

// Puts the overlay there and returns which part of the frame (Format_BGR888) it may have changed.
QRect PlaceOverlay(QImage& frame, const QImage& overlay, OverlayPlace place);

// Puts a picture of the program's overlay folder on the camera's, or in its place: always the same
// one, or the next of a list after a number of pictures. The colour of its upper left pixel lets
// the camera picture through; in a picture that has transparency of its own (PNG, GIF), that and
// not the colour decides, half transparent pixels being mixed.
class PictureOverlay {
  public:
    // display: outlives the overlay. places: the folders that have overlay folders, in the order in
    // which they are looked through.
    PictureOverlay(StatusDisplay& ownDisplay, const QStringList& ownPlaces)
        : display(&ownDisplay), places(ownPlaces) {}

    // Stamps the overlay on the frame (Format_BGR888); with PictureCapture it takes the frame's
    // place. An overlay that is missing or broken leaves the plain frame, which is no picture for
    // the public then with PictureCapture. The status names each fault once until the file is good
    // again. Returns whether `picture` is to be published.
    [[nodiscard]] bool StampOverlayPicture(QImage& picture, const OverlaySettings& settings);

    // The part of that picture that is another than before.
    [[nodiscard]] const QRect& Stamped() const { return stamped; }

  private:
    void Report(const QString& name, PictureFault fault, bool alone);

    StatusDisplay* display;
    QStringList places;
    OverlayList list;
    OverlayReader file;
    QRect stamped;
    QMap<QString, PictureFault> reported;  // faults that stand, by the overlay's name
};
