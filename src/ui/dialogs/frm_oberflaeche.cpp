#include "ui/dialogs/frm_oberflaeche.h"

#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "base/waiting.h"
#include "core/main_state.h"
#include "core/program.h"
#include "ui/menu/menu_panel.h"
#include "ui/skin/rounded_corners.h"
#include "ui/skin/skin.h"
#include "ui/skin/skinned_window.h"
#include "ui/skin/window_system.h"
#include "ui/widgets/menu_row.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr int margin = 4;  // above and below the rows, pixels
}  // namespace

frmOberflaeche::frmOberflaeche(Program& ownProgram, const SkinFolders& skinFolders,
                               MessageBoxes& messageBoxes)
    : QWidget(nullptr, WindowSystem::MenuFlags()),
      program(ownProgram),
      folders(skinFolders),
      boxes(messageBoxes) {
    setWindowTitle("Skins");
    RoundedCorners::Prepare(*this);
    auto* scroll = new QScrollArea(this);
    auto* list = new QWidget(scroll);
    rows = new QVBoxLayout(list);
    rows->setSpacing(0);
    rows->setContentsMargins({});
    rows->setAlignment(Qt::AlignTop);
    scroll->setWidget(list);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setMinimumHeight(1);  // its own idea of a least height is several rows
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(1, margin, 1, margin);
    all->addWidget(scroll);
}

void frmOberflaeche::AddWindow(SkinnedWindow& window) {
    windows.push_back(&window);
}

void frmOberflaeche::ListSkins() {
    qDeleteAll(Label1);
    Label1.clear();
    for (const QString& name : folders.Names()) {
        auto* row = new MenuRow(this);
        row->setText(name);
        rows->addWidget(row);
        row->show();
        Label1 << row;
        connect(row, &MenuRow::clicked, this, [this, name] { Choose(name); });
    }
    MarkCurrent();
}

void frmOberflaeche::MarkCurrent() {
    Skin shared(folders, SkinFolders::Default);
    const QPixmap current = shared.SharedPicture("Hacken.jpg");
    const QPixmap other = shared.SharedPicture("Hacken0.jpg");
    for (MenuRow* row : Label1) {
        const bool isCurrent = row->text() == program.State.SkinName;
        row->SetMarks(isCurrent ? current : other, isCurrent);
    }
}

int frmOberflaeche::TopOnScreen(int top, int height, const QRect& screen) {
    constexpr int fromBottom = SkinLayout::FromTwips(500);
    if (top + height <= screen.bottom() + 1) return top;
    return std::max(screen.top(), screen.bottom() + 1 - height - fromBottom);
}

void frmOberflaeche::Fit() {
    MenuPanel::Dress(*this);
    ListSkins();
    resize(rows->sizeHint() + QSize(2, 2 * margin));
}

void frmOberflaeche::Show(const QPoint& topLeft) {
    Fit();
    const QScreen* at = QGuiApplication::screenAt(topLeft);
    const QRect screen = (at ? at : QGuiApplication::primaryScreen())->geometry();
    resize(size().boundedTo(screen.size()));
    move(topLeft.x(), TopOnScreen(topLeft.y(), height(), screen));
    show();
}

void frmOberflaeche::FocusRow() {
    for (MenuRow* row : Label1)
        if (row->isChecked()) row->setFocus(Qt::PopupFocusReason);
}

void frmOberflaeche::paintEvent(QPaintEvent*) {
    RoundedCorners::Paint(*this);
}

void frmOberflaeche::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    RoundedCorners::Cut(*this);
}

void frmOberflaeche::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void frmOberflaeche::Choose(const QString& name) {
    // A second click while the windows change would begin anew in the middle.
    if (busy) return;
    busy = true;
    emit Choosing();
    hide();
    program.Wait.Yield();
    if (folders.Has(name)) {
        Skin skin(folders, name);
        Dress(skin);
    } else {
        boxes.Show("Stillpost", "Error: " + name + " is missing");
    }
    busy = false;
}

void frmOberflaeche::Dress(Skin& skin) {
    for (SkinnedWindow* window : windows) window->LoadBackground(skin);
    program.State.SkinName = skin.Name();
    program.Remember({{"Einstellungen", "Skin", skin.Name()}});
    for (SkinnedWindow* window : windows) window->ApplyLayout(skin);
    if (!skin.Fault().isEmpty()) boxes.Show("Stillpost", "Error: " + skin.Fault());
}
