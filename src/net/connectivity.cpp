#include "net/connectivity.h"

#include "base/server_address.h"
#include "base/status_display.h"
#include "base/waiting.h"
#include "net/page_control.h"
#include "platform/dialer.h"
#include "platform/online_state.h"

#include <QHostAddress>
#include <QPointer>
#include <QScopedValueRollback>

namespace {

constexpr int maxTries = 9;
constexpr int dialLimit = 10'000;  // milliseconds

bool IsThisMachine(const QString& server) {
    const QString host = ServerAddress::Of(server).Host;
    return host.compare("localhost", Qt::CaseInsensitive) == 0 || QHostAddress(host).isLoopback();
}

}  // namespace

// Marks a check or a dial. Only the outermost forgets a stop of the past: one that begins
// inside another must not undo the stop that the other has still to notice.
class Connectivity::Running {
  public:
    explicit Running(Connectivity& ownParent) : parent(ownParent) {
        if (parent.depth++ == 0) parent.interrupted = false;
    }
    ~Running() { --parent.depth; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

  private:
    Connectivity& parent;
};

Connectivity::Connectivity(Waiting& ownWaiting, OnlineState& ownState, Dialer& ownDialer,
                           StatusDisplay& ownDisplay, PageControl& ownPage)
    : waiting(ownWaiting), state(ownState), dialer(ownDialer), display(ownDisplay), page(ownPage) {}

void Connectivity::SetServer(const QString& host) {
    const bool localMode = host == "Local" || host == "local";
    needsNetwork = !localMode && !IsThisMachine(host);
}

void Connectivity::SetDialling(bool nowAnwahl, const QString& entry) {
    anwahl = nowAnwahl;
    entryName = entry;
}

void Connectivity::SetStopped(bool nowStopped) {
    stopped = nowStopped;
    if (stopped) interrupted = true;
}

bool Connectivity::IstNetzVerbindung() {
    if (checking) return Online();
    const QScopedValueRollback now(checking, true);
    const Running running(*this);
    return CheckAndConnect();
}

bool Connectivity::CheckAndConnect() {
    bool connected = Connected();
    if (display.InUse()) {
        if (!connected) display.ShowStatus("No Connection to Internet");
        Show(connected);
    }
    if (connected) return true;
    if (stopped) return false;

    if (anwahl) {
        DialConfigured();
    } else {
        connected = TryToConnect();
    }
    if (connected) {
        display.ShowStatus(QString("Connected via %1. please wait...").arg(ConnectionType()));
    }
    WaitUnlessAborted(1);
    return connected;
}

bool Connectivity::TryToConnect() {
    bool connected = false;
    for (int number = 1; number <= maxTries; ++number) {
        waiting.Yield();
        const QString type = ConnectionType();
        if (Aborted()) break;
        display.ShowStatus(QString("connect to internet try: %1").arg(number));
        // A known kind of connection counts as online even where the online test says no.
        if (!type.isEmpty()) return true;
        // Once the test says online, the tries that are left only wait for the kind to be told.
        if (connected) continue;
        if (!RequestPages()) break;
        connected = Connected();
        if (!WaitUnlessAborted(1)) break;
    }
    return connected;
}

// One try's requests and the waiting between them; false when it was aborted.
bool Connectivity::RequestPages() {
    state.ForceOnline();
    for (int i = 0; i < 2; ++i) {
        page.Request(false);
        page.Request(true);
        if (!WaitUnlessAborted(3)) return false;
    }
    return true;
}

void Connectivity::DialConfigured() {
    if (waiting.Closing()) return;
    const Running running(*this);
    display.ShowStatus("Connecting to " + entryName);
    // The line of another entry would be forgotten, and stay open for ever.
    if (dialHandle != 0 && dialledEntry != entryName) HangUp();
    dialled = true;
    dialledEntry = entryName;
    dialConnection = 0;
    dialHandle = dialer.Dial(entryName, [self = QPointer(this)](int handle) {
        if (self) self->dialConnection = handle;
    });
    waiting.Until([this] { return dialConnection != 0 || Aborted(); },
                  {.LimitMilliseconds = dialLimit});
}

void Connectivity::HangUp() {
    if (dialHandle != 0) dialer.HangUp(dialHandle);
    const bool stood = dialConnection != 0;
    dialHandle = dialConnection = 0;
    if (stood && display.InUse()) Show(false);
}

bool Connectivity::Online() {
    const bool connected = Connected();
    if (!display.InUse()) {
        shown.reset();
    } else if (shown != connected) {
        Show(connected);
    }
    return connected;
}

bool Connectivity::Connected() const {
    // Whoever has an entry to dial wants it dialled, whatever else the machine is connected to.
    return !needsNetwork || (anwahl ? state.Connected() : state.Reachable());
}

void Connectivity::Show(bool online) {
    display.ShowOnline(online);
    shown = online;
}

QString Connectivity::ConnectionType() const {
    const OnlineState::Links links = state.Connection();
    QString type;
    if (links.testFlag(OnlineState::Proxy)) type = "proxy";
    if (links.testFlag(OnlineState::Modem)) type = "modem";
    if (links.testFlag(OnlineState::Lan)) type = "lan";
    return type;
}

bool Connectivity::Aborted() const {
    return interrupted || waiting.Closing();
}

// Waits whole seconds; false when stop was pressed or the program closes before they are over.
bool Connectivity::WaitUnlessAborted(int seconds) {
    const auto end =
        waiting.Until([this] { return Aborted(); }, {.LimitMilliseconds = seconds * 1000LL});
    return end == Waiting::End::Limit;
}
