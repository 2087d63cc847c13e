#include "platform/user_store.h"

#include <QSettings>

namespace {

class Section : public QSettings {
  public:
    Section(const QString& application, const QString& section)
        : QSettings(IniFormat, UserScope, "Stillpost", application) {
        setFallbacksEnabled(false);
        beginGroup(section);
    }
};

}  // namespace

void UserStore::Write(const QString& application, const QString& section,
                      const QMap<QString, QString>& values) {
    Section store(application, section);
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        store.setValue(value.key(), value.value());
}

QString UserStore::Read(const QString& application, const QString& section, const QString& key) {
    return Section(application, section).value(key).toString();
}
