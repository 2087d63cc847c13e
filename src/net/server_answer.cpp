#include "net/server_answer.h"

#include <QMetaEnum>

namespace {

template <class Enum>
QString KeyOf(Enum value) {
    const auto names = QMetaEnum::fromType<Enum>();
    return QString::fromLatin1(names.valueToKey(static_cast<int>(value)));
}

}  // namespace

bool RefusesToDelete(ServerFault fault) {
    return fault == ServerFault::DeleteRefused || fault == ServerFault::Forbidden;
}

QString NameOf(ServerFault fault) {
    return KeyOf(fault);
}

QString NameOf(ServerRemark remark) {
    return KeyOf(remark);
}
