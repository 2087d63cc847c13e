#include "platform/address_opener.h"

#include <QDesktopServices>

void AddressOpener::Open(const QUrl& address, const std::function<void()>& failed) {
    if (!QDesktopServices::openUrl(address)) failed();
}
