#include "platform/user_section.h"

// HKEY_CURRENT_USER\Software\Stillpost\APPLICATION\SECTION.
std::unique_ptr<QSettings> OpenUserSection(const QString& application, const QString& section) {
    auto store = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                             "Stillpost", application);
    store->setFallbacksEnabled(false);
    // A name in the registry ends at a NUL. What is left of a section that is nothing but one is
    // the application's own key.
    const QString name = section.left(section.indexOf(QChar(u'\0')));
    if (!name.isEmpty()) store->beginGroup(name);
    return store;
}
