#pragma once

#include "ui/skin/drag_window.h"

#include <QPixmap>
#include <QWidget>

class QLabel;
class QPushButton;
class SkinFolders;
class Texts;

// The about box: a picture of the default skin with the program's version and licence on its panel.
// A button opens the
// system report. The mouse moves the box by its background; its button and Escape close it.
class Info : public QWidget {
    Q_OBJECT

  public:
    // Both outlive the box.
    Info(const SkinFolders& skinFolders, Texts& ownTexts);

    QLabel* Label1;
    QPushButton* btnReport;
    QPushButton* btnClose;

    void Show();

  signals:
    void ReportWanted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void ShowTexts();
    void LayOut();

    const SkinFolders& folders;
    Texts& texts;
    QPixmap background;
    DragWindow drag;
};
