#include "net/web/http_status.h"

#include "net/web/http_answer.h"

namespace {

// The server does not do this at all.
ServerFault Unable(HttpStep step) {
    switch (step) {
        case HttpStep::Rename:
            return ServerFault::RenameRefused;
        case HttpStep::Copy:
            return ServerFault::NoCopies;
        case HttpStep::Delete:
            return ServerFault::DeleteRefused;
        default:
            return ServerFault::PutNotAllowed;
    }
}

ServerFault Missing(HttpStep step) {
    const bool wantsFolder = step == HttpStep::Open || step == HttpStep::Send;
    return wantsFolder ? ServerFault::FolderMissing : ServerFault::FileMissing;
}

ServerFault FaultOf(int status, HttpStep step) {
    switch (status) {
        case 401:
            return ServerFault::LoginRefused;
        case 403:
            return ServerFault::Forbidden;
        case 404:
        case 410:
            return Missing(step);
        case 405:
        case 501:
            return Unable(step);
        case 409:
            return ServerFault::FolderMissing;
        case 412:
            return ServerFault::ReplaceRefused;
        case 413:
            return ServerFault::TooLarge;
        case 423:
            return ServerFault::Locked;
        case 507:
            return ServerFault::NoRoom;
        default:
            return ServerFault::ServerRefused;
    }
}

}  // namespace

ServerAnswer JudgeStatus(const HttpAnswer& answer, HttpStep step) {
    constexpr int someFailed = 207;  // of several files, where there is only one
    const bool asked = step == HttpStep::Open;
    if (answer.Good() && (asked || answer.Status != someFailed)) return {};
    return {FaultOf(answer.Status, step), answer.Line()};
}
