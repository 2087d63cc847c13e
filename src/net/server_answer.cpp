#include "net/server_answer.h"

#include <QMetaEnum>

QString NameOf(ServerFault fault) {
    const auto names = QMetaEnum::fromType<ServerFault>();
    return QString::fromLatin1(names.valueToKey(static_cast<int>(fault)));
}
