#pragma once

#include "base/clock.h"
#include "core/main_state.h"
#include "core/megabytes.h"
#include "core/run_state.h"
#include "core/schedule/beat.h"
#include "core/schedule/schedule.h"

#include <QObject>

#include <functional>
#include <optional>

class Connectivity;
class OfflinePicture;
class PicturePipeline;
class Sound;
class StatusDisplay;
class Texts;
class UploadTransaction;
class Waiting;

// The heartbeat: each tick of Timer4 makes one picture and publishes it. Start, pause and stop come
// from the buttons; Timer1 watches for a transfer that got stuck, connects again and tries a failed
// tick again, and follows the hours in which there are pictures; Timer2 lets "Pause" blink. A
// picture is at most half a minute old when it is sent.
class UploadCycle : public QObject {
    Q_OBJECT

  public:
    struct Parts {
        Waiting& Wait;
        Connectivity& Net;
        UploadTransaction& Transaction;
        PicturePipeline& Pictures;
        StatusDisplay& Display;
        Sound& Sounds;
        MainState& State;
        RunStatus& Run;
        const Texts& Words;
        QString ClickSound;  // path of "Click.wav"; empty when there is none
    };
    explicit UploadCycle(const Parts& parts);

    // What is published when the operator stops, outside the hours, and where the camera gives no
    // picture for too long; none: the last picture stays.
    void SetOfflinePicture(OfflinePicture* picture) { offline = picture; }

    // What is done between two pictures, while the connection stands.
    void SetBetween(std::function<void()> action) { between = std::move(action); }

    // Who begins a run: with nobody there no message box is shown, and a first connect that fails
    // is tried again.
    enum class Starter { Operator, System };

    // The clicks of the three buttons. A start that comes while a picture is being published waits
    // for its end, and so does the offline picture of a stop. A connect that is under way is given
    // up by a stop.
    void Start(Starter who = Starter::Operator);
    void Pause();
    void Stop();

    // Takes over Framerate and Uptime after the settings were loaded.
    void ApplyInterval();
    // The same of the hours. Hours that cannot be read count as always, which the status tells.
    void ApplyHours();
    [[nodiscard]] const Schedule& PublishingHours() const { return hours; }
    // The next picture comes at once, not an interval later. Nothing while none is waited for.
    void MakeDue();
    // What has failed so far may work now: it is tried again at once.
    void TryAgainAtOnce();

    // The window is being unloaded: no further step starts.
    void Unload();

    [[nodiscard]] int PictureCount() const { return pictureCount; }

  signals:
    // A picture of so many bytes is public; count: pictures published since the program started.
    void PicturePublished(int count, qint64 bytes);

  private:
    void OnTimer1();
    void OnTimer2();
    void OnTimer4();

    // Why a tick failed; none: the picture is public.
    struct Failure {
        Trouble Is;
        qint64 MostPause = Retry::MostPause;  // before it is tried again, milliseconds
        bool NoPicture = false;               // there was none to be sent
    };
    using Outcome = std::optional<Failure>;

    void OnlineAgain(bool online);
    void ArmTimer4();
    bool TickMakesPicture();
    [[nodiscard]] bool MinutesAreOver();
    [[nodiscard]] bool OnTheBeat();
    [[nodiscard]] Beat AimAtBeat();
    [[nodiscard]] int FirstLook() const;
    void Tick();
    [[nodiscard]] Outcome LocalTick();
    [[nodiscard]] Outcome FtpTick();
    [[nodiscard]] bool Connect(RunState then);
    [[nodiscard]] bool Open() const;
    void FollowHours();
    void BeginHours();
    [[nodiscard]] Outcome EndHours();
    [[nodiscard]] Outcome StandIn(const Outcome& tick, qint64 began);
    [[nodiscard]] bool SendOffline(bool blends);
    [[nodiscard]] Failure OfflineNotSent() const;
    void RestOutside();
    [[nodiscard]] Outcome Publish();
    void MakeReady();
    void Failed(const Failure& failure, qint64 began);
    void Succeeded();
    [[nodiscard]] bool Online();
    bool MakePicture();
    [[nodiscard]] Failure NotConnected() const;
    // What has nothing to do with the server is tried again as often as the interval asks.
    [[nodiscard]] Failure Locally(const Trouble& why) const;
    [[nodiscard]] Failure NoFilesLeft() const;
    [[nodiscard]] Failure NoPicture() const;
    [[nodiscard]] Failure WhyNoPicture() const;
    bool PrepareSending();
    void CountPicture(const QString& file);
    void Watchdog();
    void EndOfRun();
    void EndOfWork();
    void PublishOffline();
    [[nodiscard]] qint64 Now() const;

    // What a button pressed while a picture is being published asks for once that is done.
    enum class Afterwards { Nothing, Start, OfflinePicture };

    Parts parts;
    RunStatus& run;
    OfflinePicture* offline = nullptr;
    Schedule hours;
    std::function<void()> between;
    Timer Timer1;
    Timer Timer2;
    Timer Timer4;

    Afterwards afterwards = Afterwards::Nothing;
    bool wasOnline = true;
    std::optional<qint64> madeAt;  // when the picture to be sent was taken, clock milliseconds
    int pictureCount = 0;
    int publishedCount = 0;
    qint64 pictureBytes = 0;  // of the last one made
    MegabyteCounter megabytes;
};
