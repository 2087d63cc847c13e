#include "ui/status/frm_status.h"

#include "base/profile_file.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/settings/interval.h"
#include "core/settings/quality_choice.h"
#include "core/upload_cycle.h"
#include "texts/texts.h"
#include "ui/skin/skin.h"
#include "ui/status/glyph_button.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"
#include "ui/status/status_texts.h"

#include <QAction>
#include <QEvent>
#include <QKeyEvent>

namespace {

constexpr int second = 1000;
constexpr int gaugeSeconds = 25;  // the time-out is shown for so long
const QString qualityCaption = QStringLiteral("JPG - Quality");
const QString intervalCaption = QStringLiteral("Upload");

}  // namespace

frmStatus::frmStatus(Program& ownProgram, const SkinFolders& skinFolders, Texts& ownTexts)
    : Label1(new ReadoutLabel(this)),
      Label2(new ReadoutLabel(this)),
      Label3(new ReadoutLabel(this)),
      Label4(new ReadoutLabel(this)),
      Label5(new ReadoutLabel(this)),
      Label6(new ReadoutLabel(this)),
      Label7(new ReadoutLabel(this)),
      Label8(new ReadoutLabel(this)),
      Label9(new ReadoutLabel(this)),
      lblAufloesung(new ReadoutLabel(this)),
      lblJPG(new ReadoutLabel(this)),
      lblmouseover(new ReadoutLabel(this)),
      lblOverlay(new ReadoutLabel(this)),
      lblTime(new ReadoutLabel(this)),
      lblUpload(new ReadoutLabel(this)),
      Slider1(new PictureSlider(QualityValues, this)),
      Slider2(new PictureSlider(IntervalValues, this)),
      ProgressBar1(new PictureBar(this)),
      Gauge(new PictureBar(this)),
      btnClose(new GlyphButton(GlyphButton::Glyph::Cross, this)),
      program(ownProgram),
      folders(skinFolders),
      texts(ownTexts),
      memory(ownProgram.Wait.OwnClock()),
      place(*this, ownProgram.Wait.OwnClock(), ownProgram.SettingsFile(), "Status"),
      Timer1(ownProgram.Wait.OwnClock(), second) {
    Label1->setText("Treiber");
    Label2->setText("Rec.");
    Label3->setText("Online");
    Label4->setText("Offline");
    Label5->setText(qualityCaption);
    Label6->setText(intervalCaption);
    Label9->hide();
    lblmouseover->setWordWrap(true);
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);
    Gauge->setRange(0, gaugeSeconds);
    Gauge->hide();
    ShowQuality(50);
    NameControls();
    SetFonts();
    Connect();
    ConnectSliders();
    AddContextMenu();
    ShowNames();
    program.Display.Add(memory);
    program.Display.Add(*this);
}

frmStatus::~frmStatus() {
    // A slider that is still held lets go when the window goes, and nobody is there to hear it.
    for (PictureSlider* slider : {Slider1, Slider2}) slider->disconnect(this);
    program.Display.Remove(*this);
    program.Display.Remove(memory);
    program.State.StatusShown = false;
}

QList<ReadoutLabel*> frmStatus::StatusLabels() const {
    return {Label1,        Label2, Label3,       Label4,     Label7,  Label8,   Label9,
            lblAufloesung, lblJPG, lblmouseover, lblOverlay, lblTime, lblUpload};
}

// The names under which the texts have the help for each control.
void frmStatus::NameControls() {
    struct Name {
        QWidget* Control;
        QString Is;
    };
    for (const Name& each :
         std::initializer_list<Name>{{Label1, "Label1"},         {Label2, "Label2"},
                                     {Label3, "Label3"},         {Label4, "Label4"},
                                     {Label5, "Slider1"},        {Label6, "Slider2"},
                                     {Label7, "Label7"},         {Label8, "Label8"},
                                     {Label9, "Label9"},         {lblAufloesung, "lblAufloesung"},
                                     {lblJPG, "lblJPG"},         {lblmouseover, "lblmouseover"},
                                     {lblOverlay, "lblOverlay"}, {lblTime, "lblTime"},
                                     {lblUpload, "lblUpload"},   {Slider1, "Slider1"},
                                     {Slider2, "Slider2"},       {ProgressBar1, "ProgressBar1"},
                                     {Gauge, "Gauge"},           {btnClose, "btnClose"}}) {
        each.Control->setObjectName(each.Is);
        each.Control->installEventFilter(this);
    }
}

void frmStatus::Connect() {
    connect(&program, &Program::SettingsLoaded, this, [this] {
        if (InUse()) RefreshStatus();
    });
    connect(&program, &Program::DriversChanged, this, [this] {
        if (InUse()) RefreshStatus();
    });
    connect(&program, &Program::Ended, this, [this] { place.Save(); });
    connect(&texts, &Texts::Changed, this, &frmStatus::ShowNames);
    connect(&Timer1, &Timer::Tick, this, &frmStatus::ShowRunningTime);
    connect(btnClose, &GlyphButton::clicked, this, &QWidget::close);
}

void frmStatus::ConnectSliders() {
    connect(Slider1, &PictureSlider::Taken, this, [this] { Label5->setText(qualityCaption); });
    connect(Slider1, &PictureSlider::Offered, this, &frmStatus::ShowQuality);
    connect(Slider1, &PictureSlider::Chosen, this, &frmStatus::SaveQuality);
    connect(Slider2, &PictureSlider::Taken, this, [this] { Label6->setText(intervalCaption); });
    connect(Slider2, &PictureSlider::Offered, this, &frmStatus::ShowInterval);
    connect(Slider2, &PictureSlider::Released, this, [this] { Label6->setText(intervalCaption); });
    connect(Slider2, &PictureSlider::Chosen, this, &frmStatus::SaveInterval);
}

void frmStatus::AddContextMenu() {
    closeAction = new QAction(this);
    addAction(closeAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(closeAction, &QAction::triggered, this, &QWidget::close);
}

// What screen readers and the window list say.
void frmStatus::ShowNames() {
    const auto text = [this](const QString& key) { return texts.Get("frmStatus", key); };
    setWindowTitle(text("Title"));
    closeAction->setText(text("CloseName"));
    btnClose->setText(text("CloseName"));
    btnClose->setToolTip(text("btnCloseHelp"));
    Slider1->setAccessibleName(text("Slider1Name"));
    Slider2->setAccessibleName(text("Slider2Name"));
    ProgressBar1->setAccessibleName(text("ProgressBar1Name"));
    Gauge->setAccessibleName(text("GaugeName"));
    for (ReadoutLabel* label : StatusLabels())
        label->setAccessibleDescription(text(label->objectName() + "Help"));
    if (underMouse) ShowHelpFor(underMouse);
}

void frmStatus::Show(const QWidget* neighbour) {
    if (!dressed) {
        Skin skin(folders, folders.Choose(program.State.SkinName));
        LoadBackground(skin);
        ApplyStatusLayout(skin);
    }
    if (!isVisible()) place.Restore(neighbour);
    isMinimized() ? showNormal() : show();
    raise();
    activateWindow();
}

void frmStatus::ShowHelpFor(const QObject* control) {
    ShowHelp(texts.Get("frmStatus", control->objectName() + "Help"));
    underMouse = control;
}

void frmStatus::ShowHelp(const QString& text) {
    underMouse = nullptr;
    if (InUse()) lblmouseover->setText(text);
}

bool frmStatus::eventFilter(QObject* object, QEvent* event) {
    const auto kind = event->type();
    if (kind == QEvent::Enter || kind == QEvent::FocusIn)
        ShowHelpFor(object);
    else if ((kind == QEvent::Leave || kind == QEvent::FocusOut) && object == underMouse)
        ShowHelp({});
    return ShapedWindow::eventFilter(object, event);
}

void frmStatus::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        ShapedWindow::keyPressEvent(event);
}

void frmStatus::closeEvent(QCloseEvent* event) {
    place.Save();
    ShapedWindow::closeEvent(event);
    emit Closed();
}

// What the status window shows of the work, and what its sliders change.

bool frmStatus::InUse() const {
    return program.State.StatusShown;
}

void frmStatus::showEvent(QShowEvent* event) {
    ShapedWindow::showEvent(event);
    program.State.StatusShown = true;
    Timer1.SetEnabled(true);
    RefreshStatus();
    // Before the first step nothing was said yet.
    const bool fresh = memory.Status.isNull() && !program.Run.Running();
    ShowStatus(fresh ? QString("stopped") : memory.Status);
    ShowRecording(memory.Recording);
    ShowOnline(memory.Online);
    ShowUpload(memory.Upload);
    ShowPictureCount(memory.PictureCount);
    ShowMegabytes(memory.Megabytes);
    ShowTimeOutLabel({});
    ShowTimeOutGauge({});
    ShowRunningTime();
    ShowHelp({});
}

void frmStatus::hideEvent(QHideEvent* event) {
    ShapedWindow::hideEvent(event);
    program.State.StatusShown = false;
    Timer1.SetEnabled(false);
}

void frmStatus::ShowStatus(const QString& text) {
    Label4->setText(text);
}

void frmStatus::ShowTimeOutLabel(std::optional<int> seconds) {
    if (seconds) Label9->setText(StatusTexts::TimeOut(*seconds));
    Label9->setVisible(seconds.has_value());
}

void frmStatus::ShowTimeOutGauge(std::optional<int> seconds) {
    if (seconds) Gauge->SetValue(*seconds);
    Gauge->setVisible(seconds.has_value());
}

void frmStatus::ShowOnline(bool online) {
    Label3->setVisible(online);
}

void frmStatus::ShowRecording(const QString& text) {
    Label2->setText(text);
}

void frmStatus::ShowUpload(int percent) {
    ProgressBar1->SetValue(std::clamp(percent, 0, 100));
}

void frmStatus::ShowPictureCount(const QString& text) {
    Label7->setText(text);
    ShowFormat();
}

void frmStatus::ShowMegabytes(const QString& text) {
    Label8->setText(text);
}

void frmStatus::ShowRunningTime() {
    lblTime->setText(StatusTexts::RunningTime(memory.RunningTime()));
}

void frmStatus::ShowFormat() {
    const QSize size(program.ezVidCap1.Width(), program.ezVidCap1.Height());
    lblAufloesung->setText(program.State.DriverPresent ? StatusTexts::Format(size) : QString());
}

void frmStatus::ShowQuality(int percent) {
    lblJPG->setText(StatusTexts::Quality(percent));
    Slider1->setAccessibleDescription(lblJPG->text());
}

void frmStatus::ShowInterval(qint64 milliseconds) {
    lblUpload->setText(StatusTexts::Interval(milliseconds));
    if (Slider2->Choosing()) Label6->setText(StatusTexts::ChosenInterval(milliseconds));
    Slider2->setAccessibleDescription(lblUpload->text());
}

void frmStatus::RefreshStatus() {
    const Settings& values = program.State.Values;
    const QString selected = program.DriverText();
    if (!program.State.DriverPresent)
        Label1->setText("No Video Capture Device!");
    else
        Label1->setText(selected.isEmpty() ? values.Treiber : selected);
    // What is being chosen at this moment stands.
    if (!Slider1->Choosing()) {
        const int quality = values.JPGQuality;
        ShowQuality(quality);
        Slider1->SetValue(quality);
    }
    if (!Slider2->Choosing()) {
        const qint64 interval = values.TotalInterval();
        ShowInterval(interval);
        Slider2->SetValue(
            static_cast<int>(std::min<qint64>(interval, std::numeric_limits<int>::max())));
    }
    ShowFormat();
    lblOverlay->setText(StatusTexts::Overlay(static_cast<int>(values.Overlay)));
}

// Counts for this run even where the file cannot be written.
void frmStatus::SaveQuality(int percent) {
    program.State.Values.JPGQuality = percent;
    (void)program.ChangeSettings(
        {{"Einstellungen", "JPGQuality", QString::number(percent)},
         {"Einstellungen", "Quali", QString::number(NearestQualityChoice(percent))}});
    ShowQuality(percent);
}

void frmStatus::SaveInterval(int milliseconds) {
    const IntervalParts parts = SplitInterval(milliseconds);
    const bool written =
        program.ChangeSettings({{"Einstellungen", "Framerate", QString::number(parts.Framerate)},
                                {"Einstellungen", "Uptime", QString::number(parts.Uptime)}});
    if (!written) {
        program.State.Values.Framerate = parts.Framerate;
        program.State.Values.Uptime = parts.Uptime;
        program.Cycle.ApplyInterval();
    }
    ShowInterval(milliseconds);
}
