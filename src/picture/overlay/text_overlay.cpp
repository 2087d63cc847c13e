#include "picture/overlay/text_overlay.h"

#include "base/profile_file.h"
#include "picture/overlay/date_time_form.h"
#include "picture/overlay/text_drawing.h"
#include "picture/overlay/text_style.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>
#include <limits>

namespace {

const QString TextSection = QStringLiteral("Text");

}  // namespace

TextOverlay::TextOverlay(PictureState& pictureState, StatusDisplay& statusDisplay)
    : state(pictureState), display(statusDisplay) {}

void TextOverlay::BuildDateTime(const QDateTime& now) {
    // The form is kept, not the text: a picture with the time of another one is worse than one
    // whose time is written otherwise.
    const QString date = Setting(QStringLiteral("Date"));
    const bool dateForm = FormatDate(date, now.date(), state.Locale).has_value();
    if (dateForm) dateIndex = date;
    Report(QStringLiteral("Date"), dateForm, QStringLiteral("there is no date format ") + date);
    state.DateText = FormatDate(dateIndex, now.date(), state.Locale).value_or(QString());

    const QString time = Setting(QStringLiteral("Time"));
    const bool timeForm = FormatTime(time, now.time(), state.Locale).has_value();
    if (timeForm) timeIndex = time;
    Report(QStringLiteral("Time"), timeForm, QStringLiteral("there is no time format ") + time);
    state.TimeText = FormatTime(timeIndex, now.time(), state.Locale).value_or(QString());
}

void TextOverlay::BuildOverlayText(int mode, const QDateTime& now) {
    BuildDateTime(now);
    const bool ownLines = mode == 2 || mode == 3;
    state.OverlayText = TextOfMode(mode, state.DateText, state.TimeText,
                                   ownLines ? ReadSpecialText() : SpecialText(), turns);
}

SpecialText TextOverlay::ReadSpecialText() const {
    const auto read = [this](const QString& key) {
        return ReadSetting(state.SettingsFile, TextSection, key);
    };
    SpecialText text;
    for (std::size_t i = 0; i < text.Lin.size(); ++i)
        text.Lin[i] = read(QStringLiteral("Lin") + QString::number(i));
    text.InRows = read(QStringLiteral("Effect")) == u"Zeile";
    text.DateInFirstRow = ValLong(read(QStringLiteral("UB"))) != 1;
    text.PicturesPerRow = std::clamp(ValLong(read(QStringLiteral("Pic"))), 0,
                                     int{std::numeric_limits<qint16>::max()});
    return text;
}

void TextOverlay::DrawOverlayText() {
    if (state.OverlayText.isEmpty() || state.Picture2.isNull()) return;
    const QFont font = ReadFont();
    // Without any, boxes would stand on the picture.
    const bool anyFont = !QFontInfo(font).family().isEmpty();
    Report({}, anyFont, QStringLiteral("no font is installed"));
    if (!anyFont) return;
    TextSurface surface{state.Picture2, font};
    ReadColors(surface);
    const QString position = Setting(QStringLiteral("Position"));
    const std::optional<int> cell = CellOf(ValLong(position));
    Report(QStringLiteral("Position"), cell.has_value(),
           QStringLiteral("there is no position ") + position);
    PrintTextAligned(surface, state.OverlayText, cell.value_or(*CellOf(0)), false);
}

QFont TextOverlay::ReadFont() {
    const int height = state.Picture2.height();
    const QString size = Setting(QStringLiteral("Size"));
    const std::optional<int> pixels = FontPixels(size, height);
    Report(QStringLiteral("Size"), pixels.has_value(), QStringLiteral("no font has size ") + size);
    const QString family = Setting(QStringLiteral("Font"));
    QFont font = PictureFont(family, pixels.value_or(UsualFontPixels(height)));
    font.setBold(Flag(QStringLiteral("Bold")));
    font.setItalic(Flag(QStringLiteral("Italic")));
    font.setUnderline(Flag(QStringLiteral("Underline")));
    const QString used = QFontInfo(font).family();
    Report(QStringLiteral("Font"),
           family.isEmpty() || used.isEmpty() || QFontDatabase::hasFamily(family),
           QStringLiteral("font %1 is not installed, %2 is used").arg(family, used));
    return font;
}

void TextOverlay::ReadColors(TextSurface& surface) {
    surface.Color = ReadColor(QStringLiteral("Color"), Qt::white);
    const QColor back = ReadColor(QStringLiteral("BackColor"), Qt::black);
    if (Flag(QStringLiteral("Transparent"))) return;
    surface.Background = back;
    surface.Color = Readable(surface.Color, back);
}

QColor TextOverlay::ReadColor(const QString& key, const QColor& otherwise) {
    const QString written = Setting(key);
    const std::optional<QColor> color = ColorOf(written);
    Report(key, color.has_value(), QStringLiteral("%1 %2 is no colour").arg(key, written));
    return color.value_or(otherwise);
}

QString TextOverlay::Setting(const QString& key) const {
    return ReadSetting(state.SettingsFile, QStringLiteral("Einstellungen"), key);
}

bool TextOverlay::Flag(const QString& key) const {
    return Val(Setting(key)) != 0;
}

void TextOverlay::Report(const QString& key, bool fine, const QString& fault) {
    if (fine) {
        reported.remove(key);
        return;
    }
    if (reported.value(key) == fault) return;
    reported.insert(key, fault);
    display.ShowStatus(QStringLiteral("Overlay text: ") + fault);
}
