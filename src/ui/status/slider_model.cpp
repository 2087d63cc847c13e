#include "ui/status/slider_model.h"

#include <algorithm>

SliderModel SliderModel::OnTrack(int lowest, int highest, double trackLeft, double trackWidth,
                                 double handleWidth) {
    return {lowest, highest, std::max(1.0, trackWidth - handleWidth), trackLeft + handleWidth / 2,
            handleWidth};
}

double HandleLeft(const SliderModel& model, double value) {
    const double inside = std::clamp<double>(value, model.Lowest, model.Highest);
    const double ratio = (inside - model.Lowest) / (model.Highest - model.Lowest);
    return model.TrackLength * ratio + model.TrackOffset - model.HandleWidth / 2;
}

double ValueAt(const SliderModel& model, double handleLeft) {
    const double centre = handleLeft + model.HandleWidth / 2;
    const double ratio = (centre - model.TrackOffset) / model.TrackLength;
    return model.Lowest + ratio * (model.Highest - model.Lowest);
}

std::optional<double> MovedHandle(const SliderModel& model, double handleLeft, double mouseX) {
    const double left = handleLeft + mouseX - model.HandleWidth / 2;
    if (left < model.TrackStart() || left + model.HandleWidth > model.TrackEnd()) return {};
    return left;
}
