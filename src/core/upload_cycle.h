#pragma once

#include "base/clock.h"
#include "core/main_state.h"
#include "core/megabytes.h"
#include "core/run_state.h"

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
        RunStatus& Run;
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

    [[nodiscard]] int PictureCount() const { return pictureCount; }

  signals:
    // A picture is public: the number of pictures published since the program started.
    void PicturePublished(int count);

  private:
    void OnTimer1();
    void OnTimer2();
    void OnTimer4();

    void GoOn();
    bool TickMakesPicture();
    // The ticks of the two modes. They return why the next one is to try again; empty when the
    // picture is public.
    [[nodiscard]] QString LocalTick();
    [[nodiscard]] QString FtpTick();
    [[nodiscard]] QString Publish(bool connected);
    void FinishTick(bool connectTried);
    [[nodiscard]] bool Online();
    bool MakePicture();
    [[nodiscard]] QString NoPicture() const;
    bool PrepareSending();
    void CountPicture(const QString& file);
    void Watchdog();
    void ConnectAgain();
    void EndOfRun();
    void EndOfWork();
    void PublishOffline();

    // What a button pressed while a picture is being published asks for once that is done.
    enum class Afterwards { Nothing, Start, OfflinePicture };

    Parts parts;
    RunStatus& run;
    OfflinePicture* offline = nullptr;
    Timer Timer1;
    Timer Timer2;
    Timer Timer4;

    Afterwards afterwards = Afterwards::Nothing;
    qint64 madeAt = -1;  // when the picture in the working folder was made, clock milliseconds
    int pictureCount = 0;
    int publishedCount = 0;
    MegabyteCounter megabytes;
};
