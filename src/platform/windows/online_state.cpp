#include "platform/windows/online_state.h"

// Before anything that includes winsock.h, with which it does not go together.
#include <winsock2.h>

#include "platform/windows/system.h"

#include <QNetworkInterface>

#include <algorithm>

#include <iphlpapi.h>
#include <wininet.h>

namespace {

WindowsOnlineState::Answer AskWinInet() {
    DWORD flags = 0;
    const bool connected = InternetGetConnectedState(&flags, 0);
    return {.Connected = connected, .Flags = flags};
}

// Whether this machine has an address by which others can reach it, be it one that an interface
// gave itself. To look at all of them takes a while.
bool IsOnANetwork() {
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    return std::ranges::any_of(interfaces, [](const QNetworkInterface& each) {
        const auto flags = each.flags();
        return flags.testFlags(QNetworkInterface::IsUp | QNetworkInterface::IsRunning) &&
               !flags.testFlag(QNetworkInterface::IsLoopBack) && !each.addressEntries().isEmpty();
    });
}

}  // namespace

struct WindowsOnlineState::Order {
    OVERLAPPED Overlapped{};

    Order() { Overlapped.hEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr); }
    ~Order() {
        CancelIPChangeNotify(&Overlapped);
        CloseHandle(Overlapped.hEvent);
    }
    Q_DISABLE_COPY_MOVE(Order)
};

WindowsOnlineState::WindowsOnlineState(Reader read)
    : reader(read ? read : AskWinInet),
      order(std::make_unique<Order>()),
      last(reader()),
      onANetwork(IsOnANetwork()) {
    connect(&notifier, &QWinEventNotifier::activated, this, [this] {
        Await();
        Judge();
    });
    notifier.setHandle(order->Overlapped.hEvent);
    notifier.setEnabled(true);
    Await();
}

WindowsOnlineState::~WindowsOnlineState() {
    notifier.setEnabled(false);
}

void WindowsOnlineState::Await() {
    HANDLE handle = nullptr;
    NotifyAddrChange(&handle, &order->Overlapped);
}

OnlineState::Links WindowsOnlineState::Connection() const {
    const quint32 flags = reader().Flags;
    Links links;
    links.setFlag(Modem, flags & INTERNET_CONNECTION_MODEM);
    links.setFlag(Lan, flags & INTERNET_CONNECTION_LAN);
    links.setFlag(Proxy, flags & INTERNET_CONNECTION_PROXY);
    return links;
}

void WindowsOnlineState::ForceOnline() {
    INTERNET_CONNECTED_INFO online{.dwConnectedState = INTERNET_STATE_CONNECTED, .dwFlags = 0};
    InternetSetOptionW(nullptr, INTERNET_OPTION_CONNECTED_STATE, &online, sizeof online);
}

void WindowsOnlineState::Judge() {
    const Answer now = reader();
    const bool nowOnANetwork = IsOnANetwork();
    if (now == last && nowOnANetwork == onANetwork) return;
    last = now;
    onANetwork = nowOnANetwork;
    emit Changed();
}
