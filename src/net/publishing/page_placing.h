#pragma once

#include "base/clock.h"
#include "base/detached_thread.h"
#include "net/picture_server.h"

#include <functional>

class StatusDisplay;
class Waiting;

// What bears the name of a page already.
enum class PageThere { Nothing, Ours, Another, Unknown };

enum class PageStep { Connecting, Looking, Storing };

// Puts a web page beside the pictures, on a connection of its own. What is there under its name is
// looked at first; what this program has not put there is replaced only when somebody says so.
class PagePlacing : public QObject {
    Q_OBJECT

  public:
    struct Page {
        QString Name;
        QByteArray Html;
        QString Mode;  // who may read it, octal; empty: as the server makes it
    };
    // Whether another file, or one that nobody can see, is to be replaced; may wait for an answer.
    using MayReplace = std::function<bool(PageThere there)>;

    // log: where the commands and replies are shown.
    PagePlacing(Waiting& ownWaiting, StatusDisplay& ownLog);
    ~PagePlacing() override;

    // Waits through the event loop until it is done, for a minute or two at most and the time of
    // the question. Cancelled also when what is there is to stay. One at a time.
    [[nodiscard]] ServerAnswer Run(const ServerAccess& access, const Page& page,
                                   const MayReplace& mayReplace);

    // Ends the one that runs as soon as possible. Works from any handler.
    void Cancel() { Stop(ServerFault::Cancelled); }
    [[nodiscard]] bool Running() const { return running; }

  signals:
    void StepStarted(PageStep step);

  private:
    [[nodiscard]] ServerAnswer PutOnServer(const ServerAccess& access, const Page& page,
                                           const MayReplace& mayReplace);
    [[nodiscard]] ServerAnswer PutInFolder(const QString& folder, const Page& page,
                                           const MayReplace& mayReplace);
    [[nodiscard]] ServerAnswer Look(const QString& name, PageThere& there);
    [[nodiscard]] ServerAnswer Store(const Page& page);
    [[nodiscard]] ServerAnswer GiveName(const QString& from, const QString& to);
    [[nodiscard]] ServerAnswer Limited(PageStep step,
                                       const std::function<ServerAnswer()>& operation);
    [[nodiscard]] ServerAnswer Aside(const std::function<ServerAnswer()>& work);
    [[nodiscard]] bool Asked(PageThere there, const MayReplace& mayReplace) const;
    void Stop(ServerFault result);

    Waiting& waiting;
    StatusDisplay& log;
    Timer deadline;
    WayBack way;
    PictureServer* server = nullptr;  // that is being spoken to
    std::optional<ServerFault> stopped;
    bool running = false;
};
