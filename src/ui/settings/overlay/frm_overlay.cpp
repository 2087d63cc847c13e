#include "ui/settings/overlay/frm_overlay.h"

#include "base/message_boxes.h"
#include "base/waiting.h"
#include "core/program.h"
#include "core/settings/setting_table.h"
#include "picture/overlay/date_time_form.h"
#include "picture/overlay/text_style.h"
#include "picture/picture_state.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/overlay/overlay_files.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/settings/settings_rows.h"
#include "ui/texts/messages.h"

#include <QAbstractItemView>
#include <QGroupBox>
#include <QSignalBlocker>

#include <array>

frmOverlay::frmOverlay(const Surroundings& surroundings, frmText& textWindow,
                       frmBild& pictureWindow, QWidget* parent)
    : SettingsWindow(surroundings, "frmOverlay", parent),
      Preview(new OverlayPreview(surroundings.Core, surroundings.Words)) {
    LayOut();
    ConnectControls();
    ConnectWindows(textWindow, pictureWindow);
    Finish();
}

void frmOverlay::LayOut() {
    auto* left = new QVBoxLayout;
    left->addWidget(EffectFrame());
    left->addWidget(PositionFrame());
    left->addWidget(FontFrame());
    left->addStretch(1);
    auto* right = new QVBoxLayout;
    right->addWidget(PreviewFrame(), 1);
    right->addWidget(FormatFrame());
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(right, 1);
    Body().addLayout(columns);
}

QWidget* frmOverlay::EffectFrame() {
    // File names may be longer than any window is wide.
    constexpr int usualName = 14;
    cbPicture->setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
    cbPicture->setMinimumContentsLength(usualName);
    cbPicture->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbPicture->view()->setTextElideMode(Qt::ElideMiddle);
    lblText->setTextFormat(Qt::PlainText);
    const auto ownText = [this] {
        return lstEffect->Place() == DateTimeText || lstEffect->Place() == SpecialText;
    };
    QGroupBox* frame = Controls.Frame("FrameEffect");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add(lstEffect, {.Key = "Overlay", .Text = "Selection"});
    rows->Add(lblText, {.Text = "SpecialText", .Enabled = ownText}, btnText);
    Controls.Add(btnText, {.Text = "TextButton"});
    rows->Add(cbPicture, {.Text = "SpecialPicture", .Enabled = [this] { return WithPicture(); }},
              btnPicture);
    Controls.Add(btnPicture, {.Text = "PictureButton"});
    rows->Add(chkKombi, {.Key = "OverKombi", .Text = "Combination", .Enabled = [this] {
                             return WithText();
                         }});
    return frame;
}

QWidget* frmOverlay::PositionFrame() {
    QGroupBox* frame = Controls.Frame("FramePosition");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add(lstPosition, {.Key = "Position", .Text = "TextPosition", .Enabled = [this] {
                                return WithText();
                            }});
    rows->Add(lstPositionBild, {.Key = "PositionBild",
                                .Text = "PicturePosition",
                                .Enabled = [this] { return WithPicture(); }});
    return frame;
}

QWidget* frmOverlay::FontFrame() {
    const auto withText = [this] { return WithText(); };
    QGroupBox* frame = Controls.Frame("FrameFont");
    auto* rows = new SettingsRows(Controls, frame);
    Font = new FontChooser(Controls, withText);
    rows->AddWhole(Font);
    rows->Add(btnColor, {.Key = "Color", .Text = "TextColor", .Enabled = withText});
    rows->Add(btnBackColor,
              {.Key = "BackColor",
               .Enabled = [this] { return WithText() && !chkTransparent->isChecked(); }},
              chkTransparent);
    Controls.Add(chkTransparent, {.Key = "Transparent", .Enabled = withText});
    return frame;
}

QWidget* frmOverlay::PreviewFrame() {
    QGroupBox* frame = Controls.Frame("FramePreview");
    (new QVBoxLayout(frame))->addWidget(Preview);
    return frame;
}

QWidget* frmOverlay::FormatFrame() {
    QGroupBox* frame = Controls.Frame("FrameDateTime");
    auto* rows = new SettingsRows(Controls, frame);
    rows->Add(cbDate, {.Key = "Date", .Text = "DateFormat", .Enabled = [this] {
                           return WithText() && lstEffect->Place() != Time;
                       }});
    rows->Add(cbTime, {.Key = "Time", .Text = "TimeFormat", .Enabled = [this] {
                           return WithText() && lstEffect->Place() != Date;
                       }});
    return frame;
}

void frmOverlay::ConnectControls() {
    connect(&Controls, &Bindings::Edited, this, &frmOverlay::ShowNote);
    connect(&Controls, &Bindings::Edited, Preview, &OverlayPreview::Renew);
    connect(&Controls, &Bindings::TextsShown, this, &frmOverlay::ShowLists);
    connect(&Controls, &Bindings::TextsShown, Preview, &OverlayPreview::Renew);
    connect(cbPicture, &QComboBox::activated, this, &frmOverlay::ChoosePicture);
    connect(Font, &FontChooser::Changed, Preview, &OverlayPreview::Renew);
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

void frmOverlay::ShowSettings() {
    ShowFormats();
    single = Setting("Overlayfile");
    if (single.isEmpty()) single = SettingRowOf(u"Einstellungen", u"Overlayfile").Default;
    freeX = ValLong(Setting("PositionX"));
    freeY = ValLong(Setting("PositionY"));
    warning.Begin({single});
    ShowPictures();
    SettingsWindow::ShowSettings();
    ShowFont();
    // Nobody has chosen black on black: what can be read is what is drawn.
    if (!chkTransparent->isChecked())
        btnColor->SetColour(Readable(btnColor->Colour(), btnBackColor->Colour()));
    const bool list = Setting("PictureEff") == "true";
    cbPicture->setCurrentIndex(list ? 0 : qMax(1, cbPicture->findData(single)));
    ShowOwnText();
    ShowNote();
    Preview->Restart();
    lstEffect->setFocus();
}

void frmOverlay::ShowFont() {
    const int height = Preview->CameraSize().isEmpty() ? 720 : Preview->CameraSize().height();
    constexpr double pointsPerPixel = 0.75;
    Font->SetUsualPoints(qRound(UsualFontPixels(height) * pointsPerPixel));
    const SettingRow& size = SettingRowOf(u"Einstellungen", u"Size");
    const int points = ValLong(Setting("Size"));
    const bool usual = points < size.Least || points > size.Most;
    Font->SetChoice(
        {Setting("Font"), usual ? 0 : points, Flag("Bold"), Flag("Italic"), Flag("Underline")});
}

bool frmOverlay::WithText() const {
    return lstEffect->Place() < Picture;
}

bool frmOverlay::WithPicture() const {
    return lstEffect->Place() == Picture || (WithText() && chkKombi->isChecked());
}

// The kind of the text in words, the same in every language.
QString frmOverlay::TextKind() const {
    static const std::array<QString, Picture> kinds{"Date", "Time", "Date, Time, Text",
                                                    "special Text"};
    return WithText() ? kinds.at(static_cast<std::size_t>(lstEffect->Place())) : QString();
}

QList<ProfileEntry> frmOverlay::Entries() const {
    const bool list = cbPicture->currentIndex() == 0;
    return Controls.Entries() + FontEntries()
           << Entry("Text", TextKind()) << Entry("PositionX", freeX) << Entry("PositionY", freeY)
           << Entry("Overlayfile", single)
           << Entry("PictureEff", list ? QString("true") : QString("false"));
}

QList<ProfileEntry> frmOverlay::FontEntries() const {
    const FontChooser::Choice& font = Font->Chosen();
    return {Entry("Font", font.Name),          Entry("FontIndex", font.NameIndex()),
            Entry("Size", font.Points),        Entry("SizeIndex", font.PointsIndex()),
            Entry("Bold", font.Bold),          Entry("Italic", font.Italic),
            Entry("Underline", font.Underline)};
}

// As TakePictures will choose once the list is saved.
QList<ProfileEntry> frmOverlay::EntriesWithPicture() const {
    QList<ProfileEntry> entries = Entries();
    if (lstEffect->Place() == NoOverlay) entries << Entry("Overlay", int{Picture});
    return entries << Entry("OverKombi", true);
}

// The operator's lines are to be seen.
void frmOverlay::TakeText() {
    ShowOwnText();
    const int own = lstEffect->Place();
    if (own != DateTimeText && own != SpecialText)
        lstEffect->SetPlace(qBound(0, ValLong(Setting("Overlay")), int{NoOverlay}));
    Preview->Restart();
}

// A list that was put together is to be seen; without one the single picture is back.
void frmOverlay::TakePictures() {
    ShowPictures();
    const bool list = Setting("PictureEff") == "true";
    cbPicture->setCurrentIndex(list ? 0 : qMax(1, cbPicture->findData(single)));
    if (list && lstEffect->Place() == NoOverlay) lstEffect->SetPlace(Picture);
    if (list && WithText()) chkKombi->setChecked(true);
    ShowNote();
    Preview->Restart();
}

void frmOverlay::ChoosePicture() {
    if (cbPicture->currentIndex() > 0) {
        single = cbPicture->currentData().toString();
        warning.Choose(single);
    }
    ShowNote();
    WarnOfSize();
    Preview->Restart();
}

// Sent alone, a picture may be as large as it likes.
void frmOverlay::WarnOfSize() {
    if (!isVisible()) return;
    if (cbPicture->currentIndex() == 0 || Flag("Capture", "Picture")) return;
    const QImage& picture =
        file.Read(OverlayFile(Core().PictureValues.ReadingFolders(), single)).Image;
    if (warning.Tells(single, picture.size(), Preview->CameraSize()))
        Boxes().Show("Stillpost", ComposeMessages(Words(), {}).MsgOverlaySize,
                     MessageBoxes::Icon::Warning);
}

// Again with each new preview: the file may come, go or be mended meanwhile.
void frmOverlay::ShowNote() {
    if (!isVisible()) return;
    QString note;
    if (WithPicture() && cbPicture->currentIndex() == 0 && Setting("0Pic", "Picture").isEmpty())
        note = Text("ListEmpty");
    else if (WithPicture() && cbPicture->currentIndex() > 0) {
        const QString path = OverlayFile(Core().PictureValues.ReadingFolders(), single);
        note = OverlayFaultText(Words(), single, file.Read(path).Fault);
    }
    Preview->SetNote(note);
}

void frmOverlay::ShowLists() {
    QStringList effects;
    for (int i = Date; i <= NoOverlay; ++i) effects << Text("Effect" + QString::number(i));
    lstEffect->SetTexts(Text("EffectHeading"), effects);
    QStringList positions;
    constexpr int count = 7;
    for (int i = 0; i < count; ++i) positions << Text("Position" + QString::number(i));
    lstPosition->SetTexts(Text("TextPositionHeading"), positions);
    lstPositionBild->SetTexts(Text("PicturePositionHeading"), positions);
    ShowFormats();
    ShowPictures();
    ShowOwnText();
    ShowNote();
}

// Each form with the date and time of now, in the language in which the pictures have it.
void frmOverlay::ShowFormats() {
    const QDateTime now = Core().Wait.OwnClock().Now();
    const QLocale& locale = Core().PictureValues.Locale;
    const auto fill = [](QComboBox& list, int forms, const auto& format) {
        const QSignalBlocker quiet(&list);
        const int chosen = qMax(list.currentIndex(), 0);
        list.clear();
        for (int i = 0; i < forms; ++i) list.addItem(format(i));
        list.setCurrentIndex(chosen);
    };
    fill(*cbDate, DateForms,
         [&](int form) { return FormatDate(DateForm{form}, now.date(), locale); });
    fill(*cbTime, TimeForms,
         [&](int form) { return FormatTime(TimeForm{form}, now.time(), locale); });
}

// The list of pictures and the files of the overlay folder, the one of the settings among them.
void frmOverlay::ShowPictures() {
    const QSignalBlocker quiet(cbPicture);
    const bool list = cbPicture->currentIndex() == 0 && cbPicture->count() > 0;
    cbPicture->clear();
    int count = 0;
    while (!Setting(QString::number(count) + "Pic", "Picture").isEmpty()) ++count;
    cbPicture->addItem(Text("PictureList").arg(PicturesText(Words(), count)));
    QStringList names = OverlayNames(Core().PictureValues.ReadingFolders());
    if (!names.contains(single)) {
        names.removeIf(
            [this](const QString& name) { return name.compare(single, Qt::CaseInsensitive) == 0; });
        names << single;
    }
    for (const QString& name : std::as_const(names)) cbPicture->addItem(name, name);
    cbPicture->setCurrentIndex(list ? 0 : cbPicture->findData(single));
}

// As much of it as tells one text from another.
void frmOverlay::ShowOwnText() {
    constexpr int rows = 8;
    constexpr int letters = 24;
    QString text;
    for (int i = 0; i < rows && text.isEmpty(); ++i)
        text = Setting("Lin" + QString::number(i), "Text");
    if (text.size() > letters) text = text.left(letters).trimmed() + u'…';
    lblText->setText(text.isEmpty() ? Text("NoText") : text);
}
