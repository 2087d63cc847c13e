#include "platform/program_start.h"

#include "platform/windows/system.h"

#include <shellapi.h>

#include <array>
#include <cstdio>
#include <memory>

namespace {

bool LeadsSomewhere(DWORD which) {
    return GetFileType(GetStdHandle(which)) != FILE_TYPE_UNKNOWN;
}

void ToConsole(std::FILE* stream) {
    static_cast<void>(std::freopen("CONOUT$", "w", stream));
}

}  // namespace

// main's own are in the ANSI code page, which has no place for most of the world's names.
QStringList ProgramStart::Arguments(int /*argc*/, char** /*argv*/) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> texts(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    QStringList arguments;
    for (int i = 1; texts && i < count; ++i) arguments << QString::fromWCharArray(texts.get()[i]);
    return arguments;
}

bool ProgramStart::HasScreen() {
    return true;
}

// There is always one.
QByteArray ProgramStart::ScreenOrNone() {
    return "windows";
}

// With its platform "offscreen" Qt takes the fonts of one folder, which is empty by itself.
void ProgramStart::FindFonts() {
    constexpr const char* variable = "QT_QPA_FONTDIR";
    std::array<wchar_t, MAX_PATH> windows{};
    if (qEnvironmentVariableIsSet(variable) ||
        GetWindowsDirectoryW(windows.data(), static_cast<UINT>(windows.size())) == 0)
        return;
    qputenv(variable, (QString::fromWCharArray(windows.data()) + "\\Fonts").toLocal8Bit());
}

void ProgramStart::UseConsole() {
    const bool output = LeadsSomewhere(STD_OUTPUT_HANDLE);  // to a file or a pipe
    const bool error = LeadsSomewhere(STD_ERROR_HANDLE);
    if ((output && error) || !AttachConsole(ATTACH_PARENT_PROCESS)) return;
    if (!output) ToConsole(stdout);
    if (!error) ToConsole(stderr);
}

// They share one here.
void ProgramStart::ShareOneHeap() {}
