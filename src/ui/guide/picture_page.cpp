#include "ui/guide/picture_page.h"

#include "core/main_state.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "picture/bitmap/picture_file.h"
#include "picture/picture_state.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/settings_rows.h"
#include "ui/widgets/preview_area.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <array>

namespace {

constexpr qint64 second = 1'000;
constexpr qint64 minute = 60'000;
constexpr std::array intervals{10 * second, 30 * second, minute,      2 * minute,
                               5 * minute,  10 * minute, 30 * minute, 60 * minute};
constexpr QSize offlineSize(120, 90);
const QString usualPatience = "10";  // minutes without a picture

ProfileEntry Entry(const QString& key, const QString& value) {
    return {"Einstellungen", key, value};
}

ProfileEntry Entry(const QString& key, int value) {
    return Entry(key, QString::number(value));
}

// As a line that is shown whole: at the beginning of the text the word "Date" means something.
QString Guarded(const QString& text) {
    return text.startsWith(u"Date") ? u' ' + text : text;
}

}  // namespace

PicturePage::PicturePage(const SettingsWindow::Surroundings& surroundings)
    : GuidePage(surroundings, "Picture"),
      chkDate(new QCheckBox),
      chkTime(new QCheckBox),
      txtLine(new QLineEdit),
      cbInterval(new QComboBox),
      chkOffline(new QCheckBox),
      chkOfflineAfter(new QCheckBox),
      OfflineLook(new PreviewArea),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)) {
    txtLine->setMaxLength(LongestSetting - 1);  // a blank may come in front;
    LayOut();
    const auto changed = [this] {
        overlayChanged = true;
        ShowNote();
        Preview->Renew();
    };
    for (QCheckBox* option : {chkDate, chkTime})
        connect(option, &QCheckBox::clicked, this, changed);
    connect(txtLine, &QLineEdit::textEdited, this, changed);
    connect(chkOffline, &QCheckBox::toggled, OfflineLook, &QWidget::setEnabled);
    Preview->SetEntries([this] { return OverlayEntries(); });
}

void PicturePage::LayOut() {
    auto* rows = new SettingsRows(Controls());
    rows->Add(chkDate, {.Text = "Date"});
    rows->Add(chkTime, {.Text = "Time"});
    rows->AddBelow(txtLine, {.Text = "Line"});
    rows->AddSpace();
    rows->AddBelow(cbInterval, {.Text = "Interval"});
    rows->AddSpace();
    rows->Add(chkOffline,
              {.Key = "OfflinePic", .Text = "Offline", .Missing = "1", .Enabled = [this] {
                   return OfflineLook->isVisibleTo(this);
               }});
    rows->Add(chkOfflineAfter, {.Key = "OfflineAfter",
                                .Missing = usualPatience,
                                .Enabled = [this] { return OfflineLook->isVisibleTo(this); },
                                .Show = [this](const QString& written) { ShowPatience(written); },
                                .Value = [this] { return Patience(); }});
    OfflineLook->setFixedSize(offlineSize);
    rows->AddWhole(OfflineLook);
    auto* columns = new QHBoxLayout;
    // The window is as large as the other pages need, and the preview takes what is left.
    Preview->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    columns->addLayout(rows);
    columns->addWidget(Preview, 1);
    Body().addLayout(columns, 1);
}

QWidget* PicturePage::First() const {
    return chkDate;
}

void PicturePage::ShowSettings() {
    ShowOffline();
    GuidePage::ShowSettings();
    for (QCheckBox* option : {chkOffline, chkOfflineAfter})
        if (!option->isEnabled()) option->setChecked(false);
    ShowOverlay();
    const bool set = !Setting("Framerate").isEmpty() || !Setting("Uptime").isEmpty();
    ShowIntervals(set ? Core().State.Values.TotalInterval() : minute);
    ShowNote();
    Preview->Restart();
}

void PicturePage::ShowOverlay() {
    const Settings values = ::LoadSettings(Core().SettingsFile());
    overlayChanged = Setting("Overlay").isEmpty();
    const bool both = overlayChanged || values.Overlay == OverlayMode::DateTimeText;
    chkDate->setChecked(both || values.Overlay == OverlayMode::Date);
    chkTime->setChecked(both || values.Overlay == OverlayMode::Time);
    const bool lines =
        values.Overlay == OverlayMode::DateTimeText || values.Overlay == OverlayMode::SpecialText;
    txtLine->setText(lines ? values.Lin.front().trimmed() : QString());
}

// One that is none of the usual ones stays.
void PicturePage::ShowIntervals(qint64 wanted) {
    cbInterval->clear();
    for (const qint64 each : intervals) cbInterval->addItem(IntervalName(each), each);
    if (std::ranges::find(intervals, wanted) == intervals.end())
        cbInterval->addItem(IntervalName(wanted), wanted);
    cbInterval->setCurrentIndex(cbInterval->findData(wanted));
}

QString PicturePage::IntervalName(qint64 milliseconds) const {
    if (milliseconds == second) return Text("EverySecond");
    if (milliseconds == minute) return Text("EveryMinute");
    if (milliseconds == 60 * minute) return Text("EveryHour");
    if (milliseconds % minute == 0) return Text("EveryMinutes").arg(milliseconds / minute);
    return Text("EverySeconds").arg(static_cast<double>(milliseconds) / second);
}

// Suggested to those who have not decided on the offline picture before.
void PicturePage::ShowPatience(const QString& minutes) {
    const bool decided = !Setting("OfflineAfter").isEmpty() || Setting("OfflinePic").isEmpty();
    chkOfflineAfter->setChecked(decided && ValLong(minutes) > 0);
}

// Who has chosen another time keeps it.
QString PicturePage::Patience() const {
    if (!chkOfflineAfter->isChecked()) return "0";
    const QString written = Setting("OfflineAfter");
    return ValLong(written) > 0 ? written : usualPatience;
}

// Without a picture there is nothing that visitors could see.
void PicturePage::ShowOffline() {
    const QString name = ::LoadSettings(Core().SettingsFile()).Offlinefile;
    const FilePicture picture = ReadPicture(
        FindPicture(Core().PictureValues.ReadingFolders(), "Offline", name), offlineSize);
    const bool fine = picture.Fault == PictureFault::None;
    OfflineLook->setVisible(fine);
    const QSize shown = offlineSize * OfflineLook->devicePixelRatioF();
    OfflineLook->SetPicture(fine ? OpaquePicture(picture.Image)
                                       .scaled(shown, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                 : QImage());
}

// Pictures have the date alone or the time alone only where there is nothing else.
void PicturePage::ShowNote() {
    const bool one = chkDate->isChecked() != chkTime->isChecked();
    Preview->SetNote(one && !txtLine->text().trimmed().isEmpty() ? Text("BothWithLine")
                                                                 : QString());
}

void PicturePage::ShowTexts(const QList<QAbstractButton*>& below) {
    const qint64 chosen = Interval();
    if (cbInterval->count() > 0) ShowIntervals(chosen);
    GuidePage::ShowTexts(below);
    ShowNote();
    Preview->Renew();
}

qint64 PicturePage::Interval() const {
    return cbInterval->currentData().toLongLong();
}

QString PicturePage::IntervalText() const {
    return cbInterval->currentText();
}

QList<ProfileEntry> PicturePage::OverlayEntries() const {
    if (!overlayChanged) return {};
    const QString line = txtLine->text().trimmed();
    const bool date = chkDate->isChecked();
    const bool time = chkTime->isChecked();
    const auto kind = [](OverlayMode mode) { return Entry("Overlay", static_cast<int>(mode)); };
    if (line.isEmpty() && date != time) return {kind(date ? OverlayMode::Date : OverlayMode::Time)};
    if (line.isEmpty() && !date) return {kind(OverlayMode::None)};
    const bool stamped = date || time;
    QList<ProfileEntry> entries{
        kind(stamped ? OverlayMode::DateTimeText : OverlayMode::SpecialText)};
    return entries << ProfileEntry{"Text", "Lin0", Guarded(line)}
                   << ProfileEntry{"Text", "Effect", "Text"};
}

QList<ProfileEntry> PicturePage::Entries() const {
    const IntervalParts parts = SplitInterval(Interval());
    return OverlayEntries() << Entry("Framerate", parts.Framerate) << Entry("Uptime", parts.Uptime)
                            << GuidePage::Entries();
}

bool PicturePage::validatePage() {
    QBuffer file;
    const int quality = Core().State.Values.JPGQuality;
    bytes = Preview->Picture().save(&file, "JPG", quality) ? file.size() : 0;
    return true;
}
