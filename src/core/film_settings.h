#pragma once

#include "core/settings/settings.h"
#include "film/film_maker.h"

class Texts;

// What the settings say about films; the pictures' time and the file are the caller's. locale: of
// the archive's names.
[[nodiscard]] FilmOrder FilmOrderOf(const Settings& settings, const QLocale& locale);

// How it went, a sentence: the pictures of the film and the broken ones, or what went wrong.
[[nodiscard]] QString FilmText(const Texts& words, const FilmOrder& order,
                               const FilmResult& result);

// "1:05" for so many milliseconds, in whole seconds; from an hour on "1:00:05".
[[nodiscard]] QString DurationText(qint64 milliseconds);
