#pragma once

#include "base/status_display.h"
#include "core/run_state.h"

#include <functional>
#include <utility>

// What a program without a display tells of a run by itself: why it has to try again, each trouble
// once until another one comes.
class ConsoleTroubles : public StatusDisplay {
  public:
    explicit ConsoleTroubles(std::function<void(const QString&)> ownPrint)
        : print(std::move(ownPrint)) {}

    [[nodiscard]] bool InUse() const override { return true; }
    void LogState(const QString& state) override {
        if (state == NameOf(RunState::Waiting)) last.clear();
        if (!state.startsWith(NameOf(RunState::WaitingToRetry)) || state == last) return;
        last = state;
        print("Stillpost: " + state);
    }

  private:
    std::function<void(const QString&)> print;
    QString last;
};
