#include "ui/settings_fixture.h"

#include "support/file_bytes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QScreen>

QStringList SettingsFixture::Lines() const {
    QStringList lines;
    for (const QString& line : QString::fromUtf8(ReadBytes(File())).split(u'\n'))
        if (line.contains(u'=')) lines << line.trimmed();
    return lines;
}

void SettingsFixture::Write(const QString& lines) const {
    SkinMaker::Write(File(), lines.toUtf8());
}

namespace {

QString TextOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    if (const auto* frame = qobject_cast<const QGroupBox*>(&widget)) return frame->title();
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) return list->currentText();
    return {};
}

QSize Needed(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    if (label && label->wordWrap()) {
        int longest = 0;
        for (const QString& word : label->text().split(u' '))
            longest = qMax(longest, label->fontMetrics().horizontalAdvance(word));
        return {longest, label->heightForWidth(label->width())};
    }
    return qobject_cast<const QGroupBox*>(&widget) ? widget.minimumSizeHint() : widget.sizeHint();
}

// The texts of a window that do not fit into their place; the window must be shown.
QStringList ClippedTexts(const QWidget& window) {
    QStringList clipped;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString text = TextOf(*widget);
        if (text.isEmpty() || !widget->isVisibleTo(&window)) continue;
        const QSize needed = Needed(*widget);
        // A text that no file has begins with a question mark.
        if (text.startsWith(u'?') || needed.width() > widget->width() ||
            needed.height() > widget->height())
            clipped << text;
    }
    return clipped;
}

const QWidget* FrameOf(const QWidget* control) {
    while (control && !qobject_cast<const QGroupBox*>(control)) control = control->parentWidget();
    return control;
}

QPoint PlaceIn(const QWidget& control, const QWidget& window) {
    return control.mapTo(&window, QPoint());
}

bool IsStop(const QWidget& control, const QWidget& window) {
    return (control.focusPolicy() & Qt::TabFocus) != 0 && control.isVisibleTo(&window) &&
           control.isEnabled() && !control.inherits("QAbstractScrollArea") && !control.isWindow() &&
           !control.focusProxy();
}

}  // namespace

QStringList TabFaults(QWidget& window) {
    QWidgetList left;
    for (auto* control : window.findChildren<QWidget*>())
        if (IsStop(*control, window)) left << control;
    QStringList faults;
    QWidget* at = window.focusWidget();
    for (qsizetype steps = 3 * left.size(); at && steps > 0; --steps) {
        left.removeAll(at);
        const auto lacks = [](const QString& text) { return text.isEmpty() || text[0] == u'?'; };
        const bool named = !lacks(at->accessibleName()) && !lacks(at->toolTip());
        if (!named && !at->inherits("QPushButton"))
            faults
                << QString("no name or help: %1").arg(QLatin1String(at->metaObject()->className()));
        QTest::keyClick(at, Qt::Key_Tab);
        QWidget* const next = window.focusWidget();
        const QPoint from = PlaceIn(*at, window);
        const QPoint to = PlaceIn(*next, window);
        constexpr int sameLine = 12;
        const bool back = to.y() < from.y() - sameLine ||
                          (std::abs(to.y() - from.y()) <= sameLine && to.x() < from.x());
        if (FrameOf(at) && FrameOf(at) == FrameOf(next) && back && !left.isEmpty())
            faults << "back to " + next->accessibleName();
        at = next;
    }
    for (const QWidget* control : std::as_const(left))
        faults << "not reached: " + control->accessibleName();
    return faults;
}

QStringList ClippedAnywhere(SettingsWindow& window, Texts& words) {
    return ClippedAnywhere(window, words, [&window] { window.Open(); });
}

QStringList ClippedAnywhere(QWidget& window, Texts& words, const std::function<void()>& open) {
    using enum Texts::Language;
    QStringList clipped;
    const QFont usual = QApplication::font();
    for (const int points : {8, 18}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        QCoreApplication::processEvents();
        for (const auto language : {English, German, French}) {
            words.SetLanguage(language);
            window.hide();
            open();
            // Layouts hand changes on from the inside out, a round of events at a time.
            for (int round = 0; round < 8; ++round) QCoreApplication::processEvents();
            QStringList faults = ClippedTexts(window);
            const QSize frame = window.frameGeometry().size();
            if (frame.boundedTo(window.screen()->availableSize()) != frame)
                faults << "larger than the screen";
            for (const QString& text : std::as_const(faults))
                clipped << QString("%1 points, language %2: %3")
                               .arg(points)
                               .arg(static_cast<int>(language))
                               .arg(text);
        }
    }
    QApplication::setFont(usual);
    words.SetLanguage(English);
    return clipped;
}
