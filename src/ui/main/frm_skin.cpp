#include "ui/main/frm_skin.h"

#include "core/program.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/picture_button.h"
#include "ui/widgets/preview_area.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QLabel>
#include <QShortcut>

frmSkin::frmSkin(Program& ownProgram, const SkinFolders& skinFolders, MessageBoxes& messageBoxes)
    : btnStart(new PictureButton({}, this)),
      btnPause(new PictureButton({}, this)),
      btnStop(new PictureButton({}, this)),
      btnOptions(new PictureButton({}, this)),
      btnMin(new PictureButton({}, this)),
      btnExit(new PictureButton({}, this)),
      pic_klappe_open(new PictureButton({}, this)),
      pic_klappe(new PictureBox(this)),
      LEDLeft(new PictureBox(this)),
      LEDReigth(new PictureBox(this)),
      preview(new PreviewArea(this)),
      cbDriver(new QComboBox(this)),
      Label_Driver(new QLabel(this)),
      lblStatus(new QLabel(this)),
      program(ownProgram),
      folders(skinFolders),
      boxes(messageBoxes),
      place(*this, ownProgram.Wait.OwnClock(), ownProgram.SettingsFile(), "Window") {
    // Steps and server texts are of any length; the window keeps its width.
    lblStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    btnStop->setEnabled(false);
    btnPause->setEnabled(false);
    SetTabOrder();
    Connect();
    ConnectCycle();
    ConnectCamera();
    ShowTexts();
    program.Display.Add(*this);
}

frmSkin::~frmSkin() {
    program.Display.Remove(*this);
}

void frmSkin::SetTabOrder() {
    QWidget* before = btnStart;
    for (QWidget* next : std::initializer_list<QWidget*>{btnPause, btnStop, btnOptions, btnMin,
                                                         btnExit, pic_klappe_open, cbDriver}) {
        setTabOrder(before, next);
        before = next;
    }
}

void frmSkin::Connect() {
    connect(btnStart, &PictureButton::clicked, &program, &Program::Start);
    connect(btnPause, &PictureButton::clicked, &program.Cycle, &UploadCycle::Pause);
    connect(btnStop, &PictureButton::clicked, &program.Cycle, &UploadCycle::Stop);
    connect(btnOptions, &PictureButton::clicked, this, [this] {
        emit OptionsWanted({btnOptions->mapToGlobal(QPoint()), btnOptions->size()});
    });
    connect(btnMin, &PictureButton::clicked, this, &frmSkin::Minimise);
    connect(btnExit, &PictureButton::clicked, &program, &Program::Leave);
    connect(pic_klappe_open, &PictureButton::clicked, this, [this] {
        flapOpen = !flapOpen;
        ShowFlap();
    });
    const auto* overview = new QShortcut(Qt::Key_F11, this);
    connect(overview, &QShortcut::activated, this, &frmSkin::StatusOverviewWanted);
    connect(&program, &Program::Ended, this, [this] { place.Save(); });
}

void frmSkin::ConnectCycle() {
    connect(&program.Cycle, &UploadCycle::ButtonsEnabled, this, &frmSkin::EnableButtons);
    connect(&program.Cycle, &UploadCycle::PausedChanged, this, &frmSkin::ShowPauseText);
    connect(&program.Transaction, &UploadTransaction::SendStarted, this, &frmSkin::ShowSending);
    connect(&program.Transaction, &UploadTransaction::LogChanged, this, &frmSkin::ShowSending);
}

// The keyboard stays among the three: from a button that is switched off it goes to the one that
// takes its effect back, as soon as that one is there, not to whatever comes next in the window.
void frmSkin::EnableButtons(bool start, bool stop) {
    QWidget* const before = focusWidget();
    const bool waited = keyboardWaits && before == this;
    const bool pause = program.Cycle.Running();
    const bool leaves = (before == btnStart && !start) || (before == btnStop && !stop) ||
                        (before == btnPause && !pause);
    if (leaves) setFocus();
    btnStart->setEnabled(start);
    btnStop->setEnabled(stop);
    btnPause->setEnabled(pause);
    keyboardWaits = (leaves || waited) && !start && !stop;
    if ((leaves || waited) && !keyboardWaits) (stop ? btnStop : btnStart)->setFocus();
}

void frmSkin::ConnectCamera() {
    connect(cbDriver, &QComboBox::activated, &program, &Program::SelectDriver);
    connect(&program, &Program::DriversChanged, this, &frmSkin::ShowDrivers);
    connect(&program, &Program::SettingsLoaded, this, &frmSkin::ShowPreviewSettings);
    connect(&program, &Program::PreviewChanged, this, &frmSkin::ShowPreviewSettings);
    connect(&program.ezVidCap1, &ezVidCap::PreviewFrame, preview, &PreviewArea::SetPicture);
    connect(preview, &PreviewArea::RoomChanged, &program.ezVidCap1, &ezVidCap::SetPreviewSize);
    connect(&program.ezVidCap1, &ezVidCap::FaultChanged, this, [this](const QString& fault) {
        if (!fault.isEmpty()) preview->Clear();
    });
}

void frmSkin::ShowDrivers() {
    cbDriver->clear();
    // What is listed now may say in another language that there is none.
    if (program.State.DriverPresent)
        cbDriver->addItems(program.DriverList());
    else
        cbDriver->addItem(program.DriverText());
    cbDriver->setCurrentIndex(program.State.DriverPresent ? program.DriverIndex() : 0);
    cbDriver->setEnabled(program.State.DriverPresent);
    Label_Driver->setText(program.DriverText());
    QPalette colours = Label_Driver->palette();
    colours.setColor(QPalette::WindowText, program.State.DriverPresent ? Qt::blue : Qt::red);
    Label_Driver->setPalette(colours);
    if (layoutComplete) PlaceDriverArea();
}

void frmSkin::ShowPreviewSettings() {
    preview->SetStretched(program.State.Values.StretchPreview);
    preview->SetCentred(program.State.Values.CenterVideo);
    if (!program.State.Values.Preview) preview->Clear();
}

void frmSkin::Minimise() {
    // No mouse tells a minimised window that it has left.
    btnMin->ShowNormal();
    showMinimized();
}

void frmSkin::closeEvent(QCloseEvent* event) {
    // The window goes when the program has come to its orderly end, not before.
    event->ignore();
    program.Leave();
}
