#include "ui/frm_skin.h"

#include "core/program.h"
#include "ui/preview_area.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>

frmSkin::frmSkin(Program& ownProgram)
    : btnStart(AddButton("Start", "F5")),
      btnPause(AddButton("Pause", "F6")),
      btnStop(AddButton("Stop", "F7")),
      btnOptions(AddButton("Options", "F8")),
      btnMin(AddButton("Minimise", "F9")),
      btnExit(AddButton("Exit", "Ctrl+Q")),
      cbDriver(new QComboBox(this)),
      Label_Driver(new QLabel(this)),
      lblStatus(new QLabel(this)),
      program(ownProgram),
      preview(new PreviewArea(this)),
      lblTimeOut(new QLabel(this)),
      lblOnline(new QLabel(this)),
      lblCounters(new QLabel(this)) {
    setWindowTitle("Stillpost");
    cbDriver->setAccessibleName("Camera");
    preview->setAccessibleName("Preview");
    lblStatus->setAccessibleName("Status");
    // Steps and server texts are of any length; the window keeps its width.
    lblStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    btnStop->setEnabled(false);
    btnPause->setEnabled(false);
    LayOut();
    Connect();
    program.Display.Add(*this);
}

frmSkin::~frmSkin() {
    program.Display.Remove(*this);
}

QPushButton* frmSkin::AddButton(const QString& text, const QString& shortcut) {
    auto* button = new QPushButton(text, this);
    button->setToolTip(text + " (" + shortcut + ")");
    button->setShortcut(QKeySequence(shortcut));
    return button;
}

void frmSkin::LayOut() {
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {btnStart, btnPause, btnStop, btnOptions, btnMin, btnExit})
        buttons->addWidget(button);
    auto* driver = new QHBoxLayout;
    driver->addWidget(Label_Driver, 1);
    driver->addWidget(cbDriver);
    auto* status = new QHBoxLayout;
    status->addWidget(lblStatus, 1);
    status->addWidget(lblTimeOut);
    status->addWidget(lblCounters);
    status->addWidget(lblOnline);
    auto* all = new QVBoxLayout(this);
    all->addLayout(driver);
    all->addWidget(preview, 1);
    all->addLayout(buttons);
    all->addLayout(status);
}

void frmSkin::Connect() {
    UploadCycle& cycle = program.Cycle;
    connect(btnStart, &QPushButton::clicked, &program, &Program::Start);
    connect(btnPause, &QPushButton::clicked, &cycle, &UploadCycle::Pause);
    connect(btnStop, &QPushButton::clicked, &cycle, &UploadCycle::Stop);
    connect(btnOptions, &QPushButton::clicked, this, &frmSkin::OpenSettingsFile);
    connect(btnMin, &QPushButton::clicked, this, &QWidget::showMinimized);
    connect(btnExit, &QPushButton::clicked, &program, &Program::Exit);
    connect(&cycle, &UploadCycle::ButtonsEnabled, this, [this](bool start, bool stop) {
        btnStart->setEnabled(start);
        btnStop->setEnabled(stop);
        btnPause->setEnabled(program.Cycle.Running());
    });
    connect(&cycle, &UploadCycle::PausedChanged, this, [this](bool paused) {
        btnPause->setText(paused ? QString("Continue") : QString("Pause"));
    });
    connect(cbDriver, &QComboBox::activated, &program, &Program::SelectDriver);
    connect(&program, &Program::DriversChanged, this, &frmSkin::ShowDrivers);
    connect(&program, &Program::SettingsLoaded, this, &frmSkin::ShowPreviewSettings);
    connect(&program.ezVidCap1, &ezVidCap::PreviewFrame, preview, &PreviewArea::SetPicture);
    connect(&program.ezVidCap1, &ezVidCap::FaultChanged, this, [this](const QString& fault) {
        if (!fault.isEmpty()) preview->Clear();
    });
}

void frmSkin::ShowDrivers() {
    cbDriver->clear();
    cbDriver->addItems(program.DriverList());
    cbDriver->setCurrentIndex(std::max(0, program.DriverIndex()));
    cbDriver->setEnabled(program.State.DriverPresent);
    Label_Driver->setText(program.DriverText());
    QPalette colours = Label_Driver->palette();
    colours.setColor(QPalette::WindowText, program.State.DriverPresent ? Qt::blue : Qt::red);
    Label_Driver->setPalette(colours);
}

void frmSkin::ShowPreviewSettings() {
    preview->SetStretched(program.State.Values.StretchPreview);
    preview->SetCentred(program.State.Values.CenterVideo);
    if (!program.State.Values.Preview) preview->Clear();
}

void frmSkin::OpenSettingsFile() {
    QDesktopServices::openUrl(QUrl::fromLocalFile(program.SettingsFile()));
}

void frmSkin::ShowStatus(const QString& text) {
    lblStatus->setText(text);
    lblStatus->setToolTip(text);
}

void frmSkin::ShowTimeOutLabel(std::optional<int> seconds) {
    lblTimeOut->setText(seconds ? "Time Out: " + QString::number(*seconds) + " s" : QString());
}

void frmSkin::ShowOnline(bool online) {
    lblOnline->setText(online ? QString("Online") : QString("Offline"));
}

void frmSkin::ShowPictureCount(const QString& text) {
    pictureCount = text;
    ShowCounters();
}

void frmSkin::ShowMegabytes(const QString& text) {
    megabytes = text;
    ShowCounters();
}

void frmSkin::ShowCounters() {
    lblCounters->setText(pictureCount + "  " + megabytes);
}

void frmSkin::closeEvent(QCloseEvent* event) {
    // The window goes when the program has come to its orderly end, not before.
    event->ignore();
    program.Exit();
}
