#include "ui/settings/camera/frm_pfad.h"

#include "base/paths.h"
#include "base/profile_file.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "ui/settings/camera/folder_list.h"
#include "ui/widgets/mnemonics.h"

#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

frmPfad::frmPfad(Program& ownProgram, Texts& ownTexts, QWidget* parent)
    : QDialog(parent),
      Drive1(new QComboBox),
      Dir1(new FolderList),
      txtFolder(new QLineEdit),
      btnNew(new QPushButton),
      btnSave(new QPushButton),
      btnCancel(new QPushButton),
      lblNote(new QLabel),
      program(ownProgram),
      texts(ownTexts),
      frame(new QGroupBox),
      lblSearch(new QLabel),
      lblFolder(new QLabel) {
    Lay();
    Connect();
    ShowTexts();
}

void frmPfad::Lay() {
    lblSearch->setBuddy(Drive1);
    lblFolder->setBuddy(txtFolder);
    lblNote->setWordWrap(true);
    lblNote->setTextFormat(Qt::PlainText);
    Drive1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* inside = new QVBoxLayout(frame);
    inside->addWidget(lblSearch);
    inside->addWidget(Drive1);
    inside->addWidget(Dir1, 1);
    inside->addWidget(lblFolder);
    inside->addWidget(txtFolder);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnNew);
    buttons->addStretch(1);
    buttons->addWidget(btnSave);
    buttons->addWidget(btnCancel);
    auto* all = new QVBoxLayout(this);
    all->addWidget(frame, 1);
    all->addWidget(lblNote);
    all->addLayout(buttons);
    btnSave->setDefault(true);
    btnNew->setAutoDefault(false);
    btnCancel->setAutoDefault(false);
    txtFolder->installEventFilter(this);
}

void frmPfad::Connect() {
    connect(btnSave, &QPushButton::clicked, this, &frmPfad::accept);
    connect(btnCancel, &QPushButton::clicked, this, &frmPfad::reject);
    connect(btnNew, &QPushButton::clicked, this, &frmPfad::AskForName);
    connect(Drive1, &QComboBox::activated, this, [this](int index) {
        if (index < places.size()) Dir1->Open(places[index].Folder);
    });
    connect(Dir1, &FolderList::ReadingStarted, this, [this] { lblNote->setText(Text("Reading")); });
    connect(Dir1, &FolderList::Opened, this, &frmPfad::ShowFolder);
    connect(Dir1, &FolderList::itemSelectionChanged, this, &frmPfad::ShowPath);
    connect(Dir1, &FolderList::Unreadable, this, [this](const QString& folder) {
        acceptWhenOpened = false;
        lblNote->setText(Text("Unreadable").arg(Paths::Native(folder)));
        Drive1->setCurrentIndex(PlaceOf(places, Dir1->Folder()));
    });
    connect(&texts, &Texts::Changed, this, &frmPfad::ShowTexts);
}

void frmPfad::ShowTexts() {
    setWindowTitle(Text("Title"));
    frame->setTitle(Text("FramePath"));
    lblSearch->setText(Text("SearchIn"));
    lblFolder->setText(Text("Folder"));
    btnSave->setText(Text("Save"));
    btnCancel->setText(Text("Cancel"));
    btnNew->setText(Text("NewFolder"));
    Dir1->SetUpText(Text("Up"));
    const std::initializer_list<std::pair<QWidget*, QString>> helps{
        {Drive1, "Drive1"}, {Dir1, "Dir1"},       {txtFolder, "txtFolder"},
        {btnNew, "btnNew"}, {btnSave, "btnSave"}, {btnCancel, "btnCancel"}};
    for (const auto& [control, name] : helps) control->setToolTip(Text(name + "Help"));
    Drive1->setAccessibleName(Text("SearchIn"));
    Dir1->setAccessibleName(Text("Folders"));
    txtFolder->setAccessibleName(Text("Folder"));
    lblNote->clear();
    ShowPlaces();
    AssignMnemonics(*this);
}

void frmPfad::ShowPlaces() {
    Drive1->clear();
    for (const Place& place : places) {
        const QString folder = Paths::Native(place.Folder);
        const QString name = place.What == Place::Kind::Home    ? Text("Home")
                             : place.What == Place::Kind::Whole ? Text("Whole")
                                                                : place.Name;
        Drive1->addItem(name.isEmpty() ? folder : name + " (" + folder + ")");
    }
    Drive1->setCurrentIndex(PlaceOf(places, Dir1->Folder()));
}

void frmPfad::Open() {
    if (!isVisible()) {
        acceptWhenOpened = false;
        places = FixedPlaces();
        ShowPlaces();
        background.Run([this]() -> std::function<void()> {
            const QList<Place> mounted = MountedPlaces();
            return [this, mounted] {
                places = FixedPlaces() + mounted;
                ShowPlaces();
            };
        });
        Dir1->OpenNear(Begin());
        Dir1->setFocus();
    }
    show();
    raise();
    activateWindow();
}

QString frmPfad::Begin() const {
    const bool archive = program.State.PathForArchive;
    const QString key = archive ? QString("ArchivePath") : "Path";
    const QString written = ReadSetting(program.SettingsFile(), "Einstellungen", key);
    if (!written.isEmpty()) return SettingFolder(program.ProgramFolder(), written);
    return archive ? QDir::homePath() : program.State.Values.WorkPath;
}

void frmPfad::ShowPath() {
    txtFolder->setText(Paths::Native(Dir1->Path()));
}

void frmPfad::ShowFolder() {
    lblNote->clear();
    ShowPath();
    Drive1->setCurrentIndex(PlaceOf(places, Dir1->Folder()));
    if (acceptWhenOpened) accept();
}

// Enter in the field goes to the folder; a second one is needed for the button.
bool frmPfad::eventFilter(QObject* object, QEvent* event) {
    if (object == txtFolder && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool typed = txtFolder->text() != Paths::Native(Dir1->Path());
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && typed) {
            GoToTyped();
            return true;
        }
    }
    return QDialog::eventFilter(object, event);
}

void frmPfad::GoToTyped() {
    const QString typed = txtFolder->text().trimmed();
    if (typed.isEmpty()) {
        acceptWhenOpened = false;
        ShowPath();
        return;
    }
    Dir1->Open(QDir(Dir1->Folder()).absoluteFilePath(QDir::fromNativeSeparators(typed)));
}

void frmPfad::accept() {
    if (Dir1->Reading() || txtFolder->text() != Paths::Native(Dir1->Path())) {
        acceptWhenOpened = true;
        if (!Dir1->Reading()) GoToTyped();
        return;
    }
    acceptWhenOpened = false;
    hide();
    emit Chosen(Paths::Native(Dir1->Path()));
}

void frmPfad::AskForName() {
    auto* question = new QInputDialog(this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setWindowTitle(Text("NewFolderTitle"));
    question->setLabelText(Text("NewFolderName"));
    question->setOkButtonText(Text("NewFolderMake"));
    question->setCancelButtonText(Text("Cancel"));
    connect(question, &QInputDialog::textValueSelected, this, [this](const QString& name) {
        if (!Dir1->MakeFolder(name.trimmed()))
            lblNote->setText(Text("CannotMake").arg(Paths::Native(Dir1->Folder())));
    });
    question->open();
}
