#pragma once

#include <QByteArray>
#include <QString>

struct ServerAccess;

// A folder on the web.
struct WebPlace {
    bool Secure = true;
    // A name, or an address without brackets, with its zone as in "fe80::1%eth0"; empty: what was
    // given is none.
    QString Host = {};
    quint16 Port = 0;
    QByteArray Path = "/";  // begins and ends with a slash, percent-encoded

    // What the key "Server" names, without the folder: unencrypted where "http://" is written, or
    // where the way is http and nothing else is written.
    [[nodiscard]] static WebPlace Of(const ServerAccess& access);
    // An absolute address; the path is left as it is.
    [[nodiscard]] static WebPlace OfAddress(const QByteArray& address);

    [[nodiscard]] WebPlace Below(const QString& folder) const;
    [[nodiscard]] bool SameServer(const WebPlace& other) const;
    // As questions name it: with the port where that is not the usual one. A zone means something
    // on this machine only and is left out (RFC 6874), of an address, too.
    [[nodiscard]] QByteArray HostHeader() const;
    // path: from the root of the server
    [[nodiscard]] QByteArray Address(const QByteArray& path) const;
};

// As paths and questions carry it: all but letters, digits and "-._~" as %XX of UTF-8, slashes too
// unless they are kept.
[[nodiscard]] QByteArray PercentEncoded(const QString& text, const QByteArray& kept = {});
