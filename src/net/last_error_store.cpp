#include "net/last_error_store.h"

#include "platform/user_section.h"

namespace {

const QString CodeKey = QStringLiteral("LastErrorCode");
const QString TextKey = QStringLiteral("LastErrorStr");

std::unique_ptr<QSettings> Open() {
    return OpenUserSection("FTP Control 1.01", QString(QChar(u'\0')));
}

}  // namespace

void LastErrorStore::Write(int code, const QString& text) {
    const auto store = Open();
    store->setValue(CodeKey, QString::number(code));
    store->setValue(TextKey, text);
}

QString LastErrorStore::Code() {
    return Open()->value(CodeKey).toString();
}

QString LastErrorStore::Text() {
    return Open()->value(TextKey).toString();
}
