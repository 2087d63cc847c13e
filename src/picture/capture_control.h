#pragma once

#include <QImage>
#include <QString>

// What the picture pipeline asks of the camera: one frame, that frame as a bitmap file, and the
// preview switched. The capture control of the main window implements it.
class CaptureControl {
  public:
    virtual ~CaptureControl() = default;

    // Takes the newest frame and keeps it for SaveDIB. May wait a few seconds for the first one,
    // handling events meanwhile. Returns false when the camera delivers none.
    [[nodiscard]] virtual bool GrabFrame() = 0;

    // Writes the grabbed frame to `path` as a device-independent bitmap file. Returns false when
    // there is no frame or it cannot be written; an older file of that name is then left alone.
    [[nodiscard]] virtual bool SaveDIB(const QString& path) = 0;

    // The pixels that SaveDIB has written, Format_BGR888, so that they need not be read from there;
    // the control has them no more. Null when only the file has them.
    [[nodiscard]] virtual QImage TakeFrame() { return {}; }

    // How often the preview is renewed, in pictures per second.
    virtual void SetPreviewRate(int rate) = 0;
    virtual void SetPreview(bool on) = 0;

    // Whether the same picture again and again is a sign that it hangs.
    [[nodiscard]] virtual bool MayFreeze() const { return true; }

    // Why there is no frame, in a sentence for the operator, and since when; empty when nothing is
    // wrong with the camera.
    [[nodiscard]] virtual QString Reason() const { return {}; }

    // Whether a camera is switched on and selected and has not failed at the last grab.
    [[nodiscard]] virtual bool Running() const = 0;
};
