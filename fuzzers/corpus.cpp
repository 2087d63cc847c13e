// Without libFuzzer, for the tests: runs one fuzzer with every file of its folder.
#include "fuzzer.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>

int main(int count, char** arguments) {
    const QGuiApplication application(count, arguments);
    const Fuzzer* const fuzzer = Fuzzer::Named(count > 1 ? arguments[1] : "");
    const QDir folder(count > 2 ? QString::fromLocal8Bit(arguments[2]) : QString());
    const QFileInfoList files = folder.entryInfoList(QDir::Files, QDir::Name);
    if (!fuzzer || files.isEmpty()) return 2;
    for (const QFileInfo& each : files) {
        QFile file(each.filePath());
        if (!file.open(QIODevice::ReadOnly)) return 2;
        // The one that fails is the last of the list.
        static_cast<void>(std::fprintf(stderr, "%s\n", qPrintable(each.fileName())));
        fuzzer->Run(file.readAll());
    }
    return 0;
}
