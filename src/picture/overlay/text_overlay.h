#pragma once

#include "base/status_display.h"
#include "picture/overlay/overlay_settings.h"

#include <QDateTime>
#include <QFont>
#include <QImage>
#include <QLocale>

// The text of the pictures: date, time and the operator's own lines. A setting that makes no sense
// never costs the picture: a value that works takes its place, and the status says so once.
class TextOverlay {
  public:
    // display: outlives the overlay. locale: its language.
    TextOverlay(StatusDisplay& ownDisplay, const QLocale& ownLocale)
        : display(&ownDisplay), locale(ownLocale) {}

    // Fills DateText and TimeText.
    void BuildDateTime(const OverlaySettings& settings, const QDateTime& now);

    // Fills DateText, TimeText and OverlayText. To be called once a picture: the rows of the text
    // take turns with the calls.
    void BuildOverlayText(const OverlaySettings& settings, const QDateTime& now);

    // Draws OverlayText on the picture. Needs a QGuiApplication for the fonts. Returns the part
    // outside of which nothing was drawn.
    QRect DrawOverlayText(QImage& picture, const OverlaySettings& settings);

    QString DateText;
    QString TimeText;
    QString OverlayText;

  private:
    [[nodiscard]] QFont MakeFont(const OverlaySettings& settings, int pictureHeight);
    void ReportFault(const OverlaySettings& settings, const QString& key);
    void Report(const QString& key, const QString& fault);

    StatusDisplay* display;
    QLocale locale;
    DateForm dateForm = DateForm::System;  // the last one that there is
    TimeForm timeForm = TimeForm::System;
    RowTurns turns;
    QMap<QString, QString> reported;  // faults that stand, by the key that causes them
};
