#include "ui/skin/skin_layout.h"

#include <algorithm>

QString SkinLayout::Text(const QString& section, const QString& key) const {
    return file.Value(section, key);
}

int SkinLayout::Number(const QString& section, const QString& key) const {
    return ValLong(Text(section, key));
}

int SkinLayout::Pixels(const QString& section, const QString& key) const {
    // What no window system can place lies out of sight all the same.
    constexpr double most = 16000 * 15;
    return FromTwips(scale * std::clamp(Val(Text(section, key)), -most, most));
}

QPoint SkinLayout::Position(const QString& section) const {
    return {Pixels(section, "Left"), Pixels(section, "Top")};
}

bool SkinLayout::IsOne(const QString& section, const QString& key) const {
    return Text(section, key) == "1";
}

QColor SkinLayout::Colour(const QString& section, const QString& key) const {
    const auto bits = static_cast<unsigned>(Number(section, key));
    constexpr unsigned byte = 0xFF;
    return QColor::fromRgb(static_cast<int>(bits & byte), static_cast<int>(bits >> 8 & byte),
                           static_cast<int>(bits >> 16 & byte));
}
