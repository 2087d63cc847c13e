#pragma once

#include "picture/overlay/date_time_form.h"
#include "picture/overlay/special_text.h"

#include <QColor>
#include <QMap>
#include <QString>
#include <QStringList>

// What is put on a picture. In all of these the number of a name is that of the settings file.
enum class OverlayMode { Date, Time, DateTimeText, SpecialText, PictureOnly, None };

// Where the text or the overlay picture stands.
enum class OverlayPlace { UpRight, UpLeft, UpMiddle, DownRight, DownLeft, DownMiddle, Center };

// Everything that decides what is put on a frame. Fields are named after their keys.
struct OverlaySettings : SpecialText {
    OverlayMode Overlay = OverlayMode::Date;
    DateForm Date = DateForm::System;
    TimeForm Time = TimeForm::System;
    OverlayPlace Position = OverlayPlace::UpRight;  // of the text
    QString Font;                                   // empty: whatever is usual
    double Size = 0;                                // points; 0: a part of the picture's height
    QColor Color = Qt::black;
    QColor BackColor = Qt::black;
    bool Transparent = false;  // no BackColor behind the text
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;

    QString TextFile;       // full path; empty: none
    int TextFileAge = 0;    // minutes; 0: any
    QString TextFileLines;  // what it says now

    bool OverKombi = false;               // the overlay picture and the text
    bool PictureEff = false;              // the pictures of the list in turn, not Overlayfile
    QString Overlayfile = "Overlay.bmp";  // name of a file in the overlay folder
    OverlayPlace PositionBild = OverlayPlace::UpRight;  // of the overlay picture
    QStringList PictureList;                            // names of files in the overlay folder
    int PictureUB = 0;            // pictures until the next of the list; 0: never
    bool PictureCapture = false;  // the overlay picture in place of the frame

    // What is written and makes no sense, as a sentence, by key. The field has a value that works.
    QMap<QString, QString> Faults;

    [[nodiscard]] bool WithText() const { return Overlay < OverlayMode::PictureOnly; }
    // The operator's own ones are on it.
    [[nodiscard]] bool WithLines() const {
        return Overlay == OverlayMode::DateTimeText || Overlay == OverlayMode::SpecialText;
    }
    [[nodiscard]] bool WithPicture() const {
        return Overlay == OverlayMode::PictureOnly || (OverKombi && WithText());
    }
};
