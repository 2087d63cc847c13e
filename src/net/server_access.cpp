#include "net/server_access.h"

#include <QStringList>

namespace {

// In the order of the protocols.
const QStringList& Settings() {
    static const QStringList words{"ftp", "ftps", "ftpsi", "sftp", "http", "https", "s3"};
    return words;
}

}  // namespace

Protocol ProtocolOf(const QString& setting) {
    if (setting.isEmpty()) return Protocol::Ftp;
    const qsizetype index = Settings().indexOf(setting);
    return index < 0 ? Protocol::Unknown : static_cast<Protocol>(index);
}

QString SettingOf(Protocol way) {
    return Settings().value(static_cast<qsizetype>(way));
}

bool IsEncrypted(Protocol way) {
    return way == Protocol::Ftps || way == Protocol::Ftpsi || way == Protocol::Sftp ||
           way == Protocol::Https;
}

bool SpeaksFtp(Protocol way) {
    return way == Protocol::Ftp || way == Protocol::Ftps || way == Protocol::Ftpsi;
}
