#include "ui/settings/overlay/frm_bild.h"

#include "core/program.h"
#include "core/settings/setting_table.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/widgets/number_field.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

frmBild::frmBild(const Surroundings& surroundings, QWidget* parent)
    : SettingsWindow(surroundings, "frmBild", parent),
      List(new PictureList),
      btnAdd(new QPushButton),
      btnRemove(new QPushButton),
      btnUp(new QPushButton),
      btnDown(new QPushButton),
      btnDeleteList(new QPushButton),
      chkCapture(new QCheckBox),
      UB(new NumberField(SettingRowOf(u"Picture", u"UB").Least,
                         SettingRowOf(u"Picture", u"UB").Most)),
      lblPicture(new QLabel),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)),
      frameList(new QGroupBox),
      frameEffect(new QGroupBox),
      framePreview(new QGroupBox),
      lblBefore(new QLabel),
      lblAfter(new QLabel) {
    LayOut();
    ConnectControls();
    Finish();
    SetTabOrder();
}

void frmBild::LayOut() {
    auto* columns = new QHBoxLayout;
    columns->addWidget(ListFrame(), 1);
    auto* right = new QVBoxLayout;
    right->addWidget(EffectFrame());
    auto* inside = new QVBoxLayout(framePreview);
    inside->addWidget(Preview);
    right->addWidget(framePreview, 1);
    columns->addLayout(right, 1);
    Body().addLayout(columns);
}

QWidget* frmBild::ListFrame() {
    auto* grid = new QGridLayout(frameList);
    constexpr int usualName = 16;
    List->setMinimumWidth(List->iconSize().width() +
                          usualName * List->fontMetrics().averageCharWidth());
    grid->addWidget(List, 0, 0);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* button : {btnAdd, btnRemove, btnUp, btnDown}) buttons->addWidget(button);
    buttons->addStretch(1);
    buttons->addWidget(btnDeleteList);
    grid->addLayout(buttons, 0, 1);
    lblPicture->setTextFormat(Qt::PlainText);
    grid->addWidget(lblPicture, 1, 0, 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    return frameList;
}

QWidget* frmBild::EffectFrame() {
    auto* all = new QVBoxLayout(frameEffect);
    all->addWidget(chkCapture);
    auto* change = new QHBoxLayout;
    lblBefore->setBuddy(UB);
    change->addWidget(lblBefore);
    change->addWidget(UB);
    change->addWidget(lblAfter);
    change->addStretch(1);
    all->addLayout(change);
    return frameEffect;
}

void frmBild::ConnectControls() {
    connect(btnAdd, &QPushButton::clicked, this, &frmBild::ChooseFiles);
    connect(btnRemove, &QPushButton::clicked, List, &PictureList::RemoveChosen);
    connect(btnUp, &QPushButton::clicked, this, [this] { List->MoveChosen(-1); });
    connect(btnDown, &QPushButton::clicked, this, [this] { List->MoveChosen(1); });
    connect(btnDeleteList, &QPushButton::clicked, this, &frmBild::DeleteList);
    connect(List, &PictureList::Changed, this, &frmBild::ShowState);
    connect(List, &QListWidget::currentRowChanged, this, &frmBild::ShowState);
    connect(chkCapture, &QCheckBox::toggled, this, [this] {
        WarnOfSizes();
        Preview->Renew();
    });
    connect(UB, &QLineEdit::textChanged, Preview, &OverlayPreview::Renew);
    // The camera's size may become known only now.
    connect(Preview, &OverlayPreview::Renewed, this, &frmBild::WarnOfSizes);
    connect(this, &SettingsWindow::Saved, this, [this] { RemoveCopies(List->Names()); });
    Preview->SetEntries([this] { return PreviewEntries(); });
}

void frmBild::SetTabOrder() {
    QWidget* last = List;
    for (QWidget* each : std::initializer_list<QWidget*>{
             btnAdd, btnRemove, btnUp, btnDown, btnDeleteList, chkCapture, UB, btnSave, btnClose}) {
        setTabOrder(last, each);
        last = each;
    }
}

void frmBild::Name(QWidget& control, const QString& name, const QString& helpKey) {
    control.setAccessibleName(name.trimmed());
    control.setToolTip(Text(helpKey));
}

void frmBild::ShowTexts() {
    const auto button = [this](QPushButton& each, const QString& key) {
        each.setText(Text(key));
        Name(each, Text(key), key + "Help");
    };
    frameList->setTitle(Text("FrameList"));
    frameEffect->setTitle(Text("FrameEffect"));
    framePreview->setTitle(Text("FramePreview"));
    button(*btnAdd, "Add");
    button(*btnRemove, "Remove");
    button(*btnUp, "Up");
    button(*btnDown, "Down");
    button(*btnDeleteList, "DeleteList");
    chkCapture->setText(Text("OnlyOverlay"));
    lblBefore->setText(Text("ChangeAfter"));
    lblAfter->setText(Text("ChangeAfterEnd"));
    Name(*chkCapture, Text("OnlyOverlay"), "OnlyOverlayHelp");
    Name(*UB, Text("ChangeAfter") + " … " + Text("ChangeAfterEnd").chopped(1), "ChangeAfterHelp");
    Name(*List, Text("FrameList"), "ListHelp");
    ShowPicture();
    SettingsWindow::ShowTexts();
    Preview->Renew();
}
