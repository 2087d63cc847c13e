#pragma once

#include "core/report/report_gathering.h"

class Texts;

// The report as people read it. Headings are in the language in use; what is beneath them is as the
// system says it. Of users' names in paths "~" is left. home: this user's home folder.
[[nodiscard]] QString ReportText(const Texts& words, const QDateTime& when,
                                 const QList<ReportSection>& sections, const QString& home);
