#include "core/program.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/overlay_preview.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

frmOverlay::frmOverlay(const Surroundings& surroundings, frmText& textWindow,
                       frmBild& pictureWindow, QWidget* parent)
    : SettingsWindow(surroundings, "frmOverlay", parent),
      lstEffect(new HeadedList),
      btnText(new QPushButton),
      cbPicture(new QComboBox),
      btnPicture(new QPushButton),
      chkKombi(new QCheckBox),
      lstPosition(new HeadedList),
      lstPositionBild(new HeadedList),
      cbDate(new QComboBox),
      cbTime(new QComboBox),
      Font(new FontChooser(surroundings.Words)),
      btnColor(new ColourButton),
      btnBackColor(new ColourButton),
      chkTransparent(new QCheckBox),
      lblText(new QLabel),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)),
      frameEffect(new QGroupBox),
      framePosition(new QGroupBox),
      frameFormats(new QGroupBox),
      frameFont(new QGroupBox),
      framePreview(new QGroupBox),
      lblSelection(new QLabel),
      lblSpecialText(new QLabel),
      lblSpecialPicture(new QLabel),
      lblPosition(new QLabel),
      lblPositionBild(new QLabel),
      lblDate(new QLabel),
      lblTime(new QLabel),
      lblColor(new QLabel),
      lblBackColor(new QLabel) {
    for (QComboBox* each : {cbPicture, cbDate, cbTime}) {
        each->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        each->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    }
    // File names may be longer than any window is wide.
    constexpr int usualName = 14;
    cbPicture->setMinimumContentsLength(usualName);
    cbPicture->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbPicture->view()->setTextElideMode(Qt::ElideMiddle);
    LayOut();
    ConnectControls();
    ConnectWindows(textWindow, pictureWindow);
    Finish();
    SetTabOrder();
}

void frmOverlay::LayOut() {
    LayOutEffect();
    LayOutPosition();
    LayOutFormats();
    LayOutFont();
    auto* columns = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    for (QGroupBox* frame : {frameEffect, framePosition, frameFont}) left->addWidget(frame);
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    auto* inside = new QVBoxLayout(framePreview);
    inside->addWidget(Preview);
    right->addWidget(framePreview, 1);
    right->addWidget(frameFormats);
    columns->addLayout(left);
    columns->addLayout(right, 1);
    Body().addLayout(columns);
}

void frmOverlay::AddRow(QGridLayout& grid, QLabel& caption, QWidget& control, QWidget* more) {
    const int row = grid.rowCount();
    caption.setBuddy(&control);
    grid.addWidget(&caption, row, 0);
    grid.addWidget(&control, row, 1, 1, more ? 1 : 2);
    if (more) grid.addWidget(more, row, 2);
    grid.setColumnStretch(1, 1);
}

void frmOverlay::LayOutEffect() {
    auto* grid = new QGridLayout(frameEffect);
    lblText->setTextFormat(Qt::PlainText);
    AddRow(*grid, *lblSelection, *lstEffect);
    AddRow(*grid, *lblSpecialText, *lblText, btnText);
    AddRow(*grid, *lblSpecialPicture, *cbPicture, btnPicture);
    lblSpecialText->setBuddy(nullptr);
    grid->addWidget(chkKombi, grid->rowCount(), 0, 1, 3);
}

void frmOverlay::LayOutPosition() {
    auto* grid = new QGridLayout(framePosition);
    AddRow(*grid, *lblPosition, *lstPosition);
    AddRow(*grid, *lblPositionBild, *lstPositionBild);
}

void frmOverlay::LayOutFormats() {
    auto* grid = new QGridLayout(frameFormats);
    AddRow(*grid, *lblDate, *cbDate);
    AddRow(*grid, *lblTime, *cbTime);
}

void frmOverlay::LayOutFont() {
    auto* all = new QVBoxLayout(frameFont);
    all->addWidget(Font);
    auto* colours = new QGridLayout;
    AddRow(*colours, *lblColor, *btnColor);
    AddRow(*colours, *lblBackColor, *btnBackColor, chkTransparent);
    all->addLayout(colours);
}

void frmOverlay::ConnectControls() {
    for (HeadedList* list : {lstEffect, lstPosition, lstPositionBild})
        connect(list, &HeadedList::PlaceChanged, this, &frmOverlay::ShowState);
    for (QCheckBox* box : {chkKombi, chkTransparent})
        connect(box, &QCheckBox::toggled, this, &frmOverlay::ShowState);
    for (QComboBox* list : {cbDate, cbTime})
        connect(list, &QComboBox::currentIndexChanged, Preview, &OverlayPreview::Renew);
    connect(cbPicture, &QComboBox::activated, this, &frmOverlay::ChoosePicture);
    connect(Font, &FontChooser::Changed, Preview, &OverlayPreview::Renew);
    for (ColourButton* button : {btnColor, btnBackColor})
        connect(button, &ColourButton::Changed, Preview, &OverlayPreview::Renew);
    connect(Preview, &OverlayPreview::Renewed, this, &frmOverlay::ShowNote);
    // The camera's size may become known only now.
    connect(Preview, &OverlayPreview::Renewed, this, &frmOverlay::WarnOfSize);
    // It may be as large as all the rest of the program.
    connect(this, &SettingsWindow::Saved, this, [this] { file = {}; });
    connect(this, &QDialog::rejected, this, [this] { file = {}; });
    // The other windows go by what is chosen here.
    connect(this, &QDialog::rejected, this, &frmOverlay::ShowSettings);
    Preview->SetEntries([this] { return Entries(); });
}

void frmOverlay::ConnectWindows(frmText& textWindow, frmBild& pictureWindow) {
    textWindow.SetBase([this] { return Entries(); });
    pictureWindow.SetBase([this] { return EntriesWithPicture(); });
    connect(btnText, &QPushButton::clicked, &textWindow, &SettingsWindow::Open);
    connect(btnPicture, &QPushButton::clicked, &pictureWindow, &SettingsWindow::Open);
    connect(&textWindow, &SettingsWindow::Saved, this, &frmOverlay::TakeText);
    connect(&pictureWindow, &SettingsWindow::Saved, this, &frmOverlay::TakePictures);
}

void frmOverlay::SetTabOrder() {
    QWidget* last = lstEffect;
    for (QWidget* each : std::initializer_list<QWidget*>{
             btnText, cbPicture, btnPicture, chkKombi, lstPosition, lstPositionBild, Font->btnFont,
             Font->chkUsualSize, btnColor, btnBackColor, chkTransparent, cbDate, cbTime, btnSave,
             btnClose}) {
        setTabOrder(last, each);
        last = each;
    }
}
