#pragma once

#include "base/clock.h"

#include <QList>
#include <QRect>
#include <QWidget>

// Remembers where a window was: keys NAMELeft and NAMETop of section "Window" in the settings file,
// in pixels of the desktop. A move is written down when the window has come to rest.
class WindowPlace : public QObject {
    Q_OBJECT

  public:
    // The window and the clock outlive this; name: "Window" for the main window.
    WindowPlace(QWidget& watchedWindow, Clock& clock, const QString& settingsFile,
                const QString& keyName);

    // Moves the window where it was last, onto a screen that is there now. Without a remembered
    // place the window system chooses one. Call it when the window has its size.
    void Restore();
    // Writes the place down if it is another one than written; a hidden or minimised window has
    // none.
    void Save();

    // Where a window comes to lie so that it is whole on the nearest of the screens (its top left
    // corner first, when it is larger).
    [[nodiscard]] static QPoint OntoScreen(const QRect& window, const QList<QRect>& screens);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    [[nodiscard]] QString Read(const QString& side) const;
    void Write(const QString& side, int pixels) const;

    QWidget& window;
    QString file;
    QString name;
    Timer rest;
};
