#pragma once

#include "base/profile_file.h"

#include <QColor>
#include <QPoint>
#include <QString>

// The layout file of a skin, "Position.ini": where each control lies, in twips. What is missing
// reads as 0: a control without an entry lies at the top left, invisible or black.
class SkinLayout {
  public:
    // Twips as pixels of the layout (not of the screen), rounded: 15 are one.
    [[nodiscard]] static constexpr int FromTwips(double twips) { return qRound(twips / 15); }

    // bytes: of the file; none are a layout without entries. scale: of all lengths.
    explicit SkinLayout(const QByteArray& bytes, double ownScale = 1)
        : file(ProfileReader::Of(bytes)), scale(ownScale) {}

    // Keys "Left" and "Top" of the section, in pixels.
    [[nodiscard]] QPoint Position(const QString& section) const;
    // A length of the file in pixels, rounded.
    [[nodiscard]] int Pixels(const QString& section, const QString& key) const;
    [[nodiscard]] int Number(const QString& section, const QString& key) const;
    [[nodiscard]] QString Text(const QString& section, const QString& key) const;
    // Whether the value is "1" and nothing else.
    [[nodiscard]] bool IsOne(const QString& section, const QString& key) const;
    // A colour written as red + 256 * green + 65536 * blue.
    [[nodiscard]] QColor Colour(const QString& section, const QString& key) const;

  private:
    ProfileReader file;
    double scale;
};
