#include "picture/overlay/text_overlay.h"

#include "picture/overlay/text_drawing.h"
#include "picture/overlay/text_file.h"
#include "picture/overlay/text_style.h"

#include <QFontDatabase>
#include <QFontInfo>

namespace {

// Without a file the word is one like any other.
QString InPlaceOfTheWord(const OverlaySettings& settings, const QString& text) {
    return settings.TextFile.isEmpty() ? text : WithLinesInPlace(text, settings.TextFileLines);
}

}  // namespace

void TextOverlay::BuildDateTime(const OverlaySettings& settings, const QDateTime& now) {
    // The form is kept, not the text: a picture with the time of another one is worse than one
    // whose time is written otherwise.
    ReportFault(settings, "Date");
    if (!settings.Faults.contains("Date")) dateForm = settings.Date;
    ReportFault(settings, "Time");
    if (!settings.Faults.contains("Time")) timeForm = settings.Time;
    DateText = FormatDate(dateForm, now.date(), locale);
    TimeText = FormatTime(timeForm, now.time(), locale);
}

void TextOverlay::BuildOverlayText(const OverlaySettings& settings, const QDateTime& now) {
    BuildDateTime(settings, now);
    constexpr QChar blank = u' ';
    const QString dateTime = DateText + ", " + TimeText;
    switch (settings.Overlay) {
        case OverlayMode::Date:
            OverlayText = blank + DateText + blank;
            break;
        case OverlayMode::Time:
            OverlayText = blank + TimeText + blank;
            break;
        case OverlayMode::DateTimeText:
            OverlayText = blank + dateTime + "  " +
                          InPlaceOfTheWord(settings, NextAppendix(settings, turns, dateTime)) +
                          blank;
            break;
        case OverlayMode::SpecialText:
            OverlayText = InPlaceOfTheWord(settings, NextSpecialText(settings, turns, dateTime));
            break;
        case OverlayMode::PictureOnly:
        case OverlayMode::None:
            OverlayText.clear();
    }
    if (settings.WithLines() && !NamesTextFile(settings))
        OverlayText = WithLinesBelow(OverlayText, settings.TextFileLines);
}

QRect TextOverlay::DrawOverlayText(QImage& picture, const OverlaySettings& settings) {
    if (OverlayText.isEmpty() || picture.isNull()) return {};
    const QFont font = MakeFont(settings, picture.height());
    // Without any, boxes would stand on the picture.
    const bool anyFont = !QFontInfo(font).family().isEmpty();
    Report({}, anyFont ? QString() : "no font is installed");
    if (!anyFont) return {};
    for (const QString& key : QStringList{"Color", "BackColor", "Position"})
        ReportFault(settings, key);
    TextSurface surface{picture, font, settings.Color};
    if (!settings.Transparent) {
        surface.Background = settings.BackColor;
        surface.Color = Readable(settings.Color, settings.BackColor);
    }
    return PrintTextAligned(surface, OverlayText, CellOf(settings.Position), false);
}

QFont TextOverlay::MakeFont(const OverlaySettings& settings, int pictureHeight) {
    ReportFault(settings, "Size");
    const QString& family = settings.Font;
    QFont font = PictureFont(family, FontPixels(settings.Size, pictureHeight));
    font.setBold(settings.Bold);
    font.setItalic(settings.Italic);
    font.setUnderline(settings.Underline);
    const QString used = QFontInfo(font).family();
    const bool there = family.isEmpty() || used.isEmpty() || QFontDatabase::hasFamily(family);
    Report("Font",
           there ? QString() : QString("font %1 is not installed, %2 is used").arg(family, used));
    return font;
}

void TextOverlay::ReportFault(const OverlaySettings& settings, const QString& key) {
    Report(key, settings.Faults.value(key));
}

void TextOverlay::Report(const QString& key, const QString& fault) {
    if (reported.value(key) == fault) return;
    reported.insert(key, fault);
    if (!fault.isEmpty()) display->ShowStatus("Overlay text: " + fault);
}
