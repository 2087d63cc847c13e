#include "net/publishing/page_placing.h"

#include "base/status_display.h"
#include "base/waiting.h"
#include "base/whole_file.h"
#include "net/publishing/make_server.h"
#include "net/publishing/web_page.h"

#include <QDir>
#include <QFile>
#include <QScopedValueRollback>
#include <QTemporaryFile>

#include <memory>

namespace {

constexpr int deadlineMilliseconds = 60'000;
constexpr qint64 enough = 4096;  // to know a page by its beginning

PageThere KindOf(const QByteArray& beginning) {
    return IsOurPage(beginning) ? PageThere::Ours : PageThere::Another;
}

PageThere KindOfFile(const QString& path) {
    QFile file(path);
    if (!file.exists()) return PageThere::Nothing;
    return file.open(QIODevice::ReadOnly) ? KindOf(file.read(enough)) : PageThere::Another;
}

}  // namespace

PagePlacing::PagePlacing(Waiting& ownWaiting, StatusDisplay& ownLog)
    : waiting(ownWaiting),
      log(ownLog),
      deadline(ownWaiting.OwnClock(), deadlineMilliseconds),
      way(*this) {
    connect(&deadline, &Timer::Tick, this, [this] { Stop(ServerFault::TooSlow); });
}

PagePlacing::~PagePlacing() {
    way.Close();
}

ServerAnswer PagePlacing::Run(const ServerAccess& access, const Page& page,
                              const MayReplace& mayReplace) {
    if (running) return {ServerFault::Cancelled, {}};
    const QScopedValueRollback now(running, true);
    stopped.reset();
    const ServerAnswer answer = access.Local ? PutInFolder(access.Folder, page, mayReplace)
                                             : PutOnServer(access, page, mayReplace);
    return stopped ? ServerAnswer{*stopped, {}} : answer;
}

void PagePlacing::Stop(ServerFault result) {
    if (!stopped) stopped = result;
    if (server) server->Cancel();
}

bool PagePlacing::Asked(PageThere there, const MayReplace& mayReplace) const {
    const bool harmless = there == PageThere::Nothing || there == PageThere::Ours;
    return (harmless || mayReplace(there)) && !stopped && !waiting.Closing();
}

// With a limit of its own, so that a question may be answered in peace.
ServerAnswer PagePlacing::Limited(PageStep step, const std::function<ServerAnswer()>& operation) {
    if (stopped) return {*stopped, {}};
    emit StepStarted(step);
    deadline.SetInterval(deadlineMilliseconds);
    deadline.SetEnabled(true);
    ServerAnswer answer = operation();
    deadline.SetEnabled(false);
    return stopped ? ServerAnswer{*stopped, {}} : answer;
}

ServerAnswer PagePlacing::PutOnServer(const ServerAccess& access, const Page& page,
                                      const MayReplace& mayReplace) {
    StatusDisplay unseen;  // nobody watches the countdown of a step
    const auto made = MakeServer(access.Way, {waiting, unseen}, FtpLimits::OfTrial());
    connect(made.get(), &PictureServer::Sent, this,
            [this](const QString& command) { log.LogCommand(command); });
    connect(made.get(), &PictureServer::Received, this,
            [this](const QString& reply) { log.LogReply(reply.trimmed()); });
    made->SetAccess(access);
    const QScopedValueRollback now(server, made.get());
    PageThere there = PageThere::Unknown;
    ServerAnswer answer = Limited(PageStep::Connecting, [this] { return server->Open(); });
    if (answer.Fine()) answer = Look(page.Name, there);
    if (answer.Fine() && !Asked(there, mayReplace)) answer = {ServerFault::Cancelled, {}};
    if (answer.Fine()) answer = Limited(PageStep::Storing, [&] { return Store(page); });
    made->Close();
    return answer;
}

// What a server does not tell is unknown; that alone is no fault.
ServerAnswer PagePlacing::Look(const QString& name, PageThere& there) {
    QByteArray beginning;
    const ServerAnswer answer =
        Limited(PageStep::Looking, [&] { return server->LookAt(name, beginning); });
    if (stopped || answer.Is == ServerFault::Cancelled) return answer;
    if (answer.Is == ServerFault::FileMissing) there = PageThere::Nothing;
    if (answer.Fine()) there = KindOf(beginning);
    return {};
}

ServerAnswer PagePlacing::Store(const Page& page) {
    QTemporaryFile file;
    if (!file.open() || file.write(page.Html) != page.Html.size() || !file.flush())
        return {ServerFault::NoLocalFile, {}};
    // The look, or the time of a question, may have cost the connection.
    ServerAnswer answer = server->IsOpen() ? ServerAnswer() : server->Open();
    const QString first = server->SendsWhole() ? page.Name : u'1' + page.Name;
    if (answer.Fine()) answer = server->SendFile(file.fileName(), first);
    if (answer.Fine() && first != page.Name) answer = GiveName(first, page.Name);
    if (answer.Fine() && !page.Mode.isEmpty()) (void)server->ChangeMode(page.Name, page.Mode);
    return answer;
}

ServerAnswer PagePlacing::GiveName(const QString& from, const QString& to) {
    ServerAnswer answer = server->RenameFile(from, to);
    if (answer.Is == ServerFault::ReplaceRefused && server->DeleteFile(to).Fine())
        answer = server->RenameFile(from, to);
    if (!answer.Fine() && server->IsOpen()) (void)server->DeleteFile(from);
    return answer;
}

ServerAnswer PagePlacing::PutInFolder(const QString& folder, const Page& page,
                                      const MayReplace& mayReplace) {
    const QString path = QDir(folder).filePath(page.Name);
    auto there = std::make_shared<PageThere>(PageThere::Nothing);
    ServerAnswer answer = Limited(PageStep::Looking, [&] {
        return Aside([folder, path, there]() -> ServerAnswer {
            if (!QDir(folder).exists()) return {ServerFault::LocalFolderMissing, {}};
            *there = KindOfFile(path);
            return {};
        });
    });
    if (!answer.Fine()) return answer;
    if (!Asked(*there, mayReplace)) return {ServerFault::Cancelled, {}};
    return Limited(PageStep::Storing, [&] {
        return Aside([path, html = page.Html]() -> ServerAnswer {
            const bool written = WholeFile::Replace(
                path, [&html](QFile& file) { return file.write(html) == html.size(); });
            return {written ? ServerFault::None : ServerFault::LocalNotWritable, {}};
        });
    });
}

// On another thread: a folder may be on a disk far away.
ServerAnswer PagePlacing::Aside(const std::function<ServerAnswer()>& work) {
    auto done = std::make_shared<std::optional<ServerAnswer>>();
    StartDetached([work, done, back = way] {
        const ServerAnswer answer = work();
        back.Post([done, answer] { *done = answer; });
    });
    const auto end = waiting.Until([&done] { return done->has_value(); },
                                   {.Hopeless = [this] { return stopped.has_value(); }});
    return end == Waiting::End::Done ? **done : ServerAnswer{ServerFault::Cancelled, {}};
}
