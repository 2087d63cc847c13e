#pragma once

#include <QAbstractSlider>

// What a slider sets: its range, and which of the values in it can be chosen.
struct SliderValues {
    int Lowest;
    int Highest;
    // The choosable value nearest to where the mouse has put the handle.
    int (*Nearest)(int value);
    // The value that a step leads to from another one; it may lie beyond the range. None: steps of
    // one, pages of ten.
    int (*Step)(int value, QAbstractSlider::SliderAction step);
};

// JPEG quality, 20 to 80 per cent.
extern const SliderValues QualityValues;

// Milliseconds from one picture to the next, 100 to 300000. A pixel of the track is more than a
// second, so the mouse chooses among 0.1 s, 1 s and all multiples of 5 s, of which each can be
// hit. The arrow keys choose more finely: tenths of a second up to 1 s, whole seconds up to 10 s,
// then five seconds; Page keys by half a minute.
extern const SliderValues IntervalValues;
