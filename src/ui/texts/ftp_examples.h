#pragma once

#include "texts/texts.h"

// The fields of the FTP settings that begin with an example of the language in use.
struct FtpExamples {
    QString Server;
    QString Path;
    QString User;

    bool operator==(const FtpExamples&) const = default;
};

// What an operator who has typed nothing sees.
[[nodiscard]] FtpExamples FtpExamplesOf(Texts::Language language);

// The fields after a change to that language: an example of another language gives way to the one
// of this language, anything else stays. A few French examples stay in every language.
[[nodiscard]] FtpExamples WithExamplesOf(Texts::Language language, const FtpExamples& fields);
