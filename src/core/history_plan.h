#pragma once

#include <QList>
#include <QString>

// One step of the shift of the history pictures on the server.
struct HistoryStep {
    QString From;  // the picture to move, or to delete when To is empty
    QString To;

    bool operator==(const HistoryStep&) const = default;
};

// The steps that make room for one more history picture and move the public picture there: delete
// "pwN.jpg", rename "pw(N-1).jpg" to "pwN.jpg" and so on, at last "pw.jpg" to "pw1.jpg".
// pictures: N, the number of history pictures, at least 1.
[[nodiscard]] QList<HistoryStep> HistoryPlan(int pictures);
