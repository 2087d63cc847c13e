#include "ui/menu/opener.h"

#include <QDesktopServices>

bool SystemOpener::Open(const QUrl& address) {
    return QDesktopServices::openUrl(address);
}
