#include "platform/user_store.h"

#include "platform/user_section.h"

void UserStore::Write(const QString& application, const QString& section,
                      const QMap<QString, QString>& values) {
    const auto store = OpenUserSection(application, section);
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        store->setValue(value.key(), value.value());
}

QString UserStore::Read(const QString& application, const QString& section, const QString& key) {
    return OpenUserSection(application, section)->value(key).toString();
}
