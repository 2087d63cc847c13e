#pragma once

class QFile;

// Whether this open file is known to be open nowhere else and to have no second name, so that to
// write over it changes nothing that anybody reads. False where the system cannot tell.
[[nodiscard]] bool OnlyUser(const QFile& file);
