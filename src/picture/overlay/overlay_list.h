#pragma once

#include <QStringList>

// The list of overlay pictures that take turns: each stays for a number of pictures, after the last
// comes the first again.
class OverlayList {
  public:
    // Gives the file name for this picture, of the names in `list`, and counts it. interval: after
    // how many pictures the next one is taken; 0: never. Empty when the list is.
    QString Next(int interval, const QStringList& list);

  private:
    qsizetype index = 0;
    int changeInterval = 0;
    int countdown = 0;  // pictures left before the next change
};
