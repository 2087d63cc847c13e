#include "ui/dialogs/day_view.h"

#include "texts/texts.h"
#include "ui/dialogs/day_strip.h"
#include "ui/texts/messages.h"

#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace {

QString KeyOf(MinuteState state) {
    switch (state) {
        case MinuteState::NotRunning:
            return "DayNotRunning";
        case MinuteState::OutsideHours:
            return "DayOutsideHours";
        case MinuteState::Waiting:
            return "DayWaiting";
        case MinuteState::Failed:
            return "DayFailed";
        case MinuteState::CameraGone:
            return "DayCameraGone";
        case MinuteState::Published:
            break;
    }
    return "DayPublished";
}

// At least 1: a picture of nothing would look like a fault.
QString Kilobytes(double bytes) {
    constexpr double kilobyte = 1024;
    return QString::number(std::max(1L, std::lround(bytes / kilobyte)));
}

QString Seconds(double milliseconds) {
    constexpr double second = 1000;
    return QString::number(milliseconds / second, 'f', 1);
}

}  // namespace

DayView::DayView(const Texts& ownTexts, QWidget* parent)
    : QWidget(parent),
      Strip(new DayStrip(this)),
      lblMinute(new QLabel(this)),
      texts(ownTexts),
      title(new QLabel(this)) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins({});
    all->addWidget(title);
    all->addWidget(Strip);
    all->addWidget(lblMinute);
    AddLegend();
    title->setBuddy(Strip);
    lblMinute->setWordWrap(true);
    connect(Strip, &QAbstractSlider::valueChanged, this, &DayView::ShowMinute);
}

void DayView::AddLegend() {
    auto* grid = new QGridLayout;
    const auto add = [&](const QString& key, const QColor& colour) {
        constexpr int pairs = 2;  // in a row
        const int place = static_cast<int>(legend.size());
        const Entry entry{key, colour, new QLabel(this), new QLabel(this)};
        grid->addWidget(entry.Mark, place / pairs, place % pairs * 2);
        grid->addWidget(entry.Meaning, place / pairs, place % pairs * 2 + 1);
        grid->setColumnStretch(place % pairs * 2 + 1, 1);
        legend << entry;
    };
    for (const auto state : {MinuteState::Published, MinuteState::Failed, MinuteState::CameraGone,
                             MinuteState::OutsideHours})
        add(KeyOf(state), DayStrip::ColourOf(state));
    add("DaySize", DayStrip::SizeColour);
    add("DayDuration", DayStrip::DurationColour);
    static_cast<QVBoxLayout*>(layout())->addLayout(grid);
}

QString DayView::Text(const QString& key) const {
    return texts.Get("frmStatusgesamt", key);
}

void DayView::ShowTexts() {
    title->setText(Text("Day"));
    Strip->setAccessibleName(Text("Day"));
    for (const Entry& entry : std::as_const(legend)) {
        QPixmap mark(fontMetrics().ascent(), fontMetrics().ascent());
        mark.fill(entry.Colour);
        entry.Mark->setPixmap(mark);
        entry.Meaning->setText(Text(entry.Key));
    }
    ShowMost();
    ShowMinute();
}

void DayView::Show(const DayRecord& record, const QDateTime& now) {
    Strip->Show(record, now);
    ShowMost();
    ShowMinute();
}

void DayView::ShowMost() {
    for (const Entry& entry : std::as_const(legend)) {
        if (entry.Key == u"DaySize")
            entry.Meaning->setText(Text(entry.Key).arg(Kilobytes(Strip->MostBytes())));
        if (entry.Key == u"DayDuration")
            entry.Meaning->setText(Text(entry.Key).arg(Seconds(Strip->MostMilliseconds())));
    }
}

void DayView::ShowMinute() {
    lblMinute->setText(Words());
    Strip->setAccessibleDescription(lblMinute->text());
}

QString DayView::Words() const {
    const MinuteRecord minute = Strip->Minute();
    const QString time = Strip->Time().toString("HH:mm");
    if (minute.Pictures == 0) return Text("DayMinute").arg(time, Text(KeyOf(minute.State)));
    const double count = minute.Pictures;
    const QString pictures =
        Text("DayPictures")
            .arg(PicturesText(texts, minute.Pictures), Kilobytes(minute.Bytes / count));
    const QString sent = minute.Milliseconds == 0
                             ? QString()
                             : Text("DaySent").arg(Seconds(minute.Milliseconds / count));
    return Text("DayMinute").arg(time, pictures + sent);
}
