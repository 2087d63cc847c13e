#include "core/program.h"
#include "ui/skin/skin.h"
#include "ui/status/display_font.h"
#include "ui/status/frm_status.h"
#include "ui/status/glyph_button.h"
#include "ui/status/label_room.h"
#include "ui/status/picture_bar.h"
#include "ui/status/picture_slider.h"
#include "ui/status/readout_label.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>

namespace {

// Pixels.
constexpr int displaySize = 15;
constexpr int textSize = 13;
constexpr int displayHeight = 20;
constexpr int textHeight = 18;
constexpr int helpHeight = 36;
constexpr int captionAbove = 20;
constexpr int gaugeBelow = 20;
constexpr int timeOutWidth = 124;
constexpr QSize gaugeSize(120, 10);

// The time-out counter stands beside the status text, in one skin elsewhere.
constexpr int timeOutBeside = SkinLayout::FromTwips(2970);
constexpr int silverTimeOutLeft = SkinLayout::FromTwips(4660);
constexpr int silverTimeOutBelow = SkinLayout::FromTwips(60);

// What the control of a layout section takes when the neighbours leave it, pixels.
struct LabelPlace {
    ReadoutLabel* Label;
    QString Section;
    QSize Room;
};

QList<LabelPlace> Places(const frmStatus& window) {
    return {{window.Label1, "Label_Treiber", {250, displayHeight}},
            {window.Label2, "Label_Rec", {50, displayHeight}},
            {window.Label3, "Label_Online", {90, displayHeight}},
            {window.Label4, "Label_Status", {260, displayHeight}},
            {window.Label7, "Label_Pic", {100, textHeight}},
            {window.Label8, "Label_MB", {100, textHeight}},
            {window.lblAufloesung, "Label_Aufloesung", {150, textHeight}},
            {window.lblJPG, "Label_JPG", {150, textHeight}},
            {window.lblmouseover, "Label_Mouse", {300, helpHeight}},
            {window.lblOverlay, "Label_Overlay", {150, textHeight}},
            {window.lblTime, "Label_Time", {80, textHeight}},
            {window.lblUpload, "Label_Upload", {150, textHeight}}};
}

}  // namespace

void frmStatus::SetFonts() {
    QFont plain = font();
    plain.setPixelSize(Scaled(textSize));
    setFont(plain);
    const QString own = QCoreApplication::applicationDirPath();
    const QFont display = DisplayFont(
        {QFileInfo(program.SettingsFile()).absolutePath(), own, own + "/../share/stillpost"},
        Scaled(displaySize));
    for (ReadoutLabel* label : {Label1, Label2, Label3, Label4}) label->setFont(display);
}

void frmStatus::LoadBackground(Skin& skin) {
    SetBackground(skin.Background("StatusBg.bmp"));
    dressed = true;
}

void frmStatus::ApplyStatusLayout(Skin& skin) {
    skin.SetScale(Scale());
    SetFonts();
    const SkinLayout positions = skin.Layout();
    const bool ownBar = positions.IsOne("Prog_Bar", "picture");
    delete layout();
    if (!HasBackground()) {
        LayOutPlain();
        return;
    }
    LoadPictures(skin, ownBar);
    PlaceControls(positions);
    PlaceTimeOut(positions, skin.Name());
    PlaceClose(positions);
    if (ownBar) {
        using Caption = PictureBar::Caption;
        const int mode = positions.Number("Prog_Bar", "Caption");
        ProgressBar1->SetCaption(mode == 0   ? Caption::None
                                 : mode == 2 ? Caption::Percentage
                                             : Caption::TextAndPercentage,
                                 positions.Text("Prog_Bar", "TextBefore"),
                                 positions.Text("Prog_Bar", "TextAfter"));
        SetLabelColour(positions.Colour("Label_Treiber", "ForeColor"));
    } else {
        ProgressBar1->SetCaption(PictureBar::Caption::TextAndPercentage, "Upload - State: ", " %");
    }
    FitWidths(ownBar ? positions.Pixels("Label_Treiber", "Width") : 0);
}

void frmStatus::LoadPictures(Skin& skin, bool ownBar) {
    const QPixmap handle = skin.Picture("Anfasser.jpg");
    const QPixmap lit = skin.Picture("Anfasserhell.jpg");
    Slider1->SetPictures(skin.Picture("Slider1BG.jpg"), handle, lit);
    Slider2->SetPictures(skin.Picture("Slider2BG.jpg"), handle, lit);
    const auto bar = [&](const QString& file) {
        return ownBar ? skin.Picture(file) : skin.SharedPicture(file);
    };
    ProgressBar1->SetPictures(bar("progress_bg.jpg"), bar("progress_bg2.jpg"));
}

void frmStatus::SetLabelColour(const QColor& colour) {
    for (ReadoutLabel* label : StatusLabels()) label->SetColour(colour);
    Gauge->SetColour(colour);
}

void frmStatus::PlaceControls(const SkinLayout& positions) {
    const QPoint track1 = positions.Position("Slider1");
    const QPoint track2 = positions.Position("Slider2");
    const bool captions = positions.Number("Beschriftung", "Visible") != 0;
    for (ReadoutLabel* caption : {Label5, Label6}) {
        caption->setVisible(captions);
        caption->SetColour(positions.Colour("Beschriftung_Color", "ForeColor"));
        const QPoint track = caption == Label5 ? track1 : track2;
        caption->setGeometry(track.x(), track.y() - Scaled(captionAbove), 0, Scaled(textHeight));
    }
    for (const LabelPlace& each : Places(*this))
        each.Label->setGeometry({positions.Position(each.Section), Scaled(each.Room)});
    ProgressBar1->move(positions.Position("Prog_Bar"));
    ProgressBar1->resize(ProgressBar1->sizeHint());
    Slider1->Place(track1, positions.Pixels("Anfasser1", "Top"));
    Slider2->Place(track2, positions.Pixels("Anfasser2", "Top"));
}

void frmStatus::PlaceTimeOut(const SkinLayout& positions, const QString& skinName) {
    QPoint at = Label4->pos() + QPoint(Scaled(timeOutBeside), 0);
    if (skinName == "silver 1024")
        at = {Scaled(silverTimeOutLeft), Label4->y() + Scaled(silverTimeOutBelow)};
    if (positions.IsOne("Prog_Bar", "picture")) at = positions.Position("Label_TimeOut");
    Label9->setGeometry({at, Scaled(QSize(timeOutWidth, textHeight))});
    Gauge->setGeometry({at + QPoint(0, Scaled(gaugeBelow)), Scaled(gaugeSize)});
}

void frmStatus::PlaceClose(const SkinLayout& positions) {
    const bool chosen = !positions.Text("btnClose", "Left").isEmpty();
    btnClose->move(chosen ? positions.Position("btnClose") : FreeCorner());
    btnClose->SetGround(Ground(btnClose->geometry()));
}

// For skins that know nothing of the button: as near to the upper right corner as the outline and
// the other controls leave room.
QPoint frmStatus::FreeCorner() const {
    constexpr int step = 3;
    const QRect body = Outline().boundingRect();
    QRegion room = Outline();
    for (const QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (control != btnClose) room -= control->geometry();
    for (int way = 0; way < body.width(); way += step)
        for (int down = 0; down <= way; down += step) {
            QRect square({}, btnClose->size());
            square.moveTopRight(body.topRight() + QPoint(down - way, down));
            if ((QRegion(square) - room).isEmpty()) return square.topLeft();
        }
    return body.topLeft();
}

// Each label reaches to the next control on its right, or to where the longest line of the readouts
// ends; the captions lie on the body of the window and may reach to its edge.
void frmStatus::FitWidths(int driverWidth) {
    QList<QRect> taken;
    for (const QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const bool caption = control == Label5 || control == Label6;
        if (!caption || !control->isHidden()) taken << control->geometry();
    }
    if (driverWidth > 0) Label1->resize(driverWidth, Label1->height());
    int readoutsEnd = 0;
    for (const ReadoutLabel* label : StatusLabels())
        readoutsEnd = std::max(readoutsEnd, label->geometry().right() + 1);
    const int bodyEnd = Outline().boundingRect().right() + 1 - LabelRoom::Gap;
    const auto fit = [&](ReadoutLabel* label, int end) {
        label->resize(LabelRoom::Width(label->geometry(), taken, std::min(end, bodyEnd)),
                      label->height());
    };
    for (ReadoutLabel* label : StatusLabels())
        if (label != Label1 || driverWidth <= 0) fit(label, readoutsEnd);
    for (ReadoutLabel* caption : {Label5, Label6}) fit(caption, bodyEnd);
}

// No background can be used: everything in rows, in the colours of the desktop.
void frmStatus::LayOutPlain() {
    struct Row {
        QWidget* Left;
        QWidget* Right;  // none: the left one takes the whole row
    };
    constexpr int columnWidth = 210;
    auto* grid = new QGridLayout(this);
    int row = 0;
    for (const Row& each : std::initializer_list<Row>{{Label1, nullptr},
                                                      {Label4, nullptr},
                                                      {Label2, Label3},
                                                      {Label9, Gauge},
                                                      {Label7, Label8},
                                                      {lblAufloesung, lblTime},
                                                      {lblJPG, lblUpload},
                                                      {lblOverlay, nullptr},
                                                      {lblmouseover, nullptr},
                                                      {ProgressBar1, nullptr},
                                                      {Label5, Label6},
                                                      {Slider1, Slider2}}) {
        grid->addWidget(each.Left, row, 0, 1, each.Right ? 1 : 2);
        if (each.Right) grid->addWidget(each.Right, row, 1);
        grid->setRowMinimumHeight(row, each.Left == lblmouseover ? helpHeight : displayHeight);
        ++row;
    }
    grid->addWidget(btnClose, 0, 2);
    btnClose->SetGround(palette().color(QPalette::Window));
    for (PictureSlider* slider : {Slider1, Slider2}) slider->SetPictures({}, {}, {});
    ProgressBar1->SetPictures({}, {});
    for (int column : {0, 1}) grid->setColumnMinimumWidth(column, columnWidth);
    SetLabelColour({});
    for (ReadoutLabel* caption : {Label5, Label6}) {
        caption->SetColour({});
        caption->show();
    }
    ProgressBar1->SetCaption(PictureBar::Caption::TextAndPercentage, "Upload - State: ", " %");
    adjustSize();
}
