#pragma once

#include "base/clock.h"

#include <QList>
#include <QRect>
#include <QWidget>

// Remembers where a window was: keys NAMELeft and NAMETop of section "Window" in the settings file,
// in pixels of the desktop. A move is written down when the window has come to rest. Where the
// desktop places windows nothing is moved and nothing written.
class WindowPlace : public QObject {
    Q_OBJECT

  public:
    // The window and the clock outlive this; name: "Window" for the main window.
    WindowPlace(QWidget& watchedWindow, Clock& clock, const QString& settingsFile,
                const QString& keyName);

    // Moves the window where it was last, onto a screen that is there now. Without a remembered
    // place it comes beside the neighbour, or where the window system wants it when there is none.
    // Call it when the window has its size.
    void Restore(const QWidget* neighbour = nullptr);
    // Writes the place down if it is another one than written; a hidden or minimised window has
    // none.
    void Save();

    // Where a window comes to lie so that it is whole on the nearest of the screens (its top left
    // corner first, when it is larger).
    [[nodiscard]] static QPoint OntoScreen(const QRect& window, const QList<QRect>& screens);

    // Where a window of this size comes to lie beside another: right of it, left of it, below or
    // above, where the other's screen first has room; else wherever it fits best.
    [[nodiscard]] static QPoint Beside(const QRect& neighbour, const QSize& size,
                                       const QList<QRect>& screens);

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
