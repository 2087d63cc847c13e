#pragma once

#include <QtGlobal>

#include <optional>

class QImage;

// Notices that picture after picture is the same, as from a camera that hangs. Times are clock
// milliseconds.
class StillWatch {
  public:
    // The next picture, as the camera has sent it.
    void Note(const QImage& picture, qint64 now);
    // Begins anew: what comes next may be anything.
    void Forget() { since.reset(); }
    // Since when it is the same; nothing before the first.
    [[nodiscard]] const std::optional<qint64>& Since() const { return since; }

  private:
    std::size_t print = 0;  // of the last picture
    std::optional<qint64> since;
};
