#pragma once

#include <algorithm>
#include <array>
#include <cstdlib>

// JPEG qualities, per cent, of the choice `Quali`: best, medium, low.
constexpr std::array QualityChoices{90, 60, 30};

// The place in QualityChoices of the one that comes nearest to a quality.
inline int NearestQualityChoice(int percent) {
    const auto nearest = std::ranges::min_element(
        QualityChoices, {}, [percent](int choice) { return std::abs(choice - percent); });
    return static_cast<int>(nearest - QualityChoices.begin());
}
