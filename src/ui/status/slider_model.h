#pragma once

#include <optional>

// The linear model of a picture slider: a value on a track, and a handle whose centre stands on it.
// Places and lengths are in pixels of the slider, values in whatever the slider sets.
struct SliderModel {
    int Lowest = 0;
    int Highest = 0;
    double TrackLength = 0;  // from where the centre stands at the lowest value to the highest
    double TrackOffset = 0;  // where it stands at the lowest
    double HandleWidth = 0;

    // The model of a handle that stays on its track with its whole width.
    [[nodiscard]] static SliderModel OnTrack(int lowest, int highest, double trackLeft,
                                             double trackWidth, double handleWidth);

    [[nodiscard]] double TrackStart() const { return TrackOffset - HandleWidth / 2; }
    [[nodiscard]] double TrackEnd() const { return TrackOffset + TrackLength + HandleWidth / 2; }
};

// Where the left edge of the handle lies for a value. A value beyond an end gives that end.
[[nodiscard]] double HandleLeft(const SliderModel& model, double value);

// The value on which the centre of the handle stands; the inverse of HandleLeft.
[[nodiscard]] double ValueAt(const SliderModel& model, double handleLeft);

// The new left edge of a handle that the mouse holds at mouseX from the handle's left edge: its
// centre follows the mouse. Nothing when the handle would leave the track: it stays where it is,
// and does not go to the end either.
[[nodiscard]] std::optional<double> MovedHandle(const SliderModel& model, double handleLeft,
                                                double mouseX);
