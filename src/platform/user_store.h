#pragma once

#include <QMap>
#include <QString>

// Small values of this user that outlive the program, by application, section and key: the
// registry on Windows, a file below the user's configuration elsewhere.
namespace UserStore {

// Replaces the values of these keys. A store that cannot be written is no fault.
void Write(const QString& application, const QString& section,
           const QMap<QString, QString>& values);

// The value last written; empty when there is none.
[[nodiscard]] QString Read(const QString& application, const QString& section, const QString& key);

}  // namespace UserStore
