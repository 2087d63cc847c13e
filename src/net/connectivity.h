#pragma once

#include <QObject>
#include <QString>

#include <optional>

class Dialer;
class OnlineState;
class PageControl;
class StatusDisplay;
class Waiting;

// Whether the server can be reached, as far as the machine knows, and the ways to make it so:
// dialling a configured entry, or page requests that make the system dial by itself. Any network
// will do, because the server may be in it; only with an entry to dial it must have a way to the
// internet. Owns the line that it dialled.
class Connectivity : public QObject {
    Q_OBJECT

  public:
    Connectivity(Waiting& waiting, OnlineState& state, Dialer& dialer, StatusDisplay& display,
                 PageControl& page);

    // The server's name as the settings have it. A server on this machine, and local mode
    // ("Local", "local"), need no network: both questions are then answered with true.
    void SetServer(const QString& host);

    // anwahl: dial `entry` when offline, instead of trying page requests.
    void SetDialling(bool anwahl, const QString& entry);

    // While stopped (as at first), nothing is dialled or tried; stopping ends what runs.
    void SetStopped(bool nowStopped);

    // The full check: when offline, dials or tries for up to 64 seconds before it answers. After
    // a dial it still answers false; the next question finds the line. A call that arrives while
    // one waits is answered at once, from the present state.
    [[nodiscard]] bool IstNetzVerbindung();

    // The cheap question for each pass of a wait: the present state, shown when it has changed.
    [[nodiscard]] bool Online();

    // Dials the entry and waits up to 10 seconds until the connection stands. A connection that
    // stands later is noted all the same, so that it can be hung up.
    void DialConfigured();

    // Ends the connection that was dialled, if any, or the dialling.
    void HangUp();

    // The handle of the connection that was dialled, 0 when none.
    [[nodiscard]] int DialConnection() const { return dialConnection; }
    // The entry of that connection.
    [[nodiscard]] QString DialledEntry() const { return dialledEntry; }
    // Forgets the connection without ending it.
    void KeepConnection() { dialConnection = dialHandle = 0; }
    // Whether the program has dialled at all.
    [[nodiscard]] bool Dialled() const { return dialled; }

    // "proxy", "modem", "lan" or empty; of several, lan counts before modem before proxy.
    [[nodiscard]] QString ConnectionType() const;

  private:
    class Running;

    [[nodiscard]] bool Connected() const;
    [[nodiscard]] bool CheckAndConnect();
    [[nodiscard]] bool TryToConnect();
    bool RequestPages();
    void Show(bool online);
    [[nodiscard]] bool Aborted() const;
    bool WaitUnlessAborted(int seconds);

    Waiting& waiting;
    OnlineState& state;
    Dialer& dialer;
    StatusDisplay& display;
    PageControl& page;

    bool needsNetwork = true;
    bool anwahl = false;
    QString entryName;
    bool stopped = true;
    bool interrupted = false;  // stopped since the outermost check or dial began
    int depth = 0;             // checks and dials that run inside each other
    bool checking = false;
    bool dialled = false;
    int dialHandle = 0;  // of what was dialled last, stands it or not
    int dialConnection = 0;
    QString dialledEntry;
    std::optional<bool> shown;  // what the indicators show; none while nobody looks
};
