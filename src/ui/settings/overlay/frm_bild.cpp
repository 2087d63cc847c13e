#include "ui/settings/overlay/frm_bild.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "core/program.h"
#include "core/settings/setting_table.h"
#include "picture/picture_state.h"
#include "ui/settings/overlay/overlay_files.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/messages.h"
#include "ui/widgets/drop_target.h"
#include "ui/widgets/file_chooser.h"

#include <QFile>
#include <QGridLayout>
#include <QGroupBox>

namespace {

const QString listSection = "Picture";

int MostPictures() {
    return SettingRowOf(u"Picture", u"PicGes").Most;
}

QString PictureKey(qsizetype number) {
    return QString::number(number) + "Pic";
}

}  // namespace

frmBild::frmBild(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "frmBild", parent),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)) {
    LayOut();
    ConnectControls();
    Finish();
}

void frmBild::LayOut() {
    auto* columns = new QHBoxLayout;
    columns->addWidget(ListFrame(), 1);
    auto* right = new QVBoxLayout;
    right->addWidget(EffectFrame());
    QGroupBox* framePreview = Controls.Frame("FramePreview");
    (new QVBoxLayout(framePreview))->addWidget(Preview);
    right->addWidget(framePreview, 1);
    columns->addLayout(right, 1);
    Body().addLayout(columns);
}

QWidget* frmBild::ListFrame() {
    QGroupBox* frame = Controls.Frame("FrameList");
    auto* grid = new QGridLayout(frame);
    constexpr int usualName = 16;
    List->setMinimumWidth(List->iconSize().width() +
                          usualName * List->fontMetrics().averageCharWidth());
    grid->addWidget(List, 0, 0);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {btnAdd, btnRemove, btnUp, btnDown}) buttons->addWidget(button);
    buttons->addStretch(1);
    buttons->addWidget(btnDeleteList);
    grid->addLayout(buttons, 0, 1);
    lblPicture->setTextFormat(Qt::PlainText);
    grid->addWidget(lblPicture, 1, 0, 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    const auto row = [this] { return List->currentRow(); };
    const auto last = [this] { return List->count() - 1; };
    Controls.Add(List, {.Text = "FrameList", .Help = "ListHelp"});
    Controls.Add(btnAdd, {.Text = "Add", .Enabled = [=] { return last() + 1 < MostPictures(); }});
    Controls.Add(btnRemove, {.Text = "Remove", .Enabled = [=] { return row() >= 0; }});
    Controls.Add(btnUp, {.Text = "Up", .Enabled = [=] { return row() > 0; }});
    Controls.Add(btnDown,
                 {.Text = "Down", .Enabled = [=] { return row() >= 0 && row() < last(); }});
    Controls.Add(btnDeleteList, {.Text = "DeleteList", .Enabled = [=] { return last() >= 0; }});
    return frame;
}

QWidget* frmBild::EffectFrame() {
    QGroupBox* frame = Controls.Frame("FrameEffect");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add(chkCapture, {.Key = "Capture", .Text = "OnlyOverlay", .Section = listSection});
    auto* change = new QHBoxLayout;
    auto* lblBefore = new QLabel;
    auto* lblAfter = new QLabel;
    for (QWidget* each : std::initializer_list<QWidget*>{lblBefore, UB, lblAfter})
        change->addWidget(each);
    change->addStretch(1);
    rows->AddWhole(change);
    // Whoever has set no number wants pictures that take turns.
    Controls.Add(UB,
                 {.Key = "UB",
                  .Text = "ChangeAfter",
                  .Section = listSection,
                  .Missing = "1",
                  .Enabled = [this] { return List->count() > 1; }},
                 lblBefore);
    Controls.Add(lblAfter, {.Text = "ChangeAfterEnd"});
    return frame;
}

void frmBild::ConnectControls() {
    connect(btnAdd, &QPushButton::clicked, this, &frmBild::ChooseFiles);
    new DropTarget(List, DropTarget::Takes::Files,
                   [this](const QStringList& files) { Add(files); });
    connect(btnRemove, &QPushButton::clicked, List, &PictureList::RemoveChosen);
    connect(btnUp, &QPushButton::clicked, this, [this] { List->MoveChosen(-1); });
    connect(btnDown, &QPushButton::clicked, this, [this] { List->MoveChosen(1); });
    connect(btnDeleteList, &QPushButton::clicked, this, &frmBild::DeleteList);
    connect(List, &PictureList::Changed, this, &frmBild::ShowState);
    connect(List, &QListWidget::currentRowChanged, this, &frmBild::ShowState);
    connect(chkCapture, &QCheckBox::toggled, this, &frmBild::WarnOfSizes);
    connect(&Controls, &Bindings::Edited, Preview, &OverlayPreview::Renew);
    connect(&Controls, &Bindings::TextsShown, this, [this] {
        UB->setAccessibleName(Text("ChangeAfter") + " … " + Text("ChangeAfterEnd").chopped(1));
        ShowPicture();
    });
    connect(&Controls, &Bindings::TextsShown, Preview, &OverlayPreview::Renew);
    // The camera's size may become known only now.
    connect(Preview, &OverlayPreview::Renewed, this, &frmBild::WarnOfSizes);
    connect(this, &SettingsWindow::Saved, this, [this] { RemoveCopies(List->Names()); });
    Preview->SetEntries([this] { return PreviewEntries(); });
}

QStringList frmBild::Places() const {
    return Core().PictureValues.ReadingFolders();
}

void frmBild::ShowSettings() {
    waiting.clear();
    copies.clear();
    List->clear();
    for (int i = 0; i < MostPictures(); ++i) {
        const QString name = Setting(PictureKey(i), listSection);
        if (name.isEmpty()) break;
        List->AddName(name);
    }
    warning.Begin(List->Names());
    SettingsWindow::ShowSettings();
    List->setCurrentRow(qMin(qMax(0, ValLong(Setting("Pic", listSection))), List->count() - 1));
    List->setFocus();
    ShowState();
    ReadSoon();
}

// What is still being read would be missing.
bool frmBild::Check() {
    return waiting.isEmpty();
}

QList<ProfileEntry> frmBild::Entries() const {
    const QStringList names = List->Names();
    const auto entry = [](const QString& key, const QString& value) {
        return ProfileEntry{listSection, key, value};
    };
    QList<ProfileEntry> entries = Controls.Entries()
                                  << Entry("PictureEff",
                                           names.isEmpty() ? QString("false") : QString("true"))
                                  << entry("Pic", QString::number(qMax(List->currentRow(), 0)));
    for (qsizetype i = 0; i < names.size(); ++i) entries << entry(PictureKey(i), names[i]);
    // What is left of a longer list, beyond gaps too, would go on behind this one.
    for (qsizetype i = names.size(); i <= MostPictures(); ++i)
        if (!Setting(PictureKey(i), listSection).isEmpty()) entries << entry(PictureKey(i), "");
    return entries << entry("PicGes", QString::number(names.size()));
}

// The list begins with the picture that is chosen.
QList<ProfileEntry> frmBild::PreviewEntries() const {
    QList<ProfileEntry> entries = (base ? base() : QList<ProfileEntry>()) + Entries();
    const QStringList names = List->Names();
    const int first = qMax(List->currentRow(), 0);
    for (qsizetype i = 0; i < names.size(); ++i)
        entries << ProfileEntry{listSection, PictureKey(i), names[(first + i) % names.size()]};
    return entries;
}

void frmBild::ChooseFiles() {
    const QString folder = Paths::Find(Places().value(0), "overlay");
    const QFileDialog& chooser =
        OpenFileChooser(this, QFileDialog::ExistingFiles, Text("AddTitle"), folder,
                        Text("AddFilter") + " (" + PictureKinds().join(u' ') + ")");
    connect(&chooser, &QFileDialog::filesSelected, this, &frmBild::Add);
}

void frmBild::Add(const QStringList& files) {
    const qsizetype room = MostPictures() - List->count() - waiting.size();
    waiting << files.first(qBound<qsizetype>(0, room, files.size()));
    if (room < files.size())
        Boxes().Show("Stillpost", Text("TooMany").arg(MostPictures()),
                     MessageBoxes::Icon::Information);
    ReadSoon();
}

void frmBild::DeleteList() {
    if (!Boxes().AskYes("Stillpost", Text("DeleteQuestion"))) return;
    waiting.clear();
    List->clear();
    ShowState();
}

void frmBild::ReadSoon() {
    if (reading) return;
    reading = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            reading = false;
            if (isVisible()) ReadNext();
        },
        Qt::QueuedConnection);
}

void frmBild::ReadNext() {
    const int unread = List->NextUnread();
    if (!waiting.isEmpty())
        ReadFile(waiting.takeFirst());
    else if (unread >= 0)
        List->SetPicture(unread, ReadPicture(OverlayFile(Places(), List->item(unread)->text())));
    ShowPicture();
    if (!waiting.isEmpty() || List->NextUnread() >= 0) {
        ReadSoon();
        return;
    }
    WarnOfSizes();
    if (refused.isEmpty()) return;
    Boxes().Show("Stillpost", refused.join('\n'), MessageBoxes::Icon::Warning);
    refused.clear();
}

void frmBild::ReadFile(const QString& path) {
    const QString shown = QFileInfo(path).fileName();
    const FilePicture picture = ReadPicture(path);
    if (picture.Fault != PictureFault::None) {
        refused << OverlayFaultText(Words(), shown, picture.Fault);
        return;
    }
    const auto adopted = AdoptOverlay(Places(), path);
    if (!adopted) {
        refused << Text("CannotCopy").arg(shown);
        return;
    }
    if (!adopted->Copy.isEmpty()) copies << adopted->Copy;
    warning.Choose(adopted->Name);
    List->AddName(adopted->Name);
    List->SetPicture(List->count() - 1, picture);
    List->setCurrentRow(List->count() - 1);
}

// Sent alone, a picture may be as large as it likes.
void frmBild::WarnOfSizes() {
    if (chkCapture->isChecked()) return;
    for (int row = 0; row < List->count(); ++row)
        if (warning.Tells(List->item(row)->text(), List->SizeOf(row), Preview->CameraSize()))
            Boxes().Show("Stillpost", ComposeMessages(Words(), {}).MsgOverlaySize,
                         MessageBoxes::Icon::Warning);
}

void frmBild::ShowState() {
    Controls.ApplyEnabled();
    ShowPicture();
    Preview->Restart();
}

void frmBild::ShowPicture() {
    const int row = List->currentRow();
    const QSize size = List->SizeOf(row);
    btnSave->setEnabled(waiting.isEmpty());
    QString about;
    if (!waiting.isEmpty())
        about = Text("Reading").arg(waiting.size());
    else if (!size.isEmpty())
        about = Text("About").arg(lblPicture->fontMetrics().elidedText(
                                      List->item(row)->text(), Qt::ElideMiddle, List->width() / 2),
                                  QString::number(size.width()), QString::number(size.height()));
    // Always two lines, so that nothing moves.
    lblPicture->setText(PicturesText(Words(), List->count()) + u'\n' + about);
    const QString name = row < 0 ? QString() : List->item(row)->text();
    Preview->SetNote(OverlayFaultText(Words(), name, List->FaultOf(row)));
}

// Copies of pictures that are not wanted after all.
void frmBild::RemoveCopies(const QStringList& kept) {
    for (const QString& copy : std::as_const(copies))
        if (!kept.contains(QFileInfo(copy).fileName(), Qt::CaseInsensitive)) QFile::remove(copy);
    copies.clear();
}

void frmBild::reject() {
    waiting.clear();
    RemoveCopies({});
    SettingsWindow::reject();
}
