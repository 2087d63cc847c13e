#pragma once

#include "base/clock.h"

#include <QPixmap>
#include <QWidget>

class SkinFolders;

// The picture "startbg.jpg" that greets whoever starts the program, until the main window is there,
// but at least for as long as it takes to be seen. A click puts it away.
class Splash : public QWidget {
    Q_OBJECT

  public:
    Splash(const SkinFolders& folders, Clock& clock);

    // Shows the picture in the middle of the screen; nothing when there is none.
    void Show();
    // The main window is there.
    void Finish();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    void HideWhenSeen();

    const SkinFolders& folders;
    QPixmap picture;
    Timer seen;
    bool wasSeen = false;
    bool finished = false;
};
