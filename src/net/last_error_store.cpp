#include "net/last_error_store.h"

#include "platform/user_store.h"

namespace {

const QString Application = QStringLiteral("FTP Control 1.01");
const QString Section = QString(QChar(u'\0'));
const QString CodeKey = QStringLiteral("LastErrorCode");
const QString TextKey = QStringLiteral("LastErrorStr");

}  // namespace

void LastErrorStore::Write(int code, const QString& text) {
    UserStore::Write(Application, Section, {{CodeKey, QString::number(code)}, {TextKey, text}});
}

QString LastErrorStore::Code() {
    return UserStore::Read(Application, Section, CodeKey);
}

QString LastErrorStore::Text() {
    return UserStore::Read(Application, Section, TextKey);
}
