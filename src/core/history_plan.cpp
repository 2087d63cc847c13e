#include "core/history_plan.h"

#include "core/public_names.h"

QList<HistoryStep> HistoryPlan(int pictures) {
    QList<HistoryStep> steps{{PublicNames::History(pictures), {}}};
    for (int i = pictures - 1; i >= 1; --i)
        steps << HistoryStep{PublicNames::History(i), PublicNames::History(i + 1)};
    steps << HistoryStep{PublicNames::Picture, PublicNames::History(1)};
    return steps;
}
