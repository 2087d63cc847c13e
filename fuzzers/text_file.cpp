#include "picture/overlay/text_file.h"

#include "fuzzer.h"

#include <algorithm>

const Fuzzer textFile("text_file", [](const QByteArray& bytes) {
    const QString text = LinesOfTextFile(bytes);
    const QStringList lines = text.split("\r\n");
    MUST(lines.size() <= 8 && (text.isEmpty() || !lines.last().isEmpty()));
    for (const QString& line : lines) {
        MUST(line.size() <= 255);
        MUST(std::ranges::none_of(line, [](QChar each) { return each < u' '; }));
    }
    MUST(text.isValidUtf16() || !bytes.isValidUtf8());
    if (text.isValidUtf16()) MUST(LinesOfTextFile("\xEF\xBB\xBF" + text.toUtf8()) == text);
    MUST(WithLinesInPlace("a\r\nTextFile\r\nb", text).startsWith("a\r\n"));
    MUST(WithLinesBelow("a\r\n\r\n", text) == (text.isEmpty() ? "a\r\n\r\n" : "a\r\n" + text));
});
