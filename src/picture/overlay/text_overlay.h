#pragma once

#include "base/status_display.h"
#include "picture/overlay/picture_state.h"
#include "picture/overlay/special_text.h"
#include "picture/overlay/text_drawing.h"

#include <QDateTime>
#include <QMap>

// The text of the pictures: date, time and the operator's own lines, as the settings say at the
// moment of each picture. A setting that makes no sense never costs the picture: a value that works
// takes its place, and the status says so once.
class TextOverlay {
  public:
    // Both must outlive the overlay.
    TextOverlay(PictureState& state, StatusDisplay& display);

    // Fills DateText and TimeText from the settings Date and Time in the language of Locale.
    void BuildDateTime(const QDateTime& now);

    // Fills DateText, TimeText and OverlayText for an overlay mode (0 to 5; from 4 on there is no
    // text). To be called once a picture: the rows of the text take turns with the calls.
    void BuildOverlayText(int mode, const QDateTime& now);

    // Draws OverlayText on Picture2 in the font, colours and place of the settings. Needs a
    // QGuiApplication for the fonts.
    void DrawOverlayText();

  private:
    [[nodiscard]] QString Setting(const QString& key) const;
    [[nodiscard]] bool Flag(const QString& key) const;
    [[nodiscard]] SpecialText ReadSpecialText() const;
    [[nodiscard]] QFont ReadFont();
    void ReadColors(TextSurface& surface);
    [[nodiscard]] QColor ReadColor(const QString& key, const QColor& otherwise);
    void Report(const QString& key, bool fine, const QString& fault);

    PictureState& state;
    StatusDisplay& display;
    QString dateIndex;  // the last one that there is a format for
    QString timeIndex;
    RowTurns turns;
    QMap<QString, QString> reported;  // faults that stand, by the key that causes them
};
