#include "ui/settings/ftp/offline_group.h"

#include "base/paths.h"
#include "base/whole_file.h"
#include "picture/picture_file.h"
#include "ui/widgets/preview_area.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr QSize previewSize(176, 132);
constexpr int shownCharacters = 16;  // of a name in the list; longer ones are cut there

}  // namespace

OfflineGroup::OfflineGroup(const Texts& ownWords, std::function<QStringList()> ownPlaces,
                           std::function<QSize()> ownCameraSize)
    : chkOfflinePic(new QCheckBox),
      chkFilter(new QCheckBox),
      cbOffline(new QComboBox),
      btnAddOffline(new QPushButton),
      txtOfflinePath(new QLineEdit),
      preview(new PreviewArea),
      lblOfflineSize(new QLabel),
      words(ownWords),
      places(std::move(ownPlaces)),
      cameraSize(std::move(ownCameraSize)),
      lblSelect(new QLabel),
      lblFolder(new QLabel),
      lblPreview(new QLabel) {
    LayOut();
    connect(cbOffline, &QComboBox::currentIndexChanged, this, &OfflineGroup::ShowPicture);
    connect(cbOffline, &QComboBox::activated, this, &OfflineGroup::Warn);
    connect(chkFilter, &QCheckBox::clicked, this, &OfflineGroup::Warn);
    connect(btnAddOffline, &QPushButton::clicked, this, &OfflineGroup::ChooseFile);
}

void OfflineGroup::LayOut() {
    cbOffline->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbOffline->setMinimumContentsLength(shownCharacters);
    cbOffline->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    lblSelect->setBuddy(cbOffline);
    lblFolder->setBuddy(txtOfflinePath);
    txtOfflinePath->setReadOnly(true);
    preview->SetCentred(true);
    preview->setFixedSize(previewSize);
    lblOfflineSize->setWordWrap(true);
    auto* sides = new QHBoxLayout(this);
    auto* grid = new QGridLayout;
    grid->addWidget(chkOfflinePic, 0, 0, 1, 2);
    grid->addWidget(chkFilter, 1, 0, 1, 2);
    grid->addWidget(lblSelect, 2, 0, 1, 2);
    grid->addWidget(cbOffline, 3, 0);
    grid->addWidget(btnAddOffline, 3, 1);
    grid->addWidget(lblFolder, 4, 0, 1, 2);
    grid->addWidget(txtOfflinePath, 5, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(6, 1);
    sides->addLayout(grid, 1);
    sides->addSpacing(fontMetrics().height());
    auto* look = new QVBoxLayout;
    look->addWidget(lblPreview);
    look->addWidget(preview);
    look->addWidget(lblOfflineSize);
    look->addStretch(1);
    sides->addLayout(look);
}

void OfflineGroup::ShowSettings(bool upload, bool filter, const QString& file) {
    chkOfflinePic->setChecked(upload);
    chkFilter->setChecked(filter);
    added.clear();
    List(file);
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
    const FilePicture picture = ReadPicture(entries.value(cbOffline->currentIndex()).Path);
    const bool fine = picture.Fault == PictureFault::None;
    found = picture.Fault != PictureFault::Missing;
    pictureSize = fine ? picture.Image.size() : QSize();
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
    auto* chooser = new QFileDialog(this, Text("AddOffline"), {},
                                    Text("Pictures") + " (*.jpg *.jpeg *.bmp *.png *.gif)");
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    chooser->setFileMode(QFileDialog::ExistingFile);
    connect(chooser, &QFileDialog::fileSelected, this, &OfflineGroup::Add);
    chooser->open();
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

void OfflineGroup::ShowTexts() {
    setTitle(Text("FrameOffline"));
    chkOfflinePic->setText(Text("OfflineUpload"));
    chkFilter->setText(Text("OfflineFilter"));
    lblSelect->setText(Text("OfflinePicture"));
    lblFolder->setText(Text("OfflineFolder"));
    lblPreview->setText(Text("Preview"));
    btnAddOffline->setText(Text("AddOffline"));
    const auto describe = [this](QWidget* control, const QString& key) {
        control->setToolTip(Text(key + "Help"));
        control->setAccessibleName(Text(key));
    };
    describe(chkOfflinePic, "OfflineUpload");
    describe(chkFilter, "OfflineFilter");
    describe(cbOffline, "OfflinePicture");
    describe(txtOfflinePath, "OfflineFolder");
    describe(btnAddOffline, "AddOffline");
    ShowSizes();
}
