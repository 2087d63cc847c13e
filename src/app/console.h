#pragma once

#include <QString>

#include <cstdio>

// Text as it is on standard output.
inline void Print(const QString& text) {
    std::fputs(qPrintable(text), stdout);
    std::fflush(stdout);
}

inline void PrintLine(const QString& line) {
    Print(line + '\n');
}

inline void PrintError(const QString& line) {
    std::fprintf(stderr, "%s\n", qPrintable(line));
    std::fflush(stderr);
}
