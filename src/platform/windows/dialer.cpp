#include "platform/windows/dialer.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {
constexpr std::chrono::seconds longestHangUp{5};
}

WindowsDialer::WindowsDialer(DialCalls ownCalls) : calls(std::move(ownCalls)) {}

WindowsDialer::~WindowsDialer() {
    way.Close();
    const QDeadlineTimer limit(longestHangUp);
    while (hangUps-- > 0)
        if (!hungUp->tryAcquire(1, static_cast<int>(limit.remainingTime()))) return;
}

int WindowsDialer::Dial(const QString& entry, std::function<void(int)> dialled) {
    const auto known = std::find_if(lines.begin(), lines.end(),
                                    [&entry](const Line& line) { return line.Entry == entry; });
    if (known != lines.end() && known->Connection == 0) {
        known->Waiting.push_back(std::move(dialled));
        return known.key();
    }
    if (known != lines.end() && calls.Stands(entry)) {
        QMetaObject::invokeMethod(
            this, [dialled = std::move(dialled), handle = known.key()] { dialled(handle); },
            Qt::QueuedConnection);
        return known.key();
    }
    if (known != lines.end()) lines.erase(known);
    const int handle = ++lastHandle;
    lines[handle] = {.Entry = entry, .Waiting = {std::move(dialled)}};
    StartDetached([this, answer = way, dial = calls.Dial, entry, handle] {
        answer.Post([this, handle, connection = dial(entry)] { Dialled(handle, connection); });
    });
    return handle;
}

void WindowsDialer::Dialled(int handle, quintptr connection) {
    const auto line = lines.find(handle);
    if (line == lines.end()) {
        // Hung up while it was dialled, and too late to stop that.
        if (connection != 0)
            InBackground([hangUp = calls.HangUp, connection] { hangUp(connection); });
        return;
    }
    if (connection == 0) {
        lines.erase(line);
        return;
    }
    line->Connection = connection;
    for (const auto& dialled : std::exchange(line->Waiting, {})) dialled(handle);
}

void WindowsDialer::HangUp(int handle) {
    if (!lines.contains(handle)) return;
    const Line line = lines.take(handle);
    if (line.Connection != 0)
        InBackground([hangUp = calls.HangUp, line] { hangUp(line.Connection); });
    else
        InBackground([giveUp = calls.GiveUp, line] { giveUp(line.Entry); });
}

void WindowsDialer::InBackground(const std::function<void()>& hangUp) {
    ++hangUps;
    StartDetached([ended = hungUp, hangUp] {
        hangUp();
        ended->release();
    });
}
