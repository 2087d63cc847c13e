#pragma once

#include <QString>

// The address of a camera in the parts that a person fills in. Name and password lie inside the
// address of a network camera, with the characters that mean something there written as %XX.
struct CameraAddress {
    QString Place;  // the address without them
    QString User;
    QString Password;

    bool operator==(const CameraAddress&) const = default;

    [[nodiscard]] static CameraAddress Split(const QString& address);
    [[nodiscard]] QString Joined() const;

    // The address with everything in it that may be a password replaced by dots.
    [[nodiscard]] static QString WithoutSecrets(const QString& address);
};
