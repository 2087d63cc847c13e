#pragma once

#include "core/settings/settings.h"
#include "net/publishing/page_placing.h"

class Texts;

// The web page that these settings ask for. folders: where the program's files are. Its Html is
// empty where the page is missing among them.
[[nodiscard]] PagePlacing::Page PageOf(const Settings& settings, const Texts& words,
                                       const QStringList& folders);

// The question whether what is there is to be replaced.
[[nodiscard]] QString PageQuestion(const Texts& words, const QString& name, PageThere there);

// What is done at the moment.
[[nodiscard]] QString PageStepText(const Texts& words, PageStep step, int seconds);

// How it went, a sentence.
[[nodiscard]] QString PageText(const Texts& words, const ServerAccess& access,
                               const ServerAnswer& answer);
