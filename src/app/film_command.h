#pragma once

#include "core/film_range.h"
#include "core/program_folder.h"

// Makes the film that --film asks for, with the settings of the program folder, and prints how far
// it is. Returns the exit status. cancelled: asked often.
[[nodiscard]] int MakeFilmOf(const FilmRange& range, const ProgramFolder& folder,
                             const std::function<bool()>& cancelled);
