#include "net/last_error_store.h"

#include <QSettings>

namespace {

// The section's name is a single NUL character. The INI form stores it on every system; the
// registry would cut it off.
class Section : public QSettings {
  public:
    Section() : QSettings(IniFormat, UserScope, "Stillpost", "FTP Control 1.01") {
        setFallbacksEnabled(false);
        beginGroup(QString(QChar(u'\0')));
    }
};

const QString CodeKey = QStringLiteral("LastErrorCode");
const QString TextKey = QStringLiteral("LastErrorStr");

}  // namespace

void LastErrorStore::Write(int code, const QString& text) {
    Section section;
    section.setValue(CodeKey, QString::number(code));
    section.setValue(TextKey, text);
}

QString LastErrorStore::Code() {
    return Section().value(CodeKey).toString();
}

QString LastErrorStore::Text() {
    return Section().value(TextKey).toString();
}
