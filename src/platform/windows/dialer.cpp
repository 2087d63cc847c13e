#include "platform/windows/dialer.h"

#include "base/detached_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace {
constexpr std::chrono::seconds longestHangUp{5};
}

// What the threads share with the dialer, which may be gone before they are.
struct WindowsDialer::Link {
    std::mutex Lock;
    std::condition_variable HungUp;
    WindowsDialer* Owner = nullptr;
    int HangingUp = 0;

    // Lets the dialer's own thread call it, if it is still there.
    void Report(int handle, quintptr connection) {
        const std::lock_guard guard(Lock);
        if (!Owner) return;
        QMetaObject::invokeMethod(
            Owner, [owner = Owner, handle, connection] { owner->Dialled(handle, connection); },
            Qt::QueuedConnection);
    }
};

WindowsDialer::WindowsDialer(DialCalls ownCalls)
    : calls(std::move(ownCalls)), link(std::make_shared<Link>()) {
    link->Owner = this;
}

WindowsDialer::~WindowsDialer() {
    std::unique_lock guard(link->Lock);
    link->Owner = nullptr;
    link->HungUp.wait_for(guard, longestHangUp, [this] { return link->HangingUp == 0; });
}

void WindowsDialer::Dial(const QString& entry, std::function<void(int)> dialled) {
    const auto known = std::find_if(lines.begin(), lines.end(),
                                    [&entry](const Line& line) { return line.Entry == entry; });
    if (known != lines.end() && known->Connection == 0) {
        known->Waiting.push_back(std::move(dialled));
        return;
    }
    if (known != lines.end() && calls.Stands(entry)) {
        QMetaObject::invokeMethod(
            this, [dialled = std::move(dialled), handle = known.key()] { dialled(handle); },
            Qt::QueuedConnection);
        return;
    }
    if (known != lines.end()) lines.erase(known);
    const int handle = ++lastHandle;
    lines[handle] = {.Entry = entry, .Waiting = {std::move(dialled)}};
    StartDetached(
        [shared = link, dial = calls.Dial, entry, handle] { shared->Report(handle, dial(entry)); });
}

void WindowsDialer::Dialled(int handle, quintptr connection) {
    const auto line = lines.find(handle);
    if (line == lines.end()) return;
    if (connection == 0) {
        lines.erase(line);
        return;
    }
    line->Connection = connection;
    for (const auto& dialled : std::exchange(line->Waiting, {})) dialled(handle);
}

void WindowsDialer::HangUp(int handle) {
    const quintptr connection = lines.value(handle).Connection;
    if (connection == 0) return;
    lines.remove(handle);
    const std::lock_guard guard(link->Lock);
    ++link->HangingUp;
    StartDetached([shared = link, hangUp = calls.HangUp, connection] {
        hangUp(connection);
        const std::lock_guard inner(shared->Lock);
        --shared->HangingUp;
        shared->HungUp.notify_all();
    });
}
