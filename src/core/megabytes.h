#pragma once

#include <QString>
#include <QtGlobal>

// The running total of what was published, in megabytes with four fixed decimal places, as a text.
// Each picture counts with its size rounded to two places, so that the total is the sum of what the
// operator saw being added; a picture below 5 KB so counts as nothing.
class MegabyteCounter {
  public:
    // bytes: the size of the published picture.
    void Add(qint64 bytes);

    // The total without thousands separators and superfluous zeros: "0", "1.5", "1234.07".
    [[nodiscard]] QString Text() const;

  private:
    qint64 tenThousandths = 0;
};
