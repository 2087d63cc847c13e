#include "ui/main/frm_skin.h"

#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "base/status_hub.h"
#include "base/waiting.h"
#include "camera/ezvidcap.h"
#include "core/main_state.h"
#include "core/program.h"
#include "core/run_state.h"
#include "core/settings/load_settings.h"
#include "core/upload_cycle.h"
#include "ui/main/link_button.h"
#include "ui/main/visitors_view.h"
#include "ui/skin/picture_box.h"
#include "ui/skin/picture_button.h"
#include "ui/skin/skin.h"
#include "ui/status/glyph_button.h"
#include "ui/widgets/contrast.h"
#include "ui/widgets/drop_target.h"
#include "ui/widgets/preview_area.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QShortcut>

namespace {

void NameButton(PictureButton& button, const QString& text, const QString& help,
                const QKeySequence& shortcut) {
    button.setText(text);
    button.setToolTip(help + " (" + shortcut.toString(QKeySequence::NativeText) + ")");
    button.setShortcut(shortcut);  // a new text takes the former one away
}

// Without the flap, and with it.
constexpr QSize previewSize(SkinLayout::FromTwips(4800), SkinLayout::FromTwips(3600));
constexpr QSize previewBehindFlap(SkinLayout::FromTwips(4740), SkinLayout::FromTwips(3525));

// The driver list below the driver label, and the status below the list; pixels.
constexpr int listBelowLabel = 18;
constexpr int listHeight = 22;
constexpr int mostListWidth = 200;
constexpr int leastListWidth = 80;
constexpr int leastStatusWidth = 120;
constexpr int statusBelowList = 1;
constexpr int edge = 8;

// For a skin that has none.
QPixmap PlainLed(const QColor& colour) {
    constexpr int side = 12;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colour);
    painter.drawEllipse(1, 1, side - 2, side - 2);
    return picture;
}

QPixmap LedPicture(const QPixmap& picture, const QColor& otherwise) {
    return picture.isNull() ? PlainLed(otherwise) : picture;
}

}  // namespace

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
      btnView(new GlyphButton(GlyphButton::Glyph::Eye, preview)),
      visitors(new VisitorsView(ownProgram, btnView->width(), preview)),
      cbDriver(new QComboBox(this)),
      Label_Driver(new QLabel(this)),
      lblStatus(new QLabel(this)),
      btnRemedy(new LinkButton(this)),
      program(ownProgram),
      folders(skinFolders),
      boxes(messageBoxes),
      place(*this, ownProgram.Wait.OwnClock(), ownProgram.SettingsFile(), "Window") {
    // Steps and server texts are of any length; the window keeps its width.
    lblStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    Label_Driver->setBuddy(cbDriver);
    auto* views = new QGridLayout(preview);
    views->setContentsMargins({});
    views->addWidget(visitors, 0, 0);
    views->addWidget(btnView, 0, 0, Qt::AlignRight | Qt::AlignBottom);
    btnStop->setEnabled(false);
    btnPause->setEnabled(false);
    SetTabOrder();
    Connect();
    ConnectCamera();
    ShowTexts();
    program.Display.Add(*this);
}

frmSkin::~frmSkin() {
    program.Display.Remove(*this);
}

void frmSkin::SetTabOrder() {
    QWidget* before = btnStart;
    for (QWidget* next :
         std::initializer_list<QWidget*>{btnPause, btnStop, btnOptions, btnMin, btnExit,
                                         pic_klappe_open, btnView, cbDriver, btnRemedy}) {
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
    const auto* view = new QShortcut(Qt::Key_F4, this);
    connect(view, &QShortcut::activated, this, &frmSkin::ChangeView);
    const auto* overview = new QShortcut(Qt::Key_F11, this);
    connect(overview, &QShortcut::activated, this, &frmSkin::StatusOverviewWanted);
    connect(btnRemedy, &LinkButton::clicked, this, &frmSkin::RemedyWanted);
    connect(&program.Run, &RunStatus::Changed, this, &frmSkin::ShowRunState);
    connect(btnView, &PictureButton::clicked, this, &frmSkin::ChangeView);
    connect(&program, &Program::Ended, this, [this] { place.Save(); });
}

void frmSkin::ChangeView() {
    visitors->setVisible(visitors->isHidden());
    btnView->raise();
    if (!visitors->isHidden()) flapOpen = true;
    ShowFlap();
    ShowViewTexts();
}

void frmSkin::ShowRunState() {
    EnableButtons(RunButtons::For(program.Run));
    ShowPauseText();
    ShowLeds();
    ShowStatusTexts();
}

// The keyboard stays among the three: from a button that is switched off it goes to the one that
// takes its effect back, as soon as that one is there, not to whatever comes next in the window.
void frmSkin::EnableButtons(const RunButtons& buttons) {
    const auto [start, pause, stop] = buttons;
    QWidget* const before = focusWidget();
    const bool waited = keyboardWaits && before == this;
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
    for (QWidget* target : std::initializer_list<QWidget*>{cbDriver, preview})
        new DropTarget(target, DropTarget::Takes::Addresses, [this](const QStringList& addresses) {
            emit CameraDropped(addresses.first());
        });
    connect(&program, &Program::DriversChanged, this, &frmSkin::ShowDrivers);
    connect(&program, &Program::SettingsLoaded, this, &frmSkin::ShowPreviewSettings);
    connect(&program, &Program::SettingsLoaded, this, &frmSkin::ShowStatusTexts);
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
    ColourDriver();
    if (layoutComplete) PlaceDriverArea();
}

// A skin has a light ground for them.
void frmSkin::ColourDriver() {
    const bool light = !HasBackground() && Contrast::IsDark(palette().color(QPalette::Window));
    const QColor present = light ? QColor(0x8a, 0xb4, 0xff) : QColor(Qt::blue);
    const QColor missing = light ? QColor(0xff, 0x8a, 0x80) : QColor(Qt::red);
    QPalette colours = Label_Driver->palette();
    colours.setColor(QPalette::WindowText, program.State.DriverPresent ? present : missing);
    Label_Driver->setPalette(colours);
}

void frmSkin::changeEvent(QEvent* event) {
    ShapedWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ColourDriver();
    if (event->type() == QEvent::FontChange) FitDriverFont();
}

void frmSkin::ShowPreviewSettings() {
    preview->SetStretched(program.State.Values.StretchPreview);
    preview->SetCentred(program.State.Values.CenterVideo);
    visitors->Picture->SetStretched(program.State.Values.StretchPreview);
    visitors->Picture->SetCentred(program.State.Values.CenterVideo);
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

// What the main window's controls are called in the language in use.

void frmSkin::SetTexts(const Texts& ownTexts) {
    texts = &ownTexts;
    connect(texts, &Texts::Changed, this, &frmSkin::ShowTexts);
    ShowTexts();
}

void frmSkin::ShowPauseText() {
    const QString key = program.Run.Is() == RunState::Paused ? QString("Continue") : "Pause";
    NameButton(*btnPause, Word(key), Word(key + "Help"), Qt::Key_F6);
}

void frmSkin::ShowViewTexts() {
    const QString key = visitors->isHidden() ? QString("Visitors") : "CameraAgain";
    NameButton(*btnView, Word(key), Word(key + "Help"), Qt::Key_F4);
    btnView->setShortcut({});  // the window's own works behind the closed flap as well
    visitors->ShowTexts(*texts);
}

void frmSkin::ShowTexts() {
    NameButton(*btnStart, Word("Start"), Word("StartHelp"), Qt::Key_F5);
    ShowPauseText();
    NameButton(*btnStop, Word("Stop"), Word("StopHelp"), Qt::Key_F7);
    NameButton(*btnOptions, Word("Options"), Word("OptionsHelp"), Qt::Key_F8);
    NameButton(*btnMin, Word("Minimise"), Word("MinimiseHelp"), Qt::Key_F9);
    NameButton(*btnExit, Word("Exit"), Word("ExitHelp"), Qt::CTRL | Qt::Key_Q);
    cbDriver->setAccessibleName(Word("Camera"));
    // Some systems take the name of a list from its label.
    Label_Driver->setAccessibleName(Word("Camera"));
    preview->setAccessibleName(Word("Preview"));
    preview->setToolTip(Word("PreviewHelp"));
    pic_klappe->setAccessibleName(Word("Flap"));
    ShowViewTexts();
    ShowFlap();
    ShowDrivers();
    ShowLeds();
    ShowStatusTexts();
}

void frmSkin::ShowSkinned() {
    const QString wanted = ::LoadSettings(program.SettingsFile()).Skin;
    Skin skin(folders, folders.Choose(wanted));
    program.State.SkinName = skin.Name();
    LoadBackground(skin);
    ApplySkinLayout(skin);
    place.Restore();
    // The keyboard starts at no button: a stray Space must not start anything.
    setFocus();
    show();
    if (!skin.Fault().isEmpty()) boxes.Show("Stillpost", "Error: " + skin.Fault());
}

void frmSkin::LoadBackground(Skin& skin) {
    layoutComplete = false;
    SetBackground(skin.Background("splash.bmp"));
}

void frmSkin::ApplySkinLayout(Skin& skin) {
    skin.SetScale(Scale());
    LoadPictures(skin);
    ColourDriver();
    FitDriverFont();
    delete layout();
    if (!HasBackground()) {
        LayOutPlain();
        layoutComplete = true;
        return;
    }
    const SkinLayout positions = skin.Layout();
    struct Place {
        QWidget* Control;
        QString Section;
    };
    for (const Place& each : std::initializer_list<Place>{{preview, "ezVidCap1"},
                                                          {Label_Driver, "Label_Driver"},
                                                          {LEDReigth, "LEDReigth"},
                                                          {LEDLeft, "LEDLeft"},
                                                          {btnMin, "btnMin"},
                                                          {btnExit, "btnExit"},
                                                          {btnStart, "btnStart"},
                                                          {btnPause, "btnPause"},
                                                          {btnStop, "btnStop"},
                                                          {btnOptions, "btnOptions"}})
        each.Control->move(positions.Position(each.Section));
    PlaceFlap(skin);
    PlaceDriverArea();
    layoutComplete = true;
}

void frmSkin::LoadPictures(Skin& skin) {
    struct Pair {
        PictureButton* Button;
        QString Name;
    };
    for (const Pair& each : std::initializer_list<Pair>{{btnStart, "button_go"},
                                                        {btnPause, "button_pau"},
                                                        {btnStop, "button_stop"},
                                                        {btnOptions, "button_Options"},
                                                        {btnMin, "button_min"},
                                                        {btnExit, "button_ex"}})
        each.Button->SetPictures(skin.Picture(each.Name + ".jpg"),
                                 skin.Picture(each.Name + "2.jpg"));
    leftLed = {LedPicture(skin.Picture("LEDleft.jpg"), Qt::darkGray),
               LedPicture(skin.Picture("LEDleft2.jpg"), Qt::green)};
    rightLed = {LedPicture(skin.Picture("LEDreight.jpg"), Qt::darkGray),
                LedPicture(skin.Picture("LEDreight2.jpg"), Qt::red)};
    ShowLeds();
}

void frmSkin::PlaceFlap(Skin& skin) {
    const SkinLayout positions = skin.Layout();
    flapEnabled = positions.IsOne("pic_klappe", "Visible");
    preview->setMinimumSize(0, 0);
    preview->resize(Scaled(flapEnabled ? previewBehindFlap : previewSize));
    if (flapEnabled) {
        pic_klappe->SetPicture(skin.Picture("Splash_Klappe.jpg"));
        pic_klappe_open->SetPictures(skin.Picture("button_klappe_open.jpg"),
                                     skin.Picture("button_klappe_open2.jpg"));
        pic_klappe->move(positions.Position("pic_klappe"));
        pic_klappe_open->move(positions.Position("pic_klappe_open"));
    }
    ShowFlap();
}

void frmSkin::ShowFlap() {
    pic_klappe->setVisible(flapEnabled && !flapOpen);
    pic_klappe->raise();
    btnView->setVisible(!flapEnabled || flapOpen);
    pic_klappe_open->setVisible(flapEnabled);
    pic_klappe_open->raise();
    pic_klappe_open->setText(Word(flapOpen ? QString("FlapClose") : "FlapOpen"));
    pic_klappe_open->setToolTip(pic_klappe_open->text());
}

// How far a strip of the window can reach to the right before it meets a control or the edge.
int frmSkin::RoomFor(const QRect& strip) const {
    int end = width() - edge;
    for (const QWidget* other : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const QRect taken = other->geometry();
        const bool beside = taken.top() <= strip.bottom() && taken.bottom() >= strip.top();
        if (beside && taken.left() > strip.left() && !other->isHidden() && !InDriverArea(other))
            end = std::min(end, taken.left() - edge);
    }
    return std::max(1, end - strip.left());
}

bool frmSkin::InDriverArea(const QWidget* control) const {
    return control == Label_Driver || control == cbDriver || control == lblStatus ||
           control == btnRemedy;
}

// A skin has a plate of fixed size for them; beside one, they follow the desktop's letters.
void frmSkin::FitDriverFont() {
    constexpr int usual = 13;  // pixels
    const int most = Scaled(usual);
    QFont letters = font();
    if (HasBackground() && QFontInfo(letters).pixelSize() > most) letters.setPixelSize(most);
    for (QWidget* control : std::initializer_list<QWidget*>{Label_Driver, cbDriver, lblStatus})
        control->setFont(letters);
}

void frmSkin::PlaceDriverArea() {
    if (!HasBackground()) return;
    const QPoint at = Label_Driver->pos();
    const QSize label = Label_Driver->sizeHint();
    Label_Driver->resize(std::min(label.width(), RoomFor({at, label})), label.height());
    QRect list(at.x(), at.y() + Scaled(listBelowLabel), Scaled(mostListWidth), Scaled(listHeight));
    list.setWidth(std::clamp(RoomFor(list), Scaled(leastListWidth), list.width()));
    cbDriver->setGeometry(list);
    cbDriver->raise();
    PlaceStatus();
}

void frmSkin::WriteOn(QWidget& label, const QColor& ground) {
    QPalette colours = label.palette();
    colours.setColor(QPalette::WindowText, Contrast::IsDark(ground) ? Qt::white : Qt::black);
    label.setPalette(colours);
}

// The line is shown where the skin leaves room for it; title and tool tips have the text anyway.
void frmSkin::PlaceStatus() {
    QRect line = cbDriver->geometry();
    line.moveTop(line.bottom() + 1 + statusBelowList);
    line.setHeight(lblStatus->sizeHint().height());
    line.setWidth(std::min(RoomFor(line), Scaled(mostListWidth)));
    bool free = line.width() >= Scaled(leastStatusWidth) && (QRegion(line) - Outline()).isEmpty();
    for (const QWidget* other : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (!InDriverArea(other) && !other->isHidden() && other->geometry().intersects(line))
            free = false;
    statusFits = free;
    for (QWidget* each : std::initializer_list<QWidget*>{lblStatus, btnRemedy}) {
        each->setGeometry(line);
        WriteOn(*each, Ground(line));
    }
    ShowStatusTexts();
}

// No skin can be used: everything in rows, so that the operator can go on.
void frmSkin::LayOutPlain() {
    flapEnabled = false;
    ShowFlap();
    lblStatus->setPalette({});
    btnRemedy->setPalette({});
    statusFits = true;
    ShowStatusTexts();
    preview->setMinimumSize(previewSize);
    auto* grid = new QGridLayout(this);
    const auto buttons = {btnStart, btnPause, btnStop, btnOptions, btnMin, btnExit};
    const int columns = static_cast<int>(buttons.size());
    int column = 0;
    for (PictureButton* button : buttons) grid->addWidget(button, 2, column++);
    grid->addWidget(Label_Driver, 0, 0, 1, columns / 2);
    grid->addWidget(cbDriver, 0, columns / 2, 1, columns - columns / 2);
    grid->addWidget(preview, 1, 0, 1, columns);
    grid->addWidget(LEDLeft, 3, 0);
    grid->addWidget(lblStatus, 3, 1, 1, columns - 2);
    grid->addWidget(btnRemedy, 3, 1, 1, columns - 2);
    grid->addWidget(LEDReigth, 3, columns - 1);
    adjustSize();
}
