#include "ui/settings/frm_pfad.h"

#include "base/paths.h"
#include "texts/texts.h"
#include "ui/settings/folder_list.h"
#include "ui/settings/settings_rows.h"
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

frmPfad::frmPfad(const Texts& texts, QWidget* parent)
    : QDialog(parent),
      Drive1(new QComboBox),
      Dir1(new FolderList),
      txtFolder(new QLineEdit),
      btnNew(new QPushButton),
      btnSave(new QPushButton),
      btnCancel(new QPushButton),
      lblNote(new QLabel),
      lblPurpose(new QLabel),
      controls(texts, "frmPfad") {
    LayOut();
    Connect();
    connect(&texts, &Texts::Changed, &controls, &Bindings::ShowTexts);
    controls.ShowTexts();
}

void frmPfad::LayOut() {
    for (QLabel* label : {lblNote, lblPurpose}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
    }
    Drive1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QGroupBox* frame = controls.Frame("FramePath");
    auto* rows = new SettingsRows(controls, frame);
    rows->AddWhole(lblPurpose);
    rows->AddBelow(Drive1, {.Text = "SearchIn"});
    rows->AddWhole(Dir1);
    controls.Add(Dir1, {.Text = "Folders"});
    rows->AddBelow(txtFolder, {.Text = "Folder"});
    rows->Stretch(Dir1);
    controls.Add(btnNew, {.Text = "NewFolder"});
    controls.Add(btnSave, {.Text = "Save"});
    controls.Add(btnCancel, {.Text = "Cancel"});
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
    connect(&controls, &Bindings::TextsShown, this, &frmPfad::ShowTexts);
}

void frmPfad::ShowTexts() {
    setWindowTitle(Text("Title"));
    Dir1->SetUpText(Text("Up"));
    lblNote->clear();
    ShowPurpose();
    ShowPlaces();
    AssignMnemonics(*this);
}

void frmPfad::ShowPurpose() {
    const QString key = purpose == Purpose::Archive      ? QString("ForArchive")
                        : purpose == Purpose::Publishing ? QString("ForPublishing")
                                                         : QString("ForPictures");
    lblPurpose->setText(Text(key));
    setAccessibleDescription(lblPurpose->text());
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

void frmPfad::Open(const QString& folder, Purpose isFor) {
    purpose = isFor;
    ShowPurpose();
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
        Dir1->Open(folder, true);
        Dir1->setFocus();
    }
    show();
    raise();
    activateWindow();
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

bool frmPfad::Typed() const {
    return txtFolder->text() != Paths::Native(Dir1->Path());
}

void frmPfad::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == txtFolder && Typed())
        GoToTyped();
    else
        QDialog::keyPressEvent(event);
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
    if (Dir1->Reading() || Typed()) {
        acceptWhenOpened = true;
        if (!Dir1->Reading()) GoToTyped();
        return;
    }
    acceptWhenOpened = false;
    QDialog::accept();
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
