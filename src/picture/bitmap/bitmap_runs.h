#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>

#include <optional>

// Decodes the run lengths of a bitmap file, `bits` (4 or 8) wide, into rows of one byte a pixel,
// padded to 4 bytes, in the order of the file. Pixels that are skipped have index 0. Nothing when
// the runs end before the picture does.
[[nodiscard]] std::optional<QByteArray> DecodeRuns(QByteArrayView coded, int bits, QSize size);
