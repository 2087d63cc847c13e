#pragma once

#include "core/retry.h"
#include "core/trouble.h"

#include <QObject>
#include <QString>

#include <optional>

class Clock;
class StatusDisplay;

// What the program is doing, from the operator's start to the stop.
enum class RunState {
    Stopped,            // until the operator starts
    Connecting,         // logging in to the server
    Waiting,            // for the time of the next picture
    GoingOnline,        // dialling, or trying until the machine is online
    TakingPicture,      // from the camera to the finished file
    Sending,            // until the picture has its public name
    WaitingToRetry,     // something failed, and is tried again soon
    OutsideHours,       // nothing is published now; goes on by itself when the hours begin
    Paused,             // by the operator; a picture that is on its way still arrives
    Stopping,           // by the operator; what is under way comes to its end first
    PublishingOffline,  // the picture that tells viewers that the camera is off
    Offline,            // stopped after the offline picture
};

// "waiting for the next picture" and so on, as the log has it.
[[nodiscard]] QString NameOf(RunState state);

// The camera gives no new picture.
struct CameraAbsence {
    std::optional<qint64> Since = {};  // clock milliseconds; none: it gives some
    bool OfflineShown = false;         // visitors see the offline picture until a new one comes
    Retry Again = {};                  // while that could not be published
};

// What is remembered for one run and begins anew with each start.
struct OneRun {
    Retry Again;                       // while the last tick has failed
    qint64 Due = 0;                    // the next picture; clock milliseconds
    bool DeletesFirst = false;         // the server does not rename over a file
    bool Deletes = true;               // the server deletes files, as far as it was asked
    std::optional<bool> ChangesModes;  // the server sets the rights of files; none: not known yet
    qint16 MinutesLeft = 0;            // extra whole minutes to wait before the next picture
    bool Published = true;             // lowered while a new picture is not public yet
    std::optional<int> SendStarted;    // ticks of the watchdog since then; none: nothing is sent
    bool Closed = false;               // it is outside the hours, and all is done for that
    CameraAbsence Absence;
    std::optional<qint64> Beat;  // the last full multiple of the interval; milliseconds since 1970
    bool AtOnce = false;         // the next picture waits for no multiple
};

// The state of the run. Everything that shows whether the program runs, pauses, connects or sends
// asks here; Enter is the only way to change it.
class RunStatus : public QObject {
    Q_OBJECT

  public:
    // Both outlive the status. log: where every change is printed.
    RunStatus(const Clock& ownClock, StatusDisplay& ownLog);

    // From now on the program does this. why: the trouble that led there, if any. A step
    // (connecting … outside the hours) that is entered while the operator has paused, stopped
    // or published the offline picture goes on beneath that state.
    void Enter(RunState next, const Trouble& why = {});
    void Enter(RunState next, const QString& why) { Enter(next, Trouble{why}); }
    // Ends a pause: back to the step beneath it.
    void Resume();

    [[nodiscard]] RunState Is() const { return state; }
    // What is under way, also beneath a pause, a stop or the offline picture.
    [[nodiscard]] RunState Step() const { return step; }

    // A run is on, paused or not.
    [[nodiscard]] bool Running() const;
    // A run is on, and it is outside the hours.
    [[nodiscard]] bool Closed() const { return Running() && ThisRun.Closed; }
    // The run is over and the status says "Offline": after the offline picture, or because the
    // first connect has failed.
    [[nodiscard]] bool EndedOffline() const;
    // A step is under way that another must not begin inside.
    [[nodiscard]] bool Busy() const;

    // Why the state was entered; empty for the ordinary course.
    [[nodiscard]] const QString& Reason() const { return reason.Why; }
    // Since when it lasts, in milliseconds of the clock; of a trouble that repeats, the first time.
    [[nodiscard]] qint64 Since() const { return since; }
    // What keeps pictures from being published, or has ended the run: from the first failed try on,
    // also during the steps of the next ones, until one succeeds or the operator steps in.
    [[nodiscard]] const std::optional<Trouble>& Ongoing() const { return ongoing; }
    // A run is on that publishes nothing because of it.
    [[nodiscard]] bool Failing() const { return ongoing && Running(); }

    OneRun ThisRun;

  signals:
    // State, step or trouble have changed.
    void Changed();

  private:
    void FollowTrouble(RunState next, const Trouble& why);

    const Clock& clock;
    StatusDisplay& log;
    RunState state = RunState::Stopped;
    RunState step = RunState::Stopped;
    Trouble reason;
    Trouble stepReason;  // of the step beneath
    std::optional<Trouble> ongoing;
    qint64 since;
    std::optional<qint64> troubleSince;
};

// Which of the three buttons can be pressed.
struct RunButtons {
    bool Start = false;
    bool Pause = false;
    bool Stop = false;

    [[nodiscard]] static RunButtons For(const RunStatus& run);
};
