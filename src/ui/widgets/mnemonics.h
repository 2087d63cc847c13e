#pragma once

#include <QList>

class QAbstractButton;
class QLabel;
class QWidget;

// Gives the buttons, options and captions of fields in a window the letters that reach them with
// Alt: to each the first letter of its text that no other has, the beginnings of words before the
// rest. Texts carry none themselves, because a translator cannot see which letters are taken. To be
// called again when texts have changed.
void AssignMnemonics(QWidget& window);

// The same of a part of a window; `shared` are buttons elsewhere in the window that keep their
// letters from part to part.
void AssignMnemonics(QWidget& part, const QList<QAbstractButton*>& shared);

// Gives one caption another text, with a letter that nothing else in its window has.
void SetCaption(QLabel& caption, const QString& text);
