#include "ui/settings/settings_window.h"

#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "base/waiting.h"
#include "core/program.h"
#include "ui/skin/window_system.h"
#include "ui/widgets/fitting_area.h"
#include "ui/widgets/mnemonics.h"
#include "ui/widgets/screen_room.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const QString common = "Settings";  // texts of all settings windows
constexpr int settleMilliseconds = 300;

}  // namespace

SettingsWindow::SettingsWindow(const Surroundings& ownSurroundings, const QString& textSection,
                               QWidget* parent)
    : QDialog(parent),
      btnSave(new QPushButton(this)),
      btnClose(new QPushButton(this)),
      lblNote(new QLabel(this)),
      Controls(ownSurroundings.Words, textSection),
      around(ownSurroundings),
      area(new FittingArea(this)),
      settled(ownSurroundings.Core.Wait.OwnClock(), settleMilliseconds) {
    auto* all = new QVBoxLayout(this);
    auto* inside = new QWidget;
    body = new QVBoxLayout(inside);
    body->setContentsMargins({});
    area->setWidget(inside);
    inside->installEventFilter(area);
    all->addWidget(area, 1);
    lblNote->setWordWrap(true);
    lblNote->setTextFormat(Qt::PlainText);
    all->addWidget(lblNote);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnSave);
    buttons->addWidget(btnClose);
    all->addLayout(buttons);
    btnSave->setDefault(true);
    btnClose->setAutoDefault(false);
    connect(btnSave, &QPushButton::clicked, this, &QDialog::accept);
    connect(btnClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(&around.Words, &Texts::Changed, this, [this] { ShowTexts(); });
    connect(&settled, &Timer::Tick, this, &SettingsWindow::MoveOntoScreen);
}

void SettingsWindow::Finish() {
    for (auto* button : findChildren<QPushButton*>())
        if (button != btnSave) button->setAutoDefault(false);  // Enter saves
    for (auto* field : findChildren<QLineEdit*>()) field->setMaxLength(LongestSetting);
    // The body's controls come before the buttons.
    Controls.SetTabOrder(btnSave);
    setTabOrder(btnSave, btnClose);
    ShowTexts();
}

void SettingsWindow::ShowTexts() {
    setWindowTitle(Text("Title"));
    btnSave->setText(Text("Save"));
    btnClose->setText(Text("Close"));
    Controls.ShowTexts();
    AssignMnemonics(*this);
    lblNote->clear();
    if (isVisible()) FitToScreen();
}

void SettingsWindow::Open() {
    const bool isNew = !isVisible();
    if (isNew) {
        lblNote->clear();
        ShowSettings();
        // It takes its place on the screen with its size. A window that is resized while the
        // window manager still puts its frame around it may end with the title above the screen.
        for (QWidget* widget : findChildren<QWidget*>()) widget->ensurePolished();
        FitToScreen();
    }
    isMinimized() ? showNormal() : show();
    if (isNew && sizeHint() != size()) FitToScreen();
    raise();
    activateWindow();
}

void SettingsWindow::OpenAt(const QString& field, const QString& why) {
    Open();
    if (auto* control = findChild<QWidget*>(field)) Refuse(*control, why);
}

void SettingsWindow::FitToScreen() {
    body->invalidate();
    layout()->invalidate();
    resize(sizeHint().boundedTo(ScreenRoom(*this)));
    settled.SetInterval(settleMilliseconds);
    settled.SetEnabled(true);
}

// A window that has grown may reach beyond the screen; one that grew while the window manager put
// its frame around it may have its title there.
void SettingsWindow::MoveOntoScreen() {
    settled.SetEnabled(false);
    if (!isVisible() || !WindowSystem::PlacesWindows()) return;
    const QRect room = screen()->availableGeometry();
    QRect frame = frameGeometry();
    frame.moveRight(std::min(frame.right(), room.right()));
    frame.moveBottom(std::min(frame.bottom(), room.bottom()));
    frame.moveTopLeft({std::max(frame.left(), room.left()), std::max(frame.top(), room.top())});
    if (frame.topLeft() != pos()) move(frame.topLeft());
}

bool SettingsWindow::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible()) {
        const QSize wanted = size().expandedTo(sizeHint()).boundedTo(ScreenRoom(*this));
        settled.SetEnabled(settled.Enabled() || wanted != size());
        resize(wanted);
    }
    return handled;
}

bool SettingsWindow::Save() {
    lblNote->clear();
    if (QWidget* field = Controls.Unfinished()) {
        Refuse(*field, field->toolTip());
        return false;
    }
    if (!Check()) return false;
    if (!around.Core.ChangeSettings(Entries())) {
        around.Boxes.Show("Stillpost", around.Words.Get(common, "CannotSave").arg(SettingsFile()),
                          MessageBoxes::Icon::Critical);
        return false;
    }
    hide();
    emit Saved();
    return true;
}

QString SettingsWindow::Text(const QString& key) const {
    return Controls.Text(key);
}

QString SettingsWindow::SettingsFile() const {
    return around.Core.SettingsFile();
}

QString SettingsWindow::Setting(const QString& key, const QString& ofSection) const {
    return ReadSetting(SettingsFile(), ofSection, key);
}

bool SettingsWindow::Flag(const QString& key, const QString& ofSection) const {
    return Val(Setting(key, ofSection)) != 0;
}

ProfileEntry SettingsWindow::Entry(const QString& key, const QString& value) {
    return {"Einstellungen", key, value};
}

ProfileEntry SettingsWindow::Entry(const QString& key, bool on) {
    return Entry(key, on ? QString("1") : QString("0"));
}

ProfileEntry SettingsWindow::Entry(const QString& key, int number) {
    return Entry(key, QString::number(number));
}

void SettingsWindow::Refuse(QWidget& field, const QString& why) {
    lblNote->setText(why);
    field.setFocus();
    area->ensureWidgetVisible(&field);
    if (auto* line = qobject_cast<QLineEdit*>(&field)) line->selectAll();
}
