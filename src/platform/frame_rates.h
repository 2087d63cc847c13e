#pragma once

#include <QList>

// What to offer of a camera that makes any number of pictures a second between two: the usual rates
// and both ends, slower ones first.
[[nodiscard]] QList<double> RatesBetween(double lowest, double highest);
