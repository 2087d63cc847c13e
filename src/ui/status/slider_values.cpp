#include "ui/status/slider_values.h"

#include <cmath>

namespace {

constexpr int leastQuality = 20;
constexpr int mostQuality = 80;
constexpr int qualityPage = 10;

constexpr int tenth = 100;  // milliseconds, like all that follow
constexpr int second = 1000;
constexpr int fiveSeconds = 5000;
constexpr int tenSeconds = 10'000;
constexpr int halfMinute = 30'000;
constexpr int fiveMinutes = 300'000;

int NearestQuality(double value) {
    return static_cast<int>(std::lround(value));
}

int StepQuality(int value, SliderStep step) {
    switch (step) {
        case SliderStep::Down:
            return value - 1;
        case SliderStep::Up:
            return value + 1;
        case SliderStep::PageDown:
            return value - qualityPage;
        case SliderStep::PageUp:
            return value + qualityPage;
        case SliderStep::Lowest:
            return leastQuality;
        case SliderStep::Highest:
            break;
    }
    return mostQuality;
}

int NearestInterval(double value) {
    constexpr double half = 0.5;
    if (value < (tenth + second) * half) return tenth;
    if (value < (second + fiveSeconds) * half) return second;
    return static_cast<int>(std::lround(value / fiveSeconds)) * fiveSeconds;
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

int StepInterval(int value, SliderStep step) {
    switch (step) {
        case SliderStep::Down:
            return Below(value, Fineness(value - 1));
        case SliderStep::Up:
            return Above(value, Fineness(value));
        case SliderStep::PageDown:
            return Below(value, halfMinute);
        case SliderStep::PageUp:
            return Above(value, halfMinute);
        case SliderStep::Lowest:
            return tenth;
        case SliderStep::Highest:
            break;
    }
    return fiveMinutes;
}

}  // namespace

const SliderValues QualityValues{leastQuality, mostQuality, NearestQuality, StepQuality};
const SliderValues IntervalValues{tenth, fiveMinutes, NearestInterval, StepInterval};
