#include "ui/status/status_texts.h"

#include <array>

namespace {

QString Seconds(qint64 milliseconds) {
    constexpr qint64 tenth = 100;
    const qint64 tenths = (milliseconds + tenth / 2) / tenth;
    return QString::number(tenths / 10) + u'.' + QString::number(tenths % 10);
}

QString TwoDigits(qint64 number) {
    return QString::number(number).rightJustified(2, u'0');
}

}  // namespace

QString StatusTexts::Quality(int percent) {
    return "JPG - Quality: " + QString::number(percent) + " %";
}

QString StatusTexts::Interval(qint64 milliseconds) {
    return "1 Pic. / " + Seconds(milliseconds) + " s";
}

QString StatusTexts::ChosenInterval(qint64 milliseconds) {
    return "Upload: 1 Pic. / " + Seconds(milliseconds) + " seconds";
}

QString StatusTexts::Format(const QSize& picture) {
    if (picture.isEmpty()) return {};
    return "Format: " + QString::number(picture.width()) + " x " +
           QString::number(picture.height());
}

QString StatusTexts::Overlay(int mode) {
    static const std::array names{QStringLiteral("Date"),
                                  QStringLiteral("Time"),
                                  QStringLiteral("Date, Time, Text"),
                                  QStringLiteral("special Text"),
                                  QStringLiteral("Picture"),
                                  QStringLiteral("No Overlay")};
    const bool known = mode >= 0 && mode < static_cast<int>(names.size());
    return known ? names.at(static_cast<std::size_t>(mode)) : names.back();
}

QString StatusTexts::RunningTime(qint64 milliseconds) {
    const qint64 seconds = milliseconds / 1000;
    return TwoDigits(seconds / 3600) + u':' + TwoDigits(seconds / 60 % 60) + u':' +
           TwoDigits(seconds % 60);
}

QString StatusTexts::TimeOut(int seconds) {
    return "Time Out: " + QString::number(seconds) + " s";
}
