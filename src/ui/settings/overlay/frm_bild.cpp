#include "ui/settings/overlay/frm_bild.h"

#include "base/message_boxes.h"
#include "base/paths.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "core/settings/setting_table.h"
#include "ui/settings/overlay/overlay_files.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/texts/messages.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>

namespace {

const QString listSection = "Picture";

int MostPictures() {
    return SettingRowOf(u"Picture", u"PicGes").Most;
}

QString PictureKey(qsizetype number) {
    return QString::number(number) + "Pic";
}

}  // namespace

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
    const Settings now = LoadSettings(Core().SettingsFile());
    chkCapture->setChecked(now.PictureCapture);
    // Whoever has set none wants pictures that take turns.
    const QString interval = Setting("UB", listSection);
    UB->SetValue(interval.isEmpty() ? 1 : now.PictureUB);
    List->setCurrentRow(qMin(qMax(0, now.PicturePic), List->count() - 1));
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
    QList<ProfileEntry> entries{
        Entry("PictureEff", names.isEmpty() ? QString("false") : QString("true")),
        entry("Capture", chkCapture->isChecked() ? "1" : "0"),
        entry("Pic", QString::number(qMax(List->currentRow(), 0)))};
    for (qsizetype i = 0; i < names.size(); ++i) entries << entry(PictureKey(i), names[i]);
    // What is left of a longer list, beyond gaps too, would go on behind this one.
    for (qsizetype i = names.size(); i <= MostPictures(); ++i)
        if (!Setting(PictureKey(i), listSection).isEmpty()) entries << entry(PictureKey(i), "");
    return entries << entry("PicGes", QString::number(names.size()))
                   << entry("UB", QString::number(UB->Value().value_or(1)));
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
    auto* chooser = new QFileDialog(this, Text("AddTitle"), folder,
                                    Text("AddFilter") + " (*.bmp *.jpg *.jpeg *.png *.gif)");
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setFileMode(QFileDialog::ExistingFiles);
    connect(chooser, &QFileDialog::filesSelected, this, &frmBild::Add);
    chooser->open();
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
    const int row = List->currentRow();
    btnAdd->setEnabled(List->count() < MostPictures());
    btnRemove->setEnabled(row >= 0);
    btnUp->setEnabled(row > 0);
    btnDown->setEnabled(row >= 0 && row < List->count() - 1);
    btnDeleteList->setEnabled(List->count() > 0);
    UB->setEnabled(List->count() > 1);
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
