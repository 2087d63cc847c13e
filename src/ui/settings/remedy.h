#pragma once

#include "core/trouble.h"

#include <optional>

class Texts;

// Where the operator puts a trouble right.
struct Remedy {
    enum class Window { Ftp, Camera };

    Window In = Window::Ftp;
    QString Field = {};    // the name of the control, which is that of its setting or text
    QString Trouble = {};  // "Password refused", in the language in use
    QString Opens = {};    // "FTP settings..."

    // For a line: "Password refused - FTP settings...".
    [[nodiscard]] QString Offer() const { return Trouble + " - " + Opens; }

    // Nothing where nothing can be set that helps, or nothing is wrong.
    [[nodiscard]] static std::optional<Remedy> For(const std::optional<::Trouble>& trouble,
                                                   const Texts& texts);
};
