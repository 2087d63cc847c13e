#pragma once

#include <QStringList>

// What the system hands a program when it starts it.
namespace ProgramStart {

// The arguments as they were typed, whatever characters are in them, without the program's own
// name. argc, argv: those of main.
[[nodiscard]] QStringList Arguments(int argc, char** argv);

// Whether there is a screen that windows could be shown on, as far as the program's start tells.
[[nodiscard]] bool HasScreen();

// For Qt (QT_QPA_PLATFORM): the screen where it can be opened, else none.
[[nodiscard]] QByteArray ScreenOrNone();

// Shows Qt the system's fonts where it does not find them without a screen. Before there is an
// application.
void FindFonts();

// Lets standard output and standard error reach the console that the program was started from,
// where a program with windows has to ask for it.
void UseConsole();

// Has all threads take their memory from one heap, where each would get one of its own: every heap
// keeps pages that are all but empty, which add up over months. Before there are threads.
void ShareOneHeap();

}  // namespace ProgramStart
