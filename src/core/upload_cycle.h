#pragma once

#include "base/clock.h"
#include "core/main_state.h"
#include "core/megabytes.h"

#include <QObject>

class Connectivity;
class FTP;
class OfflinePicture;
class PicturePipeline;
class Sound;
class StatusDisplay;
class UploadTransaction;
class Waiting;

// The heartbeat: each tick of Timer4 makes one picture and publishes it. Start, pause and stop come
// from the buttons; Timer1 watches for a transfer that got stuck and connects again; Timer2 lets
// "Pause" blink.
class UploadCycle : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        Waiting& Wait;
        FTP& Ftp;
        Connectivity& Net;
        UploadTransaction& Transaction;
        PicturePipeline& Pictures;
        StatusDisplay& Display;
        Sound& Sounds;
        const MainState& State;
        QString ClickSound;  // path of "Click.wav"; empty when there is none
    };
    explicit UploadCycle(const Parts& parts);

    // What is published when the operator stops; none: the last picture stays.
    void SetOfflinePicture(OfflinePicture* picture) { offline = picture; }

    // The clicks of the three buttons. A start that comes while a picture is being published waits
    // for its end, and so does the offline picture of a stop.
    void Start();
    void Pause();
    void Stop();

    // Takes over Framerate and Uptime after the settings were loaded.
    void ApplyInterval();

    // The window is being unloaded: no further step starts.
    void Unload();

    [[nodiscard]] bool Running() const { return running; }
    [[nodiscard]] bool Paused() const { return paused; }
    // A picture is being published, the offline picture included.
    [[nodiscard]] bool TickRunning() const { return tickRunning; }
    [[nodiscard]] int PictureCount() const { return pictureCount; }
    [[nodiscard]] int MinutesLeft() const { return minutesLeft; }

  signals:
    void ButtonsEnabled(bool start, bool stop);
    void PausedChanged(bool paused);
    // A picture is public: the number of pictures published since the program started.
    void PicturePublished(int count);

  private:
    void OnTimer1();
    void OnTimer2();
    void OnTimer4();

    bool TickMakesPicture();
    void Tick();
    void LocalTick();
    void FtpTick();
    void FinishTick(bool connectTried);
    bool ConnectForTick();
    bool MakePicture();
    bool PrepareSending();
    void CountPicture(const QString& file);
    void Watchdog();
    void ConnectAgain();
    void EndOfRun();
    void RunDeferred();
    void PublishOffline();

    Parts parts;
    OfflinePicture* offline = nullptr;
    Timer Timer1;
    Timer Timer2;
    Timer Timer4;

    bool running = false;
    bool paused = false;
    bool pauseShown = false;
    bool tickRunning = false;
    bool startAfterTick = false;
    bool offlineDue = false;  // as soon as neither tick nor connect runs
    bool offlineRunning = false;
    bool published = true;
    bool sendStarted = false;
    int ticksSinceSend = 0;
    qint64 madeAt = -1;  // when the picture in the working folder was made, clock milliseconds
    qint16 minutesLeft = 0;
    int pictureCount = 0;
    int publishedCount = 0;
    MegabyteCounter megabytes;
};
