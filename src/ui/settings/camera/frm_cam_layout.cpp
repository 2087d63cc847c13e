#include "base/paths.h"
#include "core/program.h"
#include "ui/settings/camera/frm_cam.h"
#include "ui/settings/camera/path_field.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

// What the window of the camera settings looks like, and what it says.

namespace {

// Its list is renewed when it is opened: a camera may have been plugged in meanwhile.
class DriverBox : public QComboBox {
  public:
    explicit DriverBox(Program& ownProgram) : program(ownProgram) {}
    void showPopup() override {
        program.RefreshDrivers();
        QComboBox::showPopup();
    }

  private:
    Program& program;
};

}  // namespace

void frmCam::Lay() {
    lblDriver = new QLabel;
    lblPath = new QLabel;
    frameDriver = new QGroupBox;
    LayDriver(*frameDriver);
    LayPaths();
    lblDriver->setBuddy(cbDriver);
    lblPath->setBuddy(Text5);
    lblArchiveNote->setWordWrap(true);
    lblArchiveNote->setTextFormat(Qt::PlainText);
    setTabOrder(asFlatTextBox1->btnBrowse, btnSave);
}

void frmCam::LayDriver(QGroupBox& group) {
    cbDriver = new DriverBox(Core());
    chkPreview = new QCheckBox;
    chkStretch = new QCheckBox;
    chkCenter = new QCheckBox;
    btnSource = new QPushButton;
    btnFormat = new QPushButton;
    btnPicture = new QPushButton;
    auto* grid = new QGridLayout(&group);
    auto* list = new QHBoxLayout;
    list->addWidget(lblDriver);
    list->addWidget(cbDriver, 1);
    grid->addLayout(list, 0, 0, 1, 2);
    int row = 1;
    for (QCheckBox* option : {chkPreview, chkStretch, chkCenter}) grid->addWidget(option, row++, 0);
    row = 1;
    for (QPushButton* button : {btnSource, btnFormat, btnPicture})
        grid->addWidget(button, row++, 1);
    grid->setColumnStretch(0, 1);
    Body().addWidget(&group);
}

void frmCam::LayPaths() {
    asFlatCheck1 = new QCheckBox;
    Text5 = new PathField(this);
    asFlatTextBox1 = new PathField(this);
    lblArchiveNote = new QLabel;
    auto* frame = new QFrame;
    auto* grid = new QGridLayout(frame);
    constexpr int space = 12;
    grid->addWidget(lblPath, 0, 0, 1, 2);
    grid->addWidget(Text5, 1, 0);
    grid->addWidget(Text5->btnBrowse, 1, 1);
    grid->setRowMinimumHeight(2, space);
    grid->addWidget(asFlatCheck1, 3, 0, 1, 2);
    grid->addWidget(asFlatTextBox1, 4, 0);
    grid->addWidget(asFlatTextBox1->btnBrowse, 4, 1);
    grid->addWidget(lblArchiveNote, 5, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    Body().addWidget(frame);
    Body().addStretch(1);
}

void frmCam::ShowTexts() {
    frameDriver->setTitle(Text("FrameDriver"));
    lblDriver->setText(Text("Driver"));
    chkPreview->setText(Text("Preview"));
    chkStretch->setText(Text("Stretch"));
    chkCenter->setText(Text("Center"));
    btnSource->setText(Text("Source"));
    btnFormat->setText(Text("Format"));
    btnPicture->setText(Text("Picture"));
    lblPath->setText(Text("ArchivePath"));
    asFlatCheck1->setText(Text("ArchiveOption"));
    // What an empty field stands for.
    Text5->setPlaceholderText(Paths::WithSeparator(QDir(Core().ProgramFolder()).filePath("work")));
    ShowHelp();
    ShowDrivers();
    LookForArchive();
    SettingsWindow::ShowTexts();
}

void frmCam::ShowHelp() {
    const std::initializer_list<std::pair<QWidget*, QString>> helps{
        {cbDriver, "cbDriver"},         {chkPreview, "chkPreview"},
        {chkStretch, "chkStretch"},     {chkCenter, "chkCenter"},
        {btnSource, "btnSource"},       {Text5, "Text5"},
        {asFlatCheck1, "asFlatCheck1"}, {asFlatTextBox1, "asFlatTextBox1"}};
    for (const auto& [control, name] : helps) control->setToolTip(Text(name + "Help"));
    cbDriver->setAccessibleName(Text("Driver"));
    Text5->setAccessibleName(Text("ArchivePath"));
    asFlatTextBox1->setAccessibleName(Text("ArchiveFolder"));
    for (PathField* field : {Text5, asFlatTextBox1}) {
        field->btnBrowse->setToolTip(Text("BrowseHelp"));
        field->btnBrowse->setAccessibleName(Text("BrowseHelp") + ": " + field->accessibleName());
    }
}
