#pragma once

#include <QList>
#include <QWidget>

class MenuRow;
class QVBoxLayout;

// A small white window with rounded corners and lines to click: the options menu and its fly-outs.
// Up and Down go from line to line, Home and End to the first and the last.
class MenuPanel : public QWidget {
    Q_OBJECT

  public:
    explicit MenuPanel(QWidget* parent);

    QList<MenuRow*> Label1;

    // Puts the first line that is marked, else the first one, under the keyboard.
    void FocusRow();

    // The colours of the menu for any window that belongs to it.
    static void Dress(QWidget& window);

  protected:
    // A line at the end of the panel.
    MenuRow& AddRow();
    void AddGap(int pixels);
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QVBoxLayout* rows;
    QList<int> gaps;  // before which line, counted from 0
};
