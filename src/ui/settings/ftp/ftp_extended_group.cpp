#include "ui/settings/ftp/ftp_extended_group.h"

#include "core/settings/setting_table.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>

#include <array>

namespace {

constexpr std::array qualities{90, 60, 30};  // per cent, of the entries of the list
constexpr int shownCharacters = 14;          // of a connection's name; longer ones are cut there

NumberField* MakeHistoryCount() {
    const SettingRow& row = SettingRowOf(u"Einstellungen", u"lastpictureanz");
    auto* field = new NumberField(row.Least, row.Most);
    field->SetWhenEmpty(row.Default.toInt());
    field->setPlaceholderText(row.Default.toString());
    return field;
}

}  // namespace

FtpExtendedGroup::FtpExtendedGroup(const Texts& ownWords)
    : chkHistory(new QCheckBox),
      txtHistory(MakeHistoryCount()),
      chkDelete(new QCheckBox),
      cbQuality(new QComboBox),
      cbConnection(new QComboBox),
      chkAnwahl(new QCheckBox),
      chkAbwahl(new QCheckBox),
      chkAutostart(new QCheckBox),
      words(ownWords),
      lblHistory(new QLabel),
      lblDelete(new QLabel),
      lblQuality(new QLabel),
      lblDialUp(new QLabel),
      lblConnection(new QLabel) {
    for (std::size_t i = 0; i < qualities.size(); ++i) cbQuality->addItem(QString());
    LayOut();
    connect(chkHistory, &QCheckBox::toggled, this, &FtpExtendedGroup::ApplyAvailability);
    connect(cbQuality, &QComboBox::activated, this, [this] { qualityChosen = true; });
}

void FtpExtendedGroup::LayOut() {
    lblHistory->setBuddy(txtHistory);
    lblQuality->setBuddy(cbQuality);
    lblConnection->setBuddy(cbConnection);
    lblDelete->setWordWrap(true);
    lblDialUp->setWordWrap(true);
    cbQuality->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    cbConnection->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbConnection->setMinimumContentsLength(shownCharacters);
    cbConnection->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    auto* grid = new QGridLayout(this);
    const int gap = grid->verticalSpacing() > 0 ? grid->verticalSpacing() : fontMetrics().height();
    int row = 0;
    const auto whole = [&](QWidget* widget) { grid->addWidget(widget, row++, 0, 1, 2); };
    const auto pair = [&](QLabel* caption, QWidget* field, Qt::Alignment side) {
        grid->addWidget(caption, row, 0);
        grid->addWidget(field, row++, 1, side);
    };
    const auto space = [&] { grid->setRowMinimumHeight(row++, gap / 2); };
    whole(chkHistory);
    pair(lblHistory, txtHistory, Qt::AlignLeft);
    space();
    whole(lblDelete);
    whole(chkDelete);
    space();
    pair(lblQuality, cbQuality, Qt::AlignLeft);
    space();
    whole(lblDialUp);
    whole(lblConnection);
    whole(cbConnection);
    whole(chkAnwahl);
    whole(chkAbwahl);
    space();
    whole(chkAutostart);
    grid->setRowStretch(row, 1);
    grid->setColumnStretch(1, 1);
}

void FtpExtendedGroup::ShowSettings(const Settings& values, bool hangUp, bool autostart) {
    chkHistory->setChecked(values.lastpictures);
    txtHistory->SetValue(values.lastpictureanz);
    chkDelete->setChecked(values.Delete);
    cbQuality->setCurrentIndex(values.Quali);
    qualityChosen = false;
    chkAnwahl->setChecked(values.Anwahl);
    chkAbwahl->setChecked(hangUp);
    chkAutostart->setChecked(autostart);
    ApplyAvailability();
}

void FtpExtendedGroup::ShowConnections(const QStringList& entries, const QString& name, int place) {
    cbConnection->clear();
    for (const QString& entry : entries) cbConnection->addItem(entry, entry);
    if (!name.isEmpty() && !entries.contains(name)) cbConnection->addItem(name, name);
    const int named = name.isEmpty() ? place : cbConnection->findData(name);
    cbConnection->setCurrentIndex(named >= 0 && named < cbConnection->count() ? named : 0);
    if (cbConnection->count() == 0) cbConnection->addItem(Text("NoConnection"), QString());
    ApplyAvailability();
}

QString FtpExtendedGroup::Connection() const {
    return cbConnection->currentData().toString();
}

int FtpExtendedGroup::ConnectionPlace() const {
    return qMax(0, cbConnection->currentIndex());
}

std::optional<int> FtpExtendedGroup::ChosenQuality() const {
    if (!qualityChosen) return std::nullopt;
    return qualities.at(static_cast<std::size_t>(cbQuality->currentIndex()));
}

void FtpExtendedGroup::SetLocal(bool nowLocal) {
    local = nowLocal;
    ApplyAvailability();
}

void FtpExtendedGroup::ApplyAvailability() {
    chkHistory->setEnabled(!local);
    const bool counts = !local && chkHistory->isChecked();
    lblHistory->setEnabled(counts);
    txtHistory->setEnabled(counts);
    const bool dials = !local && !Connection().isEmpty();
    for (QWidget* each : std::initializer_list<QWidget*>{lblDialUp, lblConnection, cbConnection})
        each->setEnabled(dials);
    // What is on can always be switched off.
    chkAnwahl->setEnabled(dials || chkAnwahl->isChecked());
    chkAbwahl->setEnabled(dials || chkAbwahl->isChecked());
}

void FtpExtendedGroup::Describe(QWidget* control, const QString& key) {
    control->setToolTip(Text(key + "Help"));
    control->setAccessibleName(Text(key));
}

void FtpExtendedGroup::ShowTexts() {
    setTitle(Text("FrameExtended"));
    chkHistory->setText(Text("HistoryOption"));
    lblHistory->setText(Text("HistoryCount"));
    lblDelete->setText(Text("DeleteFirst"));
    chkDelete->setText(Text("DeleteOption"));
    lblQuality->setText(Text("Quality"));
    lblDialUp->setText(Text("DialUp"));
    lblConnection->setText(Text("Connection"));
    chkAnwahl->setText(Text("AutoDial"));
    chkAbwahl->setText(Text("HangUp"));
    chkAutostart->setText(Text("Autostart"));
    for (int i = 0; i < cbQuality->count(); ++i)
        cbQuality->setItemText(i, Text("Quality" + QString::number(i)));
    if (cbConnection->count() == 1 && Connection().isEmpty())
        cbConnection->setItemText(0, Text("NoConnection"));
    Describe(chkHistory, "HistoryOption");
    Describe(txtHistory, "HistoryCount");
    Describe(chkDelete, "DeleteOption");
    Describe(cbQuality, "Quality");
    Describe(cbConnection, "Connection");
    Describe(chkAnwahl, "AutoDial");
    Describe(chkAbwahl, "HangUp");
    Describe(chkAutostart, "Autostart");
}
