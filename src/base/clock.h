#pragma once

#include <QDateTime>
#include <QObject>

#include <map>

class Timer;

// The one source of time. Everything that counts seconds or fires at an interval asks a Clock, so
// that a test can put its own in place and step a 45-second limit in milliseconds.
class Clock : public QObject {
    Q_OBJECT

  public:
    // Milliseconds since an arbitrary start; never goes back, whatever the user does to the date.
    // The time that the machine was suspended counts.
    [[nodiscard]] virtual qint64 Milliseconds() const = 0;

    // The local date and time of day.
    [[nodiscard]] virtual QDateTime Now() const = 0;

    // Sleeps until an event arrives or a Timer is due, and handles it. May return early.
    virtual void WaitForEvents() = 0;

  protected:
    friend class Timer;

    // Fires every Timer that is due. A Timer's handler may wait: the others go on firing meanwhile.
    void FireDue();

    // When the next Timer is due, in Milliseconds(); -1 when none is armed.
    [[nodiscard]] qint64 NextDue() const;

    // Called whenever NextDue() may have changed.
    virtual void NextDueChanged() = 0;

  private:
    void Arm(Timer& timer, qint64 due);
    void Disarm(const Timer& timer);

    std::multimap<qint64, Timer*> armed;
};

// A repeating timer that goes by a Clock. Unlike QTimer it keeps ticking while a handler of its own
// tick waits in a nested event loop; the handler keeps itself from being entered again.
class Timer : public QObject {
    Q_OBJECT

  public:
    // interval in milliseconds; the timer starts switched off.
    Timer(Clock& clock, int interval, QObject* parent = nullptr);
    ~Timer() override;

    [[nodiscard]] int Interval() const { return interval; }
    // Sets the interval (at least 1 ms); a running timer starts its interval anew.
    void SetInterval(int milliseconds);

    [[nodiscard]] bool Enabled() const { return enabled; }
    // Switching on a timer that is on leaves its running interval alone.
    void SetEnabled(bool on);

  signals:
    void Tick();

  private:
    friend class Clock;
    void Fire();

    Clock& clock;
    int interval;
    bool enabled = false;
    qint64 due = 0;
};
