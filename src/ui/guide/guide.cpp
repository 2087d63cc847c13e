#include "ui/guide/guide.h"

#include "base/message_boxes.h"
#include "core/program.h"
#include "core/run_state.h"
#include "core/upload_cycle.h"
#include "ui/guide/camera_page.h"
#include "ui/guide/picture_page.h"
#include "ui/guide/place_page.h"
#include "ui/guide/start_page.h"
#include "ui/settings/autostart.h"
#include "ui/settings/ftp/ftp_access_group.h"
#include "ui/skin/window_place.h"
#include "ui/texts/languages.h"
#include "ui/widgets/screen_room.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QEvent>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>

Guide::Guide(const SettingsWindow::Surroundings& surroundings, Languages& ownLanguages,
             QWidget* parent)
    : QWizard(parent),
      Camera(new CameraPage(surroundings, ownLanguages)),
      Place(new PlacePage(surroundings)),
      Picture(new PicturePage(surroundings)),
      Start(new StartPage(surroundings)),
      around(surroundings),
      languages(ownLanguages),
      pages{Camera, Place, Picture, Start} {
    // The other styles have a white banner whatever the desktop's colours are.
    setWizardStyle(ClassicStyle);
    setOptions(NoBackButtonOnStartPage | IndependentPages);
    for (GuidePage* page : std::as_const(pages)) addPage(page);
    connect(this, &QWizard::currentIdChanged, this, &Guide::EnterPage);
    connect(&around.Words, &Texts::Changed, this, &Guide::ShowTexts);
    connect(&around.Core, &Program::SettingsLoaded, this, &Guide::ApplyAgain);
    connect(&around.Core, &Program::Ended, this, &QWidget::hide);
    SetTabOrder();
    ShowTexts();
}

QList<QAbstractButton*> Guide::Buttons() const {
    return {button(BackButton), button(NextButton), button(FinishButton), button(CancelButton)};
}

QString Guide::Text(const QString& key) const {
    return around.Words.Get("Guide", key);
}

void Guide::SetTabOrder() {
    const QList<QAbstractButton*> below = Buttons();
    for (const GuidePage* page : std::as_const(pages)) page->SetTabOrder(below.first());
    for (qsizetype i = 1; i < below.size(); ++i) setTabOrder(below[i - 1], below[i]);
}

void Guide::ShowTexts() {
    setWindowTitle(Text("Title"));
    const QList<std::pair<WizardButton, QString>> texts{{BackButton, "Back"},
                                                        {NextButton, "Next"},
                                                        {FinishButton, "Finish"},
                                                        {CancelButton, "Cancel"}};
    for (const auto& [which, key] : texts) setButtonText(which, Text(key));
    for (GuidePage* page : std::as_const(pages)) page->ShowTexts(Buttons());
    // The wizard takes its own word for them on each page.
    for (const auto& [which, key] : texts) setButtonText(which, button(which)->text());
    if (isVisible()) LayOutAgain();
}

// Pages that are not shown know of no change.
void Guide::LayOutAgain() {
    for (const GuidePage* page : std::as_const(pages)) page->layout()->invalidate();
    FitToScreen();
}

void Guide::EnterPage(int id) {
    if (id < 0) return;
    if (page(id) == Start)
        Start->Show({.Camera = Camera->CameraName(),
                     .Place = Place->Access->Wanted(around.Core.ProgramFolder()),
                     .Interval = Picture->Interval(),
                     .IntervalText = Picture->IntervalText(),
                     .Offline = Picture->chkOffline->isChecked(),
                     .PictureBytes = Picture->PictureBytes()});
    pages.value(id)->First()->setFocus();
}

Texts::Language Guide::LanguageOf(const QLocale& locale) {
    if (locale.language() == QLocale::German) return Texts::Language::German;
    if (locale.language() == QLocale::French) return Texts::Language::French;
    return Texts::Language::English;
}

void Guide::Open(Texts::Language language) {
    if (!isVisible()) {
        if (language == Texts::Language::German) languages.ApplyGermanTexts();
        if (language == Texts::Language::French) languages.ApplyFrenchTexts();
    }
    Open();
}

void Guide::Open() {
    if (!isVisible()) {
        openedWith = around.Core.DriverText();
        open = false;
        for (GuidePage* page : std::as_const(pages)) page->ShowSettings();
        restart();
        for (QWidget* widget : findChildren<QWidget*>()) widget->ensurePolished();
        LayOutAgain();
    }
    open = true;
    isMinimized() ? showNormal() : show();
    raise();
    activateWindow();
    pages.value(currentId())->First()->setFocus();
}

// Each page needs another room; the window has the most that any of them needs from the start, so
// that the buttons stay where they are, and no more than the screen has.
void Guide::FitToScreen() {
    QSize most;
    for (const GuidePage* page : std::as_const(pages)) most = most.expandedTo(page->sizeHint());
    const GuidePage* shown = pages.value(qMax(0, currentId()));
    const QSize wanted = sizeHint() + (most - shown->sizeHint());
    const QSize room = ScreenRoom(*this);
    setMinimumSize(minimumSize().boundedTo(room));
    resize(wanted.expandedTo(isVisible() ? size() : QSize()).boundedTo(room));
    const QRect free = screen()->availableGeometry();
    if (isVisible() && !free.contains(frameGeometry()))
        move(WindowPlace::OntoScreen(frameGeometry(), {free}));
}

bool Guide::event(QEvent* event) {
    const bool handled = QWizard::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible()) FitToScreen();
    return handled;
}

// Somebody else has loaded the settings: what is chosen here counts until the guide is closed.
void Guide::ApplyAgain() {
    if (open) Camera->ApplyAgain();
}

void Guide::accept() {
    QList<ProfileEntry> entries;
    for (const GuidePage* page : std::as_const(pages)) entries += page->Entries();
    open = false;
    if (!around.Core.ChangeSettings(entries)) {
        open = true;
        around.Boxes.Show(
            "Stillpost", around.Words.Get("Settings", "CannotSave").arg(around.Core.SettingsFile()),
            MessageBoxes::Icon::Critical);
        return;
    }
    QWizard::accept();
    around.Core.TryCamera({});
    around.Core.LoadSettings();  // the camera may have been written down only now
    ApplyAutostart(around, Start->chkAutostart->isChecked());
    if (around.Core.Run.Is() == RunState::Paused) around.Core.Cycle.Pause();  // goes on
    if (!around.Core.Run.Running()) around.Core.Start();
    around.Core.Cycle.MakeDue();
}

void Guide::reject() {
    open = false;
    QWizard::reject();
    around.Core.TryCamera({});
    // Settings that name no camera leave the one in use.
    around.Core.SelectDriver(static_cast<int>(around.Core.DriverList().indexOf(openedWith)));
    around.Core.LoadSettings();
}
