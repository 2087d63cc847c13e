#pragma once

#include <QtGlobal>

// When what has failed is tried again: first after five seconds, each further time after twice as
// long. All times are clock milliseconds.
class Retry {
  public:
    static constexpr qint64 FirstPause = 5'000;
    static constexpr qint64 MostPause = 300'000;
    // A server that refuses the login again and again locks the account or the address out.
    static constexpr qint64 MostPauseRefused = 900'000;

    // A try that began at `began` has failed now. The pause counts from its beginning, so that a
    // slow failure does not add to it, but is never shorter than the first one; most: the longest.
    void Failed(qint64 began, qint64 now, qint64 most = MostPause);
    // It went well, or whatever made it fail has changed: the next try is due at once, and the
    // pauses begin anew.
    void Reset() { *this = {}; }

    // Nothing has failed yet.
    [[nodiscard]] bool Fresh() const { return pause == 0; }
    [[nodiscard]] bool Due(qint64 now) const { return now >= next; }
    // When the next try is due.
    [[nodiscard]] qint64 Next() const { return next; }

  private:
    qint64 next = 0;
    qint64 pause = 0;  // the last one; 0 before the first failure
};
