// What libFuzzer calls.
#include "fuzzer.h"

#include <QGuiApplication>

#include <cstddef>
#include <cstdint>

// NOLINTBEGIN(misc-unused-parameters): libFuzzer names these.
extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_NO_GLIB", "1");  // whose event loop is slower
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    static const QGuiApplication application(*count, *arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    Fuzzer::Only().Run(
        QByteArray(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    return 0;
}
// NOLINTEND(misc-unused-parameters)
