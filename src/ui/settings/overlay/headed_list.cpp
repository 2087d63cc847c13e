#include "ui/settings/overlay/headed_list.h"

#include <QSignalBlocker>
#include <QStandardItemModel>

HeadedList::HeadedList(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    connect(this, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (index > 0) emit PlaceChanged(Place());
    });
}

void HeadedList::SetTexts(const QString& heading, const QStringList& lines) {
    const QSignalBlocker quiet(this);
    const int chosen = qMax(Place(), 0);
    clear();
    addItem(heading);
    addItems(lines);
    // As a heading it can be seen, but neither clicked nor reached with the keys.
    if (auto* items = qobject_cast<QStandardItemModel*>(model())) items->item(0)->setEnabled(false);
    SetPlace(chosen);
}

QStringList HeadedList::Lines() const {
    QStringList lines;
    for (int i = 1; i < count(); ++i) lines << itemText(i);
    return lines;
}
