#include "ui/settings/overlay/frm_text.h"

#include "core/program.h"
#include "core/settings/load_settings.h"
#include "core/settings/setting_table.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/texts/messages.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace {

const QString textSection = "Text";
const QString inRows = "Zeile";    // of Effect
const QString asWhole = "Text";    // anything else is
const QString special = "3";       // of Overlay
const QString withDateTime = "2";  // the other kind that shows the lines

bool ShowsLines(const QString& mode) {
    return mode == special || mode == withDateTime;
}

}  // namespace

frmText::frmText(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "frmText", parent),
      optWhole(new QRadioButton),
      optRows(new QRadioButton),
      Pic(new NumberField(SettingRowOf(u"Text", u"Pic").Least, SettingRowOf(u"Text", u"Pic").Most)),
      chkDateFirst(new QCheckBox),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)),
      frameEffect(new QGroupBox),
      frameText(new QGroupBox),
      framePreview(new QGroupBox),
      lblOrientation(new QLabel),
      lblPictures(new QLabel),
      lblHint(new QLabel) {
    LayOut();
    connect(optRows, &QRadioButton::toggled, this, &frmText::ShowState);
    connect(optRows, &QRadioButton::toggled, Preview, &OverlayPreview::Restart);
    connect(chkDateFirst, &QCheckBox::toggled, Preview, &OverlayPreview::Renew);
    connect(Pic, &QLineEdit::textChanged, Preview, &OverlayPreview::Renew);
    for (QLineEdit* line : Lin)
        connect(line, &QLineEdit::textChanged, Preview, &OverlayPreview::Renew);
    Preview->SetEntries([this] { return PreviewEntries(); });
    Finish();
    SetTabOrder();
}

void frmText::LayOut() {
    Body().addWidget(EffectFrame());
    auto* columns = new QHBoxLayout;
    auto* inside = new QVBoxLayout(framePreview);
    inside->addWidget(Preview);
    columns->addWidget(TextFrame(), 2);
    columns->addWidget(framePreview, 3);
    Body().addLayout(columns, 1);
}

QWidget* frmText::EffectFrame() {
    auto* grid = new QGridLayout(frameEffect);
    auto* rows = new QHBoxLayout;
    rows->addWidget(optRows);
    rows->addWidget(Pic);
    rows->addWidget(lblPictures);
    rows->addStretch(1);
    grid->addWidget(lblOrientation, 0, 0);
    grid->addWidget(optWhole, 1, 0);
    grid->addLayout(rows, 2, 0);
    grid->addWidget(chkDateFirst, 3, 0);
    return frameEffect;
}

QWidget* frmText::TextFrame() {
    auto* grid = new QGridLayout(frameText);
    for (std::size_t i = 0; i < Lin.size(); ++i) {
        Lin[i] = new QLineEdit;
        lblRow[i] = new QLabel;
        lblRow[i]->setBuddy(Lin[i]);
        grid->addWidget(lblRow[i], static_cast<int>(i), 0);
        grid->addWidget(Lin[i], static_cast<int>(i), 1);
    }
    constexpr int usualLetters = 22;
    Lin[0]->setMinimumWidth(usualLetters * Lin[0]->fontMetrics().averageCharWidth());
    lblHint->setWordWrap(true);
    grid->addWidget(lblHint, static_cast<int>(Lin.size()), 0, 1, 2);
    grid->setRowStretch(static_cast<int>(Lin.size()) + 1, 1);
    return frameText;
}

void frmText::SetTabOrder() {
    QWidgetList order{optWhole, optRows, Pic, chkDateFirst};
    for (QLineEdit* line : Lin) order << line;
    order << btnSave << btnClose;
    for (qsizetype i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmText::ShowSettings() {
    for (std::size_t i = 0; i < Lin.size(); ++i)
        Lin[i]->setText(Setting("Lin" + QString::number(i), textSection));
    const bool rows = Setting("Effect", textSection) == inRows;
    (rows ? optRows : optWhole)->setChecked(true);
    // Whoever has set none wants rows that move on.
    const QString pictures = Setting("Pic", textSection);
    Pic->SetValue(pictures.isEmpty() ? 1 : LoadSettings(Core().SettingsFile()).TextPic);
    chkDateFirst->setChecked(ValLong(Setting("UB", textSection)) != 1);
    Lin[0]->setFocus();
    ShowState();
    Preview->Restart();
}

void frmText::ShowState() {
    Pic->setEnabled(optRows->isChecked());
    chkDateFirst->setEnabled(optRows->isChecked());
}

QList<ProfileEntry> frmText::Entries() const {
    const QString mode = Setting("Overlay");
    QList<ProfileEntry> entries{Entry("Overlay", mode == withDateTime ? mode : special)};
    for (std::size_t i = 0; i < Lin.size(); ++i)
        entries << ProfileEntry{textSection, "Lin" + QString::number(i), Lin[i]->text()};
    entries << ProfileEntry{textSection, "Effect", optRows->isChecked() ? inRows : asWhole}
            << ProfileEntry{textSection, "Pic", QString::number(Pic->Value().value_or(1))}
            << ProfileEntry{textSection, "UB", chkDateFirst->isChecked() ? "0" : "1"};
    return entries;
}

// A kind of overlay that was chosen but not saved stays when it shows the lines.
QList<ProfileEntry> frmText::PreviewEntries() const {
    const QList<ProfileEntry> chosen = base ? base() : QList<ProfileEntry>();
    QList<ProfileEntry> entries = chosen + Entries();
    for (const ProfileEntry& entry : chosen)
        if (entry.Key == "Overlay" && ShowsLines(entry.Value)) entries << entry;
    return entries;
}

void frmText::Name(QWidget& control, const QString& name, const QString& helpKey) {
    control.setAccessibleName(name);
    control.setToolTip(Text(helpKey));
}

void frmText::ShowTexts() {
    frameEffect->setTitle(Text("FrameEffect"));
    frameText->setTitle(Text("FrameText"));
    framePreview->setTitle(Words().Get("frmOverlay", "FramePreview"));
    lblOrientation->setText(Text("Orientation"));
    optWhole->setText(Text("CompleteText"));
    optRows->setText(Text("InRows"));
    lblPictures->setText(Text("InRowsEnd"));
    chkDateFirst->setText(Text("DateTimeFirst"));
    lblHint->setText(Text("Hint"));
    for (std::size_t i = 0; i < Lin.size(); ++i) {
        const QString label = RowLabel(Words(), static_cast<int>(i));
        lblRow[i]->setText(label);
        Name(*Lin[i], label, "LineHelp");
    }
    Name(*optWhole, Text("CompleteText"), "CompleteTextHelp");
    Name(*optRows, Text("InRows"), "InRowsHelp");
    Name(*Pic, Text("InRows").trimmed() + " … " + Text("InRowsEnd").chopped(1), "PicHelp");
    Name(*chkDateFirst, Text("DateTimeFirst"), "DateTimeFirstHelp");
    SettingsWindow::ShowTexts();
    Preview->Renew();
}
