#pragma once

#include <QColor>
#include <QPoint>
#include <QString>

// The layout file of a skin, "Position.ini": where each control lies, in twips. What is missing
// reads as 0: a control without an entry lies at the top left, invisible or black. Every value is
// read from the file at the moment it is asked for.
class SkinLayout {
  public:
    // Twips as pixels of the layout (not of the screen), rounded: 15 are one.
    [[nodiscard]] static constexpr int FromTwips(double twips) { return qRound(twips / 15); }

    // file: full path; empty or missing is a layout without entries. scale: of all lengths.
    explicit SkinLayout(const QString& ownFile, double ownScale = 1)
        : file(ownFile), scale(ownScale) {}

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
    QString file;
    double scale;
};
