#pragma once

#include <QSize>
#include <QString>

// The fixed texts of the status window; they are the same in every language.
namespace StatusTexts {

// "JPG - Quality: 50 %".
[[nodiscard]] QString Quality(int percent);
// The time from one picture to the next, rounded to tenths of a second: "1 Pic. / 2.5 s".
[[nodiscard]] QString Interval(qint64 milliseconds);
// The same while it is being chosen: "Upload: 1 Pic. / 2.5 seconds".
[[nodiscard]] QString ChosenInterval(qint64 milliseconds);
// "Format: 640 x 480"; empty for an empty size (pixels).
[[nodiscard]] QString Format(const QSize& picture);
// What mode 0 to 5 draws on the picture; any other number is no overlay.
[[nodiscard]] QString Overlay(int mode);
// Hours, minutes and whole seconds: "00:12:45". A run of weeks has more than two digits of hours.
[[nodiscard]] QString RunningTime(qint64 milliseconds);
// "Time Out: 25 s".
[[nodiscard]] QString TimeOut(int seconds);

}  // namespace StatusTexts
