#pragma once

#include <QString>

class QDateTime;
class Schedule;
struct HoursFault;
class Texts;

// What windows and the status say of the hours, in the language in use.

// Why hours cannot be read.
[[nodiscard]] QString FaultText(const Texts& texts, const HoursFault& fault);
// The same of those of the settings, and what follows from it; empty where they can be read.
[[nodiscard]] QString FaultText(const Texts& texts, const Schedule& hours);
// "Outside the hours, next picture 06:00".
[[nodiscard]] QString OutsideText(const Texts& texts, const Schedule& hours, const QDateTime& now);
// A moment to come: "06:00" of today, "Mo 06:00" of the next days, else with its date.
[[nodiscard]] QString WhenText(const Texts& texts, const QDateTime& now, const QDateTime& when);
// The reason why the camera gives none, and that the offline picture stands in for it.
[[nodiscard]] QString OfflineShownText(const Texts& texts, const QString& why);
[[nodiscard]] QString OfflineUnwrittenText(const Texts& texts);
