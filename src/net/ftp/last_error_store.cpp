#include "net/ftp/last_error_store.h"

#include "platform/user_section.h"

namespace {

const QString codeKey = QStringLiteral("LastErrorCode");
const QString textKey = QStringLiteral("LastErrorStr");

std::unique_ptr<QSettings> Open() {
    return OpenUserSection("FTP Control 1.01", QString(QChar(u'\0')));
}

}  // namespace

void LastErrorStore::Write(int code, const QString& text) {
    const auto store = Open();
    const bool known = store->value(codeKey).toString() == QString::number(code) &&
                       store->value(textKey).toString() == text && store->contains(textKey);
    // With each change a file is written, for each picture again and again.
    if (known) return;
    store->setValue(codeKey, QString::number(code));
    store->setValue(textKey, text);
}

QString LastErrorStore::Code() {
    return Open()->value(codeKey).toString();
}

QString LastErrorStore::Text() {
    return Open()->value(textKey).toString();
}
