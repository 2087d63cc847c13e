#include "platform/service_manager.h"

// Windows has no such thing for a program of a user.
ServiceManager ServiceManager::OfThisProcess() {
    return {};
}

void ServiceManager::Tell(const QByteArray& /*lines*/) const {}
