#pragma once

#include <QString>

#include <functional>

// The list of overlay pictures that take turns: each stays for a number of pictures, after the last
// comes the first again.
class OverlayList {
  public:
    // Gives the file name for this picture and counts it. interval: after how many pictures the
    // next one is taken; 0 or less: never. entry: reads an entry of the list by its number from 0;
    // the first empty one ends the list. Empty when the list is.
    QString Next(int interval, const std::function<QString(int)>& entry);

  private:
    int index = 0;
    int changeInterval = 0;
    int countdown = 0;  // pictures left before the next change
};
