#pragma once

#include "base/detached_thread.h"
#include "picture/archive/archive_folder.h"

class Clock;
class StatusDisplay;

// The archive of former pictures. A disk that is slow, gone or full costs no picture and no time:
// the work is done on another thread, and the status says once what is wrong and when it goes on.
class PictureArchive : public QObject {
    Q_OBJECT

  public:
    // Both outlive the archive.
    PictureArchive(StatusDisplay& ownDisplay, const Clock& ownClock);
    // Waits a moment for the pictures that are being written.
    ~PictureArchive() override;

    // One more picture was made; the file is read at once. Without a folder nothing is kept: the
    // copies would pile up wherever the program was started.
    void Keep(const QString& picture, const ArchiveSettings& settings, const QDateTime& time,
              const QLocale& locale);

    struct State {
        ArchiveTrouble Is = ArchiveTrouble::None;
        ArchiveSum Sum;
    };
    // As of the last picture kept.
    [[nodiscard]] const State& Now() const { return state; }
    // Pictures are being written, or old ones removed.
    [[nodiscard]] bool Working() const;

  private:
    struct Work;
    void Told(const State& now, const QString& folder);
    [[nodiscard]] bool IsTurn(const ArchiveSettings& settings);

    StatusDisplay& display;
    const Clock& clock;
    WayBack way{*this};
    std::shared_ptr<Work> work;
    State state;
    int every = 0;  // as it was for the last picture
    int turn = 0;
};
