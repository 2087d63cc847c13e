#include "ui/status/slider_values.h"

namespace {

constexpr int leastQuality = 20;
constexpr int mostQuality = 80;

constexpr int tenth = 100;  // milliseconds, like all that follow
constexpr int second = 1000;
constexpr int fiveSeconds = 5000;
constexpr int tenSeconds = 10'000;
constexpr int halfMinute = 30'000;
constexpr int fiveMinutes = 300'000;

int NearestInterval(int value) {
    if (value < (tenth + second) / 2) return tenth;
    if (value < (second + fiveSeconds) / 2) return second;
    return qRound(static_cast<double>(value) / fiveSeconds) * fiveSeconds;
}

// How far apart the values lie that the arrow keys choose.
int Fineness(int value) {
    if (value < second) return tenth;
    return value < tenSeconds ? second : fiveSeconds;
}

int Above(int value, int grid) {
    return (value / grid + 1) * grid;
}

int Below(int value, int grid) {
    return (value - 1) / grid * grid;
}

int StepInterval(int value, QAbstractSlider::SliderAction step) {
    switch (step) {
        case QAbstractSlider::SliderSingleStepSub:
            return Below(value, Fineness(value - 1));
        case QAbstractSlider::SliderSingleStepAdd:
            return Above(value, Fineness(value));
        case QAbstractSlider::SliderPageStepSub:
            return Below(value, halfMinute);
        case QAbstractSlider::SliderPageStepAdd:
            return Above(value, halfMinute);
        default:
            return step == QAbstractSlider::SliderToMinimum ? tenth : fiveMinutes;
    }
}

}  // namespace

const SliderValues QualityValues{leastQuality, mostQuality, [](int value) { return value; },
                                 nullptr};
const SliderValues IntervalValues{tenth, fiveMinutes, NearestInterval, StepInterval};
