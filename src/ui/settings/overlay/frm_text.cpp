#include "ui/settings/overlay/frm_text.h"

#include "base/paths.h"
#include "core/program.h"
#include "picture/overlay/special_text.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/messages.h"
#include "ui/widgets/file_chooser.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

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
      txtFile(new QLineEdit),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)) {
    LayOut();
    connect(optRows, &QRadioButton::toggled, Preview, &OverlayPreview::Restart);
    connect(&Controls, &Bindings::Edited, Preview, &OverlayPreview::Renew);
    connect(&Controls, &Bindings::TextsShown, Preview, &OverlayPreview::Renew);
    for (const auto signal : {&Bindings::Edited, &Bindings::TextsShown})
        connect(&Controls, signal, this, &frmText::ShowNote);
    Preview->SetEntries([this] { return PreviewEntries(); });
    Finish();
}

void frmText::LayOut() {
    AddEffect();
    auto* columns = new QHBoxLayout;
    columns->addWidget(TextFrame(), 2);
    QGroupBox* framePreview = Controls.Frame("FramePreview");
    (new QVBoxLayout(framePreview))->addWidget(Preview);
    columns->addWidget(framePreview, 3);
    Body().addLayout(columns, 1);
}

void frmText::AddEffect() {
    const auto inTurn = [this] { return optRows->isChecked(); };
    QGroupBox* frame = Controls.Frame("FrameEffect");
    Body().addWidget(frame);
    auto* rows = new SettingsRows(Controls, frame);
    rows->AddNote({.Text = "Orientation"});
    rows->Add(optWhole, {.Text = "CompleteText"});
    auto* line = new QHBoxLayout;
    auto* lblPictures = new QLabel;
    for (QWidget* each : std::initializer_list<QWidget*>{optRows, Pic, lblPictures})
        line->addWidget(each);
    line->addStretch(1);
    rows->AddWhole(line);
    Controls.Add(optRows, {.Key = "Effect",
                           .Text = "InRows",
                           .Section = textSection,
                           .Show = [this](const QString& written) { ShowEffect(written); },
                           .Value = [inTurn] { return inTurn() ? inRows : asWhole; }});
    // Whoever has set no number wants rows that move on.
    const auto name = [this] {
        return Text("InRows").trimmed() + " … " + Text("InRowsEnd").chopped(1);
    };
    Controls.Add(
        Pic,
        {.Key = "Pic", .Section = textSection, .Missing = "1", .Caption = name, .Enabled = inTurn});
    Controls.Add(lblPictures, {.Text = "InRowsEnd"});
    rows->Add(
        chkDateFirst,
        {.Key = "UB",
         .Text = "DateTimeFirst",
         .Section = textSection,
         .Enabled = inTurn,
         .Show = [this](const QString& above) { chkDateFirst->setChecked(above != "1"); },
         .Value = [this] { return chkDateFirst->isChecked() ? QString("0") : QString("1"); }});
}

QWidget* frmText::TextFrame() {
    QGroupBox* frame = Controls.Frame("FrameText");
    auto* rows = new SettingsRows(Controls, frame);
    for (int i = 0; i < static_cast<int>(Lin.size()); ++i) {
        auto* line = Lin[static_cast<std::size_t>(i)] = new QLineEdit;
        rows->Add(line, {.Key = "Lin" + QString::number(i),
                         .Help = "LineHelp",
                         .Section = textSection,
                         .Caption = [this, i] { return RowLabel(Words(), i); }});
    }
    constexpr int usualLetters = 22;
    Lin[0]->setMinimumWidth(usualLetters * Lin[0]->fontMetrics().averageCharWidth());
    rows->AddNote({.Text = "Hint"});
    AddFile(*rows);
    return frame;
}

void frmText::AddFile(SettingsRows& rows) {
    rows.AddSpace();
    rows.Add(txtFile, {.Key = "TextFile", .Section = textSection}, btnFile);
    Controls.Add(btnFile, {.Text = "ChooseTextFile"});
    rows.Add(Age, {.Key = "TextFileAge", .Section = textSection, .Enabled = [this] {
                       return !txtFile->text().isEmpty();
                   }});
    rows.AddNote({.Text = "TextFileHint"});
    connect(btnFile, &QPushButton::clicked, this, &frmText::ChooseFile);
}

void frmText::ChooseFile() {
    const QString begin = QFileInfo(txtFile->text()).path();
    auto& chooser = OpenFileChooser(this, QFileDialog::ExistingFile, Text("ChooseTextFile"), begin);
    connect(&chooser, &QFileDialog::fileSelected, txtFile,
            [this](const QString& file) { txtFile->setText(Paths::Native(file)); });
}

void frmText::ShowEffect(const QString& written) {
    (written == inRows ? optRows : optWhole)->setChecked(true);
}

void frmText::ShowSettings() {
    SettingsWindow::ShowSettings();
    Lin[0]->setFocus();
    ShowNote();
    Preview->Restart();
}

// With date and time in front of the text anyway, nothing is lost.
void frmText::ShowNote() {
    SpecialText text;
    text.Lin.front() = Lin[0]->text();
    QString mode;
    for (const ProfileEntry& entry : PreviewEntries())
        if (entry.Key == "Overlay") mode = entry.Value;
    const bool lost = optWhole->isChecked() && mode == special && LosesRest(text);
    Preview->SetNote(lost ? Text("RestLeftOut") : QString());
}

QList<ProfileEntry> frmText::Entries() const {
    const QString mode = Setting("Overlay");
    return Controls.Entries() << Entry("Overlay", mode == withDateTime ? mode : special);
}

// A kind of overlay that was chosen but not saved stays when it shows the lines.
QList<ProfileEntry> frmText::PreviewEntries() const {
    const QList<ProfileEntry> chosen = base ? base() : QList<ProfileEntry>();
    QList<ProfileEntry> entries = chosen + Entries();
    for (const ProfileEntry& entry : chosen)
        if (entry.Key == "Overlay" && ShowsLines(entry.Value)) entries << entry;
    return entries;
}
