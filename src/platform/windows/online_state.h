#pragma once

#include "platform/online_state.h"

#include <QWinEventNotifier>

#include <memory>

// Online or not on Windows: what WinInet says. It has no notification of its own, so it is asked
// again when an address of the machine changes; it answers from memory. It may say no on a network
// without a way out, so whether a network can be reached is told by the addresses besides.
class WindowsOnlineState : public OnlineState {
    Q_OBJECT

  public:
    struct Answer {
        bool Connected = false;
        quint32 Flags = 0;  // INTERNET_CONNECTION_*

        bool operator==(const Answer&) const = default;
    };
    using Reader = Answer (*)();

    // read: where the answers come from; WinInet when there is none.
    explicit WindowsOnlineState(Reader read = nullptr);
    ~WindowsOnlineState() override;

    [[nodiscard]] bool Connected() const override { return reader().Connected; }
    [[nodiscard]] bool Reachable() const override { return onANetwork || Connected(); }
    [[nodiscard]] Links Connection() const override;
    void ForceOnline() override;

    // Asks again, and tells when the answer is another one.
    void Judge();

  private:
    // An order for one notification, as the system wants it.
    struct Order;

    void Await();

    Reader reader;
    std::unique_ptr<Order> order;
    QWinEventNotifier notifier;
    Answer last;
    bool onANetwork;
};
