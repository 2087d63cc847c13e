#pragma once

#include "core/report/report_gathering.h"

class Texts;
struct Platform;

// What a report is made of.
struct ReportSources {
    const Platform& System;
    const Texts& Words;  // for the headings
    QString Folder;      // the program folder
};

// On the user-interface thread, which the screens are asked on.
[[nodiscard]] QList<ReportPart> ReportParts(const ReportSources& sources);
