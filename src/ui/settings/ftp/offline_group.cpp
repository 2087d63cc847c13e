#include "ui/settings/ftp/offline_group.h"

#include "base/paths.h"
#include "base/whole_file.h"
#include "picture/bitmap/picture_file.h"
#include "ui/settings/settings_rows.h"
#include "ui/widgets/drop_target.h"
#include "ui/widgets/file_chooser.h"
#include "ui/widgets/preview_area.h"

#include <QDir>
#include <QHBoxLayout>

#include <algorithm>

namespace {

constexpr QSize previewSize(176, 132);
constexpr int shownCharacters = 16;  // of a name in the list; longer ones are cut there

}  // namespace

OfflineGroup::OfflineGroup(Bindings& bindings, const Texts& ownWords,
                           std::function<QStringList()> ownPlaces,
                           std::function<QSize()> ownCameraSize)
    : words(ownWords), places(std::move(ownPlaces)), cameraSize(std::move(ownCameraSize)) {
    LayOut(bindings);
    connect(cbOffline, &QComboBox::currentIndexChanged, this, &OfflineGroup::ShowPicture);
    connect(cbOffline, &QComboBox::activated, this, &OfflineGroup::Warn);
    connect(chkFilter, &QCheckBox::clicked, this, &OfflineGroup::Warn);
    connect(btnAddOffline, &QPushButton::clicked, this, &OfflineGroup::ChooseFile);
    connect(&bindings, &Bindings::TextsShown, this, &OfflineGroup::ShowSizes);
    txtOfflinePath->setAcceptDrops(false);
    new DropTarget(this, DropTarget::Takes::Files,
                   [this](const QStringList& files) { Add(files.first()); });
}

void OfflineGroup::LayOut(Bindings& bindings) {
    cbOffline->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbOffline->setMinimumContentsLength(shownCharacters);
    cbOffline->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    txtOfflinePath->setReadOnly(true);
    preview->SetCentred(true);
    preview->setFixedSize(previewSize);
    lblOfflineSize->setWordWrap(true);
    bindings.Add(this, {.Text = "FrameOffline"});
    auto* rows = new SettingsRows(bindings);
    rows->Add(chkOfflinePic, {.Key = "OfflinePic", .Text = "OfflineUpload"});
    rows->Add(chkFilter, {.Key = "UseOfflineFilter", .Text = "OfflineFilter"});
    rows->AddBelow(cbOffline,
                   {.Key = "Offlinefile",
                    .Text = "OfflinePicture",
                    .Show =
                        [this](const QString& file) {
                            added.clear();
                            List(file);
                        },
                    .Value = [this] { return File(); }},
                   btnAddOffline);
    bindings.Add(btnAddOffline, {.Text = "AddOffline"});
    rows->AddBelow(txtOfflinePath, {.Text = "OfflineFolder"});
    auto* lblPreview = new QLabel;
    bindings.Add(lblPreview, {.Text = "Preview"});
    auto* look = new QVBoxLayout;
    look->addWidget(lblPreview);
    look->addWidget(preview);
    look->addWidget(lblOfflineSize);
    look->addStretch(1);
    auto* sides = new QHBoxLayout(this);
    sides->addLayout(rows, 1);
    sides->addSpacing(fontMetrics().height());
    sides->addLayout(look);
}

// A picture that is gone stays in the list while it is the one chosen.
void OfflineGroup::List(const QString& chosen) {
    entries = OfflinePictures(places()) + added;
    const QString name = Paths::Native(chosen);
    const auto at = std::find_if(entries.begin(), entries.end(), [&](const OfflineEntry& entry) {
        return entry.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    const auto index = at - entries.begin();
    if (at == entries.end())
        entries << OfflineEntry{chosen, FindPicture(places(), "Offline", chosen)};
    const QSignalBlocker quiet(cbOffline);
    cbOffline->clear();
    for (const OfflineEntry& entry : std::as_const(entries)) cbOffline->addItem(entry.Name);
    cbOffline->setCurrentIndex(static_cast<int>(index));
    txtOfflinePath->setText(Paths::WithSeparator(QDir(places().value(0)).filePath("Offline")));
    txtOfflinePath->setCursorPosition(0);
    ShowPicture();
}

QString OfflineGroup::File() const {
    return entries.value(cbOffline->currentIndex()).Name;
}

int OfflineGroup::Index() const {
    return qMax(0, cbOffline->currentIndex());
}

bool OfflineGroup::FolderExists() const {
    const QStringList all = places();
    return std::any_of(all.begin(), all.end(), [](const QString& place) {
        return !Paths::Find(place, "Offline").isEmpty();
    });
}

void OfflineGroup::ShowPicture() {
    const FilePicture picture =
        ReadPicture(entries.value(cbOffline->currentIndex()).Path, previewSize);
    const bool fine = picture.Fault == PictureFault::None;
    found = picture.Fault != PictureFault::Missing;
    pictureSize = picture.Size;
    // A large picture is not kept in memory for a look at it.
    const QSize shown = previewSize * preview->devicePixelRatioF();
    preview->SetPicture(fine ? OpaquePicture(picture.Image)
                                   .scaled(shown, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                             : QImage());
    ShowSizes();
}

void OfflineGroup::ShowSizes() {
    const auto size = [this](const QString& key, const QSize& of) {
        return Text(key).arg(of.width()).arg(of.height());
    };
    if (!Usable()) {
        lblOfflineSize->setText(found ? Text("OfflineUnreadable") : Text("OfflineMissing"));
        return;
    }
    QString text = size("OfflineSize", pictureSize);
    const QSize camera = cameraSize();
    if (!camera.isEmpty()) text += u'\n' + size("CameraSize", camera);
    lblOfflineSize->setText(text);
}

bool OfflineGroup::TooSmall() const {
    const QSize camera = cameraSize();
    const bool smaller =
        pictureSize.width() < camera.width() || pictureSize.height() < camera.height();
    return chkFilter->isChecked() && Usable() && smaller;
}

void OfflineGroup::Warn() {
    ShowSizes();
    if (TooSmall()) emit FoundTooSmall();
}

void OfflineGroup::ChooseFile() {
    const QFileDialog& chooser =
        OpenFileChooser(this, QFileDialog::ExistingFile, Text("AddOffline"), {},
                        Text("Pictures") + " (" + PictureKinds().join(u' ') + ")");
    connect(&chooser, &QFileDialog::fileSelected, this, &OfflineGroup::Add);
}

void OfflineGroup::Add(const QString& path) {
    QStringList taken;
    for (const OfflineEntry& entry : std::as_const(entries)) taken << entry.Name;
    const OfflineEntry entry{FreeName(QFileInfo(path).fileName(), taken), path};
    added << entry;
    List(entry.Name);
    Warn();
}

bool OfflineGroup::CopyAdded() {
    const OfflineEntry chosen = entries.value(cbOffline->currentIndex());
    if (!added.contains(chosen)) return true;
    QString folder = Paths::Find(places().value(0), "Offline");
    if (folder.isEmpty()) folder = QDir(places().value(0)).filePath("Offline");
    return QDir().mkpath(folder) &&
           WholeFile::Copy(chosen.Path, QDir(folder).filePath(chosen.Name));
}
