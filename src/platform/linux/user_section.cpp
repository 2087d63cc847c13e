#include "platform/user_section.h"

std::unique_ptr<QSettings> OpenUserSection(const QString& application, const QString& section) {
    auto store = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                             "Stillpost", application);
    store->setFallbacksEnabled(false);
    store->beginGroup(section);
    return store;
}
