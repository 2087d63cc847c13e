#pragma once

#include <QUrl>

#include <functional>

namespace AddressOpener {

// Opens a page or a file with the program that the system has for it. failed: called when it turns
// out that it cannot, at once or some seconds later; kept until then.
void Open(const QUrl& address, const std::function<void()>& failed);

}  // namespace AddressOpener
