#include "core/version.h"

QString ProgramVersion() {
    return QStringLiteral(STILLPOST_VERSION);
}
