#include "core/schedule/hours.h"

#include "fuzzer.h"

const Fuzzer hours("hours", [](const QByteArray& bytes) {
    const QString text = QString::fromUtf8(bytes);
    std::optional<HoursFault> fault;
    const Hours read = Hours::Parse(text, fault);
    if (fault) {
        MUST(read.Is == Hours::Kind::Always);
        MUST(fault->At >= 0 && text.mid(fault->At, fault->What.size()) == fault->What);
    } else if (read.Is == Hours::Kind::Week) {
        const Hours again = Hours::Parse(read.Week.ToText(), fault);
        MUST(!fault && again.Is == read.Is && again.Week == read.Week);
    }
});
