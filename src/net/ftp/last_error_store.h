#pragma once

#include <QString>

// The last error of the FTP control, kept in the user's settings store so that it outlives the
// program. A store that cannot be written is no fault: the error is then forgotten.
namespace LastErrorStore {

// Replaces the stored code and text.
void Write(int code, const QString& text);

// The stored code as decimal text, and the stored text; empty when nothing was ever stored.
[[nodiscard]] QString Code();
[[nodiscard]] QString Text();

}  // namespace LastErrorStore
