#include "settings_fixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QStyle>
#include <QStyleOptionGroupBox>

QStringList SettingsFixture::Lines() const {
    QFile file(File());
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n'))
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

}  // namespace

QStringList ClippedTexts(const QWidget& window) {
    QStringList clipped;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const QString text = TextOf(*widget);
        if (text.isEmpty() || !widget->isVisibleTo(&window)) continue;
        const QSize needed = Needed(*widget);
        if (needed.width() > widget->width() || needed.height() > widget->height()) clipped << text;
    }
    return clipped;
}

QString WithoutMnemonic(const QString& text) {
    QString plain = text;
    plain.replace("&&", QString(QChar(1))).remove(u'&').replace(QChar(1), "&&");
    return plain;
}

QStringList Captions(const QWidget& window) {
    QStringList captions{window.windowTitle()};
    for (const QWidget* widget : window.findChildren<QWidget*>())
        if (!qobject_cast<const QComboBox*>(widget)) captions << WithoutMnemonic(TextOf(*widget));
    captions.removeAll(QString());
    return captions;
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
            for (const QString& text : ClippedTexts(window))
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
