#include "net/ftp/last_error_store.h"

// In the place of the user's settings store, which takes a third of the time of an FTP session and
// is not to be written here.
namespace {

QString lastCode;
QString lastText;

}  // namespace

void LastErrorStore::Write(int code, const QString& text) {
    lastCode = QString::number(code);
    lastText = text;
}

QString LastErrorStore::Code() {
    return lastCode;
}

QString LastErrorStore::Text() {
    return lastText;
}
