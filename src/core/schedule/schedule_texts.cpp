#include "core/schedule/schedule_texts.h"

#include "core/schedule/schedule.h"
#include "texts/texts.h"

namespace {

const QString section = "Schedule";

QString NameOf(HoursFault::Kind kind) {
    switch (kind) {
        case HoursFault::Kind::UnknownDay:
            return "UnknownDay";
        case HoursFault::Kind::TwoMeanings:
            return "TwoMeanings";
        case HoursFault::Kind::NoTime:
            return "NoTime";
        case HoursFault::Kind::WrongTime:
            return "WrongTime";
        case HoursFault::Kind::NoRange:
            return "NoRange";
        case HoursFault::Kind::NoSemicolon:
            return "NoSemicolon";
        case HoursFault::Kind::NoPlace:
            break;
    }
    return "NoPlace";
}

}  // namespace

QString FaultText(const Texts& texts, const HoursFault& fault) {
    // What is written comes last: it must not be searched for places. Not every text has all.
    QString text = texts.Get(section, NameOf(fault.Is));
    return text.replace("%1", QString::number(fault.At + 1)).replace("%2", fault.What);
}

QString FaultText(const Texts& texts, const Schedule& hours) {
    if (!hours.Fault()) return {};
    return FaultText(texts, *hours.Fault()) + " " + texts.Get(section, "AlwaysThen");
}

QString OutsideText(const Texts& texts, const Schedule& hours, const QDateTime& now) {
    const auto next = hours.NextChange(now);
    if (!next) return texts.Get(section, "Outside");
    return texts.Get(section, "OutsideUntil").arg(WhenText(texts, now, *next));
}

QString WhenText(const Texts& texts, const QDateTime& now, const QDateTime& when) {
    constexpr int week = 7;
    const qint64 days = now.date().daysTo(when.date());
    if (days == 0) return when.toString("HH:mm");
    if (days < 0 || days >= week) return when.toString("yyyy-MM-dd HH:mm");
    const QString day = texts.Get(section, "Day" + QString::number(when.date().dayOfWeek()));
    return day + when.toString(" HH:mm");
}

QString OfflineShownText(const Texts& texts, const QString& why) {
    return texts.Get(section, "OfflineShown").arg(why);
}

QString OfflineUnwrittenText(const Texts& texts) {
    return texts.Get(section, "OfflineUnwritten");
}
