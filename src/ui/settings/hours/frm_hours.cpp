#include "ui/settings/hours/frm_hours.h"

#include "base/waiting.h"
#include "core/program.h"
#include "core/schedule/schedule.h"
#include "core/schedule/schedule_texts.h"
#include "ui/settings/hours/week_picture.h"
#include "ui/settings/settings_rows.h"

#include <QGroupBox>
#include <QLabel>

namespace {

const QString sun = "sun";
const QString last = "last";        // of OutsideHours
const QString offline = "offline";  // anything else is
const QString usualWeek = "mo-su 06:00-22:00";

}  // namespace

frmHours::frmHours(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "frmHours", parent),
      Week(new WeekPicture),
      lblShown(new QLabel) {
    Body().addWidget(HoursFrame());
    Body().addWidget(OtherFrame());
    Body().addStretch(1);
    Connect();
    Finish();
}

QGroupBox* frmHours::HoursFrame() {
    const auto week = [this] { return optWeek->isChecked(); };
    const auto light = [this] { return optSun->isChecked(); };
    const auto some = [this] { return !optAlways->isChecked(); };
    QGroupBox* frame = Controls.Frame("FrameHours");
    auto* rows = new SettingsRows(Controls, frame);
    for (const auto& [option, text] :
         {std::pair(optAlways, "Always"), std::pair(optWeek, "Week"), std::pair(optSun, "Sun")})
        rows->Add(option, {.Text = QString::fromLatin1(text)});
    rows->AddWhole(Week);
    Controls.Add(Week, {.Text = "Picture", .Enabled = week});
    lblShown->setWordWrap(true);
    rows->AddWhole(lblShown);
    rows->Add(txtWeek, {.Key = "Hours",
                        .Text = "InWords",
                        .Enabled = week,
                        .Show = [this](const QString& written) { ShowHours(written); },
                        .Value = [this] { return HoursText(); }});
    rows->Add(txtPlace, {.Key = "Place", .Enabled = light});
    rows->Add(cbOutside,
              {.Key = "OutsideHours",
               .Items = 2,
               .Enabled = some,
               .Show =
                   [this](const QString& written) {
                       cbOutside->setCurrentIndex(written == last ? 1 : 0);
                   },
               .Value = [this] { return cbOutside->currentIndex() == 1 ? last : offline; }});
    return frame;
}

QGroupBox* frmHours::OtherFrame() {
    QGroupBox* frame = Controls.Frame("FrameCamera");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add(txtOfflineAfter, "OfflineAfter");
    rows->Add(txtFrozenAfter, "FrozenAfter");
    rows->AddSpace();
    rows->Add(chkOnTheMinute, "OnTheMinute");
    return frame;
}

void frmHours::Connect() {
    for (QRadioButton* option : {optAlways, optWeek, optSun})
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (on) ShowWeek();
        });
    connect(txtWeek, &QLineEdit::textEdited, this, &frmHours::ShowWeek);
    connect(txtPlace, &QLineEdit::textEdited, this, &frmHours::ShowWeek);
    connect(Week, &WeekPicture::Painted, this, &frmHours::TakePainted);
    connect(Week, &WeekPicture::Moved, this, [this](const QString& hour, bool in) {
        const QString text = Text(in ? QString("HourIn") : "HourOut").arg(hour);
        lblShown->setText(text);
        Week->setAccessibleDescription(text);
    });
}

QDateTime frmHours::Now() const {
    return Core().Wait.OwnClock().Now();
}

// What cannot be read stands there to be put right.
void frmHours::ShowHours(const QString& written) {
    std::optional<HoursFault> fault;
    const Hours hours = Hours::Parse(written, fault);
    const bool week = fault || hours.Is == Hours::Kind::Week;
    txtWeek->setText(week ? written : usualWeek);
    (week ? optWeek : hours.Is == Hours::Kind::Sun ? optSun : optAlways)->setChecked(true);
}

void frmHours::ShowSettings() {
    SettingsWindow::ShowSettings();
    ShowWeek();
}

QString frmHours::HoursText() const {
    if (optAlways->isChecked()) return {};
    return optSun->isChecked() ? sun : txtWeek->text().trimmed();
}

void frmHours::ShowWeek() {
    lblShown->clear();
    lblNote->clear();
    const Schedule schedule(HoursText(), txtPlace->text());
    if (schedule.Fault()) lblNote->setText(FaultText(Words(), *schedule.Fault()));
    if (schedule.Wanted().Is == Hours::Kind::Sun) {
        ShowLight();
        return;
    }
    WeekHours all;
    for (int day = 1; day <= WeekHours::Days; ++day) all.Set(day, 0, WeekHours::MinutesOfDay);
    const bool some = schedule.Wanted().Is == Hours::Kind::Week;
    if (some || !schedule.Fault()) Week->Show(some ? schedule.Wanted().Week : all);
}

// Of the next seven days.
void frmHours::ShowLight() {
    constexpr int step = 5;  // minutes
    const Schedule schedule(sun, txtPlace->text());
    const QDateTime now = Now();
    WeekHours light;
    for (int ahead = 0; ahead < WeekHours::Days; ++ahead)
        for (int minute = 0; minute < WeekHours::MinutesOfDay; minute += step) {
            QDateTime time = now.addDays(ahead);
            time.setTime(QTime::fromMSecsSinceStartOfDay(minute * 60'000));
            if (schedule.Open(time)) light.Set(time.date().dayOfWeek(), minute, minute + step);
        }
    Week->Show(light, true);
    const auto next = schedule.NextChange(now);
    if (!next) return;
    const QString when = WhenText(Words(), now, *next);
    lblShown->setText(Text(schedule.Open(now) ? QString("LightUntil") : "LightFrom").arg(when));
}

// Nothing more can be written down than a setting holds.
void frmHours::TakePainted() {
    const QString text = Week->Week().ToText();
    if (text.size() > txtWeek->maxLength()) {
        ShowWeek();
        lblNote->setText(Text("TooDetailed"));
        return;
    }
    lblNote->clear();
    txtWeek->setText(text);
}

bool frmHours::Check() {
    const Schedule schedule(HoursText(), txtPlace->text());
    if (optWeek->isChecked() && txtWeek->text().trimmed().isEmpty()) {
        Refuse(*txtWeek, Text("NoHours"));
        return false;
    }
    if (!schedule.Fault()) return true;
    const bool place = schedule.Fault()->Is == HoursFault::Kind::NoPlace;
    Refuse(place ? *txtPlace : *txtWeek, FaultText(Words(), *schedule.Fault()));
    return false;
}

void frmHours::ShowTexts() {
    QStringList names;
    for (int day = 1; day <= WeekHours::Days; ++day)
        names << Words().Get("Schedule", "Day" + QString::number(day));
    Week->SetDayNames(names);
    SettingsWindow::ShowTexts();
    ShowWeek();
}
