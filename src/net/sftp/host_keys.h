#pragma once

#include <QByteArray>
#include <QString>

// The keys by which SSH servers prove who they are, as OpenSSH writes them down: a line for each,
// "server keytype base64". The one that the operator has accepted is kept in the program folder.
namespace HostKeys {

// The file, in the program folder and wherever OpenSSH is to write a key.
inline const QString FileName = QStringLiteral("known_hosts");

[[nodiscard]] QString PathIn(const QString& folder);

// "SHA256:" and the base64 of the first line's key, as OpenSSH shows it; empty when there is none.
[[nodiscard]] QString FingerprintOf(const QByteArray& lines);

// Whether an operator has accepted a host key at all: what else stands there belongs to other ways.
[[nodiscard]] bool IsFingerprint(const QString& text);
[[nodiscard]] bool IsSame(const QString& fingerprint, const QString& other);

// Leaves in the file of this folder only lines of that key.
void KeepOnly(const QString& fingerprint, const QString& folder);

// Writes them in place of the file in this folder. False: it cannot be written.
[[nodiscard]] bool Write(const QByteArray& lines, const QString& folder);

}  // namespace HostKeys
