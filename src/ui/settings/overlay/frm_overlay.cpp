#include "ui/settings/overlay/frm_overlay.h"

#include "base/message_boxes.h"
#include "core/program.h"
#include "core/settings/load_settings.h"
#include "core/settings/setting_table.h"
#include "picture/overlay_text_style.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/frm_bild.h"
#include "ui/settings/overlay/frm_text.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/overlay_files.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/settings/overlay/picture_list.h"
#include "ui/texts/messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include <algorithm>
#include <array>

namespace {

// A place in a list; the first one for what is none.
int PlaceIn(const QString& written, int count) {
    const int place = ValLong(written);
    return place >= 0 && place < count ? place : 0;
}

QColor ColourOf(int number) {
    return ColorOf(QString::number(number)).value_or(Qt::black);
}

}  // namespace

void frmOverlay::ShowSettings() {
    const Settings now = LoadSettings(Core().SettingsFile());
    lstEffect->SetPlace(now.Overlay);
    chkKombi->setChecked(now.OverKombi);
    lstPosition->SetPlace(now.Position);
    lstPositionBild->SetPlace(PlaceIn(Setting("PositionBild"), lstPositionBild->count() - 1));
    cbDate->setCurrentIndex(PlaceIn(now.Date, cbDate->count()));
    cbTime->setCurrentIndex(PlaceIn(now.Time, cbTime->count()));
    freeX = now.PositionX;
    freeY = now.PositionY;
    single = now.Overlayfile;
    warning.Begin({single});
    ShowLook(now);
    ShowFormats();
    ShowPictures();
    cbPicture->setCurrentIndex(now.PictureEff ? 0 : qMax(1, cbPicture->findData(single)));
    ShowOwnText();
    ShowState();
    Preview->Restart();
    lstEffect->setFocus();
}

void frmOverlay::ShowLook(const Settings& now) {
    const int height = Preview->CameraSize().isEmpty() ? 720 : Preview->CameraSize().height();
    constexpr double pointsPerPixel = 0.75;
    Font->SetUsualPoints(qRound(UsualFontPixels(height) * pointsPerPixel));
    Font->SetChoice({now.Font, now.Size, now.Bold, now.Italic, now.Underline});
    chkTransparent->setChecked(now.Transparent);
    btnBackColor->SetColour(ColourOf(now.BackColor));
    const QColor text = ColourOf(now.Color);
    // Nobody has chosen black on black: what can be read is what is drawn.
    btnColor->SetColour(now.Transparent ? text : Readable(text, btnBackColor->Colour()));
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
    return QList<ProfileEntry>{Entry("Date", cbDate->currentIndex()),
                               Entry("Time", cbTime->currentIndex()),
                               Entry("Overlay", lstEffect->Place()),
                               Entry("Text", TextKind()),
                               Entry("Position", lstPosition->Place()),
                               Entry("PositionX", freeX),
                               Entry("PositionY", freeY),
                               Entry("PositionBild", lstPositionBild->Place())} +
           LookEntries() +
           QList<ProfileEntry>{Entry("Overlayfile", single),
                               Entry("OverKombi", chkKombi->isChecked()),
                               Entry("PictureEff", list ? QString("true") : QString("false"))};
}

QList<ProfileEntry> frmOverlay::LookEntries() const {
    const FontChooser::Choice& font = Font->Chosen();
    return {Entry("Font", font.Name),
            Entry("FontIndex", font.NameIndex()),
            Entry("Size", font.Points),
            Entry("SizeIndex", font.PointsIndex()),
            Entry("Color", ColourNumber(btnColor->Colour())),
            Entry("BackColor", ColourNumber(btnBackColor->Colour())),
            Entry("Transparent", chkTransparent->isChecked()),
            Entry("Bold", font.Bold),
            Entry("Italic", font.Italic),
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
        lstEffect->SetPlace(PlaceIn(Setting("Overlay"), NoOverlay + 1));
    Preview->Restart();
}

// A list that was put together is to be seen; without one the single picture is back.
void frmOverlay::TakePictures() {
    ShowPictures();
    const bool list = Setting("PictureEff") == "true";
    cbPicture->setCurrentIndex(list ? 0 : qMax(1, cbPicture->findData(single)));
    if (list && lstEffect->Place() == NoOverlay) lstEffect->SetPlace(Picture);
    if (list && WithText()) chkKombi->setChecked(true);
    ShowState();
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

// What does nothing with the effect that is chosen cannot be set.
void frmOverlay::ShowState() {
    const int effect = lstEffect->Place();
    chkKombi->setEnabled(WithText());
    cbPicture->setEnabled(WithPicture());
    lstPositionBild->setEnabled(WithPicture());
    for (QWidget* each :
         std::initializer_list<QWidget*>{lstPosition, Font, btnColor, chkTransparent})
        each->setEnabled(WithText());
    btnBackColor->setEnabled(WithText() && !chkTransparent->isChecked());
    cbDate->setEnabled(WithText() && effect != Time);
    cbTime->setEnabled(WithText() && effect != Date);
    lblText->setEnabled(effect == DateTimeText || effect == SpecialText);
    ShowNote();
    Preview->Renew();
}
