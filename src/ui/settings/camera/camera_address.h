#pragma once

#include <QString>

// The address of a camera in the parts that a person fills in. Name and password lie inside the
// address of a network camera, with the characters that mean something there written as %XX. Where
// a person has written it as a whole, they may be there plainly: in NAME:PASSWORD@HOST the password
// then reaches to the last @ that a host follows, unless the address makes sense as it is.
struct CameraAddress {
    QString Place;  // the address without them
    QString User;
    QString Password;

    bool operator==(const CameraAddress&) const = default;

    [[nodiscard]] static CameraAddress Split(const QString& address);
    [[nodiscard]] QString Joined() const;
    [[nodiscard]] bool HasAccess() const { return !User.isEmpty() || !Password.isEmpty(); }

    // The address with everything in name and password encoded that has to be, and is not yet.
    [[nodiscard]] static QString Encoded(const QString& address);

    // The address with everything in it that may be a password replaced by dots.
    [[nodiscard]] static QString WithoutSecrets(const QString& address);
};
