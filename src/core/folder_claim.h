#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>

#include <memory>

class Clock;
class Timer;

// Sees to it that one program at a time works with a program folder, and lets a second one ask the
// first to show itself. The lock is a file in the folder, "stillpost.lock", which the system holds
// for the program: one that a crash, a power cut or a computer of another name has left behind
// stops nobody. Where no file can be written, the one that answers has the folder.
class FolderClaim : public QObject {
    Q_OBJECT

  public:
    // folder: there already; full path.
    explicit FolderClaim(const QString& folder);
    ~FolderClaim() override;

    // The folder is this program's until the object is gone. False when another one has it.
    [[nodiscard]] bool Take();

    // From now on answers others, by a clock that lives longer. visible: there is a window to be
    // brought to the front.
    void Listen(Clock& clock, bool visible);

    // How the one that has the folder answers.
    enum class Answer {
        Shown,   // its window comes to the front
        Hidden,  // it has none
        None,    // it does not answer: another user's, another computer's, or it hangs
    };
    // Asks it to show itself and waits for some seconds at most, without the event loop.
    [[nodiscard]] Answer Ask() const;

    // The one that has the folder, as far as it is known: its process and computer.
    struct Holder {
        qint64 Process = 0;
        QString Computer = {};
    };
    [[nodiscard]] Holder Other() const;

  signals:
    // Somebody has started the program a second time. token: with which the desktop lets a window
    // come to the front; may be empty.
    void ShowWanted(const QByteArray& token);

  private:
    [[nodiscard]] bool RemoveLeftBehind();
    [[nodiscard]] Answer Talk(const QByteArray& question) const;
    void TakeName();
    void Meet();

    QStringList names;  // of the local server, the best first
    QLockFile lock;
    QLocalServer server;
    std::unique_ptr<Timer> listening;
    bool visible = false;
};
