#include "platform/program_start.h"

#include <malloc.h>

QStringList ProgramStart::Arguments(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

bool ProgramStart::HasScreen() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_SOCKET");
}

QByteArray ProgramStart::ScreenOrNone() {
    const bool wayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    return wayland ? "wayland;xcb;offscreen" : "xcb;offscreen";
}

// Qt asks fontconfig.
void ProgramStart::FindFonts() {}

// A program has the console that it was started from.
void ProgramStart::UseConsole() {}

void ProgramStart::ShareOneHeap() {
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
#endif
}
