#include "net/picture_server.h"

#include "base/status_display.h"
#include "base/waiting.h"

namespace {

constexpr int lastShownSeconds = 30;

}  // namespace

PictureServer::PictureServer(const Surroundings& surroundings) : around(surroundings) {}

ServerAnswer PictureServer::Run(const std::function<ServerAnswer()>& operation) {
    cancelled = false;
    const ServerAnswer answer = operation();
    // What was given up tells nothing about the server.
    const bool givenUp = !answer.Fine() && (cancelled || around.Wait.Closing());
    return givenUp ? ServerAnswer{ServerFault::Cancelled, {}} : answer;
}

ServerAnswer PictureServer::Open() {
    return Run([this] { return DoOpen(); });
}

ServerAnswer PictureServer::SendFile(const QString& localPath, const QString& name) {
    return Run([&] { return DoSend(localPath, name); });
}

ServerAnswer PictureServer::RenameFile(const QString& from, const QString& to) {
    return Run([&] { return DoRename(from, to); });
}

ServerAnswer PictureServer::KeepFile(const QString& from, const QString& to) {
    return Run([&] { return DoKeep(from, to); });
}

ServerAnswer PictureServer::DeleteFile(const QString& name) {
    return Run([&] { return DoDelete(name); });
}

ServerAnswer PictureServer::LookAt(const QString& name, QByteArray& beginning) {
    return Run([&] { return DoLook(name, beginning); });
}

ServerAnswer PictureServer::DoKeep(const QString& from, const QString& to) {
    return DoRename(from, to);
}

std::optional<bool> PictureServer::ChangeMode(const QString& /*name*/, const QString& /*mode*/) {
    return false;
}

void PictureServer::Cancel() {
    cancelled = true;
    DoCancel();
}

std::optional<ServerFault> PictureServer::Await(const std::function<bool()>& done, int seconds,
                                                const std::function<bool()>& hopeless) {
    const auto showRest = [this, seconds](qint64 elapsed) {
        const int rest = seconds - static_cast<int>(elapsed / 1000);
        const bool shown = rest >= 0 && rest <= lastShownSeconds;
        around.Display.ShowTimeOutLabel(shown ? std::optional(rest) : std::nullopt);
    };
    const auto over = [this, &hopeless] {
        return cancelled || !Online() || (hopeless && hopeless());
    };
    const auto end = around.Wait.Until(
        done, {.LimitMilliseconds = seconds * 1000LL, .Hopeless = over, .EveryPass = showRest});
    around.Display.ShowTimeOutLabel(std::nullopt);
    if (end == Waiting::End::Done) return std::nullopt;
    if (cancelled || end == Waiting::End::Closing) return ServerFault::Cancelled;
    return end == Waiting::End::Limit ? ServerFault::NoAnswer : ServerFault::ConnectionLost;
}
