#include "ui/settings/camera/path_field.h"

#include "base/paths.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

PathField::PathField(QWidget* parent)
    : QLineEdit(parent), btnBrowse(new QPushButton(QStringLiteral("…"))) {
    connect(btnBrowse, &QPushButton::clicked, this, &PathField::ChooserWanted);
}

QString PathField::Folder() const {
    return Paths::WithSeparator(text().trimmed());
}

void PathField::SetFolder(const QString& folder) {
    setText(Paths::Native(folder));
}

QSize PathField::sizeHint() const {
    constexpr int usualLetters = 42;  // of a path
    QSize size = QLineEdit::sizeHint();
    size.setWidth(fontMetrics().averageCharWidth() * usualLetters);
    return size;
}

void PathField::mousePressEvent(QMouseEvent* event) {
    pressedAt = event->pos();
    QLineEdit::mousePressEvent(event);
}

// A drag marks text.
void PathField::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    const int moved = (event->pos() - pressedAt).manhattanLength();
    if (event->button() == Qt::LeftButton && moved < QApplication::startDragDistance())
        emit ChooserWanted();
}

void PathField::keyPressEvent(QKeyEvent* event) {
    const bool altDown = event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier;
    const bool f4 = event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier;
    if (f4 || altDown)
        emit ChooserWanted();
    else
        QLineEdit::keyPressEvent(event);
}
