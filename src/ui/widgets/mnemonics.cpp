#include "ui/widgets/mnemonics.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QSet>

namespace {

// The text without the mark of a letter; "&&" stays, it shows an ampersand.
QString Unmarked(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'&')
            plain += text[i];
        else if (i + 1 < text.size() && text[i + 1] == u'&') {
            plain += "&&";
            ++i;
        }
    }
    return plain;
}

// Where the letter of a text stands; -1 when all of its letters are taken.
qsizetype FreeLetter(const QString& text, const QSet<QChar>& taken) {
    const auto isFree = [&](qsizetype i) {
        return text[i].isLetter() && !taken.contains(text[i].toLower());
    };
    for (qsizetype i = 0; i < text.size(); ++i)
        if ((i == 0 || text[i - 1].isSpace()) && isFree(i)) return i;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (isFree(i)) return i;
    return -1;
}

QString Marked(const QString& text, QSet<QChar>& taken) {
    QString marked = Unmarked(text);
    const qsizetype letter = FreeLetter(marked, taken);
    if (letter < 0) return marked;
    taken.insert(marked[letter].toLower());
    return marked.insert(letter, u'&');
}

void Mark(QWidget& widget, QSet<QChar>& taken) {
    if (auto* button = qobject_cast<QAbstractButton*>(&widget); button && !button->text().isEmpty())
        button->setText(Marked(button->text(), taken));
    else if (auto* label = qobject_cast<QLabel*>(&widget); label && label->buddy())
        label->setText(Marked(label->text(), taken));
}

}  // namespace

void SetCaption(QLabel& caption, const QString& text) {
    QSet<QChar> taken;
    const auto take = [&taken](const QString& other) {
        const QString letter = QKeySequence::mnemonic(other).toString();
        if (!letter.isEmpty()) taken.insert(letter.back().toLower());
    };
    const QWidget* window = caption.window();
    for (const auto* button : window->findChildren<QAbstractButton*>()) take(button->text());
    for (const auto* label : window->findChildren<QLabel*>())
        if (label != &caption && label->buddy()) take(label->text());
    caption.setText(Marked(text, taken));
}

void AssignMnemonics(QWidget& window) {
    // Every window has the buttons, so they keep their letters from window to window.
    AssignMnemonics(window, window.findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly));
}

void AssignMnemonics(QWidget& part, const QList<QAbstractButton*>& shared) {
    QSet<QChar> taken;
    for (auto* button : shared) button->setText(Marked(button->text(), taken));
    // What is not shown now takes what is left.
    for (const bool hidden : {false, true}) {
        for (QWidget* widget : part.findChildren<QWidget*>())
            if (widget->parentWidget() != &part && widget->isHidden() == hidden)
                Mark(*widget, taken);
    }
}
