#include "platform/user_store.h"

#include <QSettings>

namespace {

// HKEY_CURRENT_USER\Software\Stillpost\APPLICATION\SECTION.
class Section : public QSettings {
  public:
    Section(const QString& application, const QString& section)
        : QSettings(NativeFormat, UserScope, "Stillpost", application) {
        setFallbacksEnabled(false);
        // A name in the registry ends at a NUL. What is left of a section that is nothing but one
        // is the application's own key.
        const QString name = section.left(section.indexOf(QChar(u'\0')));
        if (!name.isEmpty()) beginGroup(name);
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
