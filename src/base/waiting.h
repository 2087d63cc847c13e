#pragma once

#include <QObject>

#include <functional>
#include <optional>

class Clock;

// What ends a wait besides its condition.
struct WaitTerms {
    std::optional<qint64> LimitMilliseconds = {};  // none: no time limit
    std::function<bool()> Hopeless = {};           // looked at after the condition
    std::function<void(qint64 elapsedMilliseconds)> EveryPass = {};  // at least once a second
};

// The one routine that waits. It runs the event loop until a condition holds, a limit has passed,
// the program closes, or the thing waited for can no longer happen, and sleeps between events.
// Every change that a condition looks at comes with an event of this thread.
class Waiting : public QObject {
    Q_OBJECT

  public:
    enum class End {
        Done,      // the condition holds
        Limit,     // the time is up
        Closing,   // the program is ending
        Hopeless,  // nothing can make the condition hold any more
    };

    explicit Waiting(Clock& clock);

    // Waits until done() is true. done is asked before the first pass, so a condition that holds
    // already costs no event.
    End Until(const std::function<bool()>& done, const WaitTerms& terms = {});

    // Waits whole seconds. Returns false when the program closes meanwhile.
    bool Seconds(int seconds);

    // Lets pending events run once.
    void Yield();

    // Ends every wait, those running and those to come.
    void Close();
    [[nodiscard]] bool Closing() const { return closing; }

    // How many waits are nested in each other at this moment.
    [[nodiscard]] int Depth() const { return depth; }

    [[nodiscard]] Clock& OwnClock() const { return clock; }

  signals:
    // The outermost wait has returned.
    void Idle();

  private:
    void Leave();

    Clock& clock;
    bool closing = false;
    int depth = 0;
};
