#include "platform/frame_rates.h"

#include <array>

namespace {

constexpr std::array usualRates{1.0, 2.0, 5.0, 7.5, 10.0, 15.0, 20.0, 24.0, 25.0, 30.0, 50.0, 60.0};
constexpr double leastOffered = 0.01;  // less is no rate, but a driver that knows no limit

}  // namespace

QList<double> RatesBetween(double lowest, double highest) {
    QList<double> rates;
    if (lowest >= leastOffered && lowest < highest) rates << lowest;
    for (const double usual : usualRates)
        if (usual > lowest && usual < highest) rates << usual;
    return rates << highest;
}
