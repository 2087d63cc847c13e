#pragma once

#include "base/detached_thread.h"
#include "platform/dialer.h"

#include <QMap>
#include <QSemaphore>

#include <memory>
#include <vector>

// The system's own dial-up routines. Dial and HangUp block for as long as a modem takes.
struct DialCalls {
    std::function<QStringList()> Entries;
    std::function<bool(const QString& entry)> Stands;    // whether it is connected now
    std::function<quintptr(const QString& entry)> Dial;  // the connection; 0 when that failed
    std::function<void(quintptr connection)> HangUp;
    std::function<void(const QString& entry)> GiveUp;  // ends its dialling, or its connection
};

// Those of WinInet and the remote-access service.
[[nodiscard]] DialCalls SystemDialCalls();

// Dial-up on Windows: the entries of the phone book, dialled without a question. What blocks runs
// in threads of its own, so that the windows stay usable.
class WindowsDialer : public Dialer {
    Q_OBJECT

  public:
    explicit WindowsDialer(DialCalls calls = SystemDialCalls());
    // Waits some seconds for lines that are being hung up: else they would stay open.
    ~WindowsDialer() override;

    [[nodiscard]] QStringList Entries() const override { return calls.Entries(); }
    int Dial(const QString& entry, std::function<void(int handle)> dialled) override;
    void HangUp(int handle) override;

  private:
    struct Line {
        QString Entry;
        quintptr Connection = 0;  // 0 while it is being dialled
        std::vector<std::function<void(int)>> Waiting = {};
    };

    void Dialled(int handle, quintptr connection);
    void InBackground(const std::function<void()>& hangUp);

    DialCalls calls;
    QMap<int, Line> lines;  // by handle
    int lastHandle = 0;
    int hangUps = 0;  // begun
    // Released by each that has ended; shared with threads that may outlive the dialer.
    std::shared_ptr<QSemaphore> hungUp = std::make_shared<QSemaphore>();
    WayBack way{*this};
};
