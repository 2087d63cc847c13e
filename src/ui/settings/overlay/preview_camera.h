#pragma once

#include <QImage>

class Program;
class Texts;

// The camera as the previews of the overlays see it: the newest frame of the program's camera, or,
// while there is none, a neutral picture that says so. Nothing of it is seen by the upload cycle.
class PreviewCamera {
  public:
    // Both outlive this.
    PreviewCamera(Program& ownCore, const Texts& ownWords) : core(ownCore), words(ownWords) {}

    // Gets the newest frame. Waits for it, handling events meanwhile; not while the program waits
    // for something else, which would be held up, and not at each call when the camera is silent.
    void Ask();
    // Frees the frame.
    void Forget() { frame = {}; }

    // Of the camera's pictures, pixels; empty while it is not known.
    [[nodiscard]] QSize Size() const;

    // The frame, or the neutral picture, as Format_BGR888.
    [[nodiscard]] QImage Picture() const;

  private:
    [[nodiscard]] QImage NeutralPicture() const;
    [[nodiscard]] QSize NeutralSize() const;

    Program& core;
    const Texts& words;
    QImage frame;
    bool asking = false;
    bool hopeful = true;  // a frame may be on its way
    int pause = 0;        // calls to let pass before a silent camera is asked again
};
