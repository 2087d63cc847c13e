#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

// The system's dial-up connections: its phone-book entries.
class Dialer : public QObject {
    Q_OBJECT

  public:
    [[nodiscard]] virtual QStringList Entries() const = 0;

    // Starts dialling `entry` without asking the user. dialled(handle) is called from the event
    // loop once the connection stands, with a handle other than 0; never when dialling fails. An
    // entry that this program dialled and that still stands, or is coming up, is not dialled a
    // second time: its handle is reported. Returns the handle, which can be hung up from now on.
    virtual int Dial(const QString& entry, std::function<void(int handle)> dialled) = 0;

    // Ends the connection of this handle, or the dialling; unknown handles are ignored.
    virtual void HangUp(int handle) = 0;
};
