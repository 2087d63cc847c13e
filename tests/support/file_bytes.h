#pragma once

#include <QFile>
#include <QString>

// Makes the file anew with these bytes; false when that fails.
[[nodiscard]] inline bool WriteBytes(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    file.remove();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// All bytes of the file; none when it cannot be read.
[[nodiscard]] inline QByteArray ReadBytes(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
