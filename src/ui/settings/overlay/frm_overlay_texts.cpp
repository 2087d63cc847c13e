#include "core/program.h"
#include "picture/overlay_text_date.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/font_chooser.h"
#include "ui/settings/overlay/frm_overlay.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/overlay_files.h"
#include "ui/settings/overlay/overlay_preview.h"
#include "ui/texts/messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

void frmOverlay::Name(QWidget& control, const QString& name, const QString& helpKey) {
    control.setAccessibleName(name.trimmed());
    control.setToolTip(Text(helpKey));
}

void frmOverlay::ShowTexts() {
    frameEffect->setTitle(Text("FrameEffect"));
    framePosition->setTitle(Text("FramePosition"));
    frameFormats->setTitle(Text("FrameDateTime"));
    frameFont->setTitle(Text("FrameFont"));
    framePreview->setTitle(Text("FramePreview"));
    const auto row = [this](QLabel& caption, QWidget& control, const QString& key) {
        caption.setText(Text(key));
        Name(control, Text(key), key + "Help");
    };
    row(*lblSelection, *lstEffect, "Selection");
    row(*lblSpecialText, *lblText, "SpecialText");
    row(*lblSpecialPicture, *cbPicture, "SpecialPicture");
    row(*lblPosition, *lstPosition, "TextPosition");
    row(*lblPositionBild, *lstPositionBild, "PicturePosition");
    row(*lblDate, *cbDate, "DateFormat");
    row(*lblTime, *cbTime, "TimeFormat");
    row(*lblColor, *btnColor, "TextColor");
    row(*lblBackColor, *btnBackColor, "BackColor");
    const auto button = [this](QAbstractButton& each, const QString& key) {
        each.setText(Text(key));
        Name(each, Text(key), key + "Help");
    };
    button(*btnText, "TextButton");
    button(*btnPicture, "PictureButton");
    button(*chkKombi, "Combination");
    button(*chkTransparent, "Transparent");
    Font->ShowTexts();
    ShowLists();
    SettingsWindow::ShowTexts();
    Preview->Renew();
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
    const auto fill = [](QComboBox& list, const auto& format) {
        const QSignalBlocker quiet(&list);
        const int chosen = qMax(list.currentIndex(), 0);
        list.clear();
        while (const auto example = format(QString::number(list.count()))) list.addItem(*example);
        list.setCurrentIndex(chosen);
    };
    fill(*cbDate, [&](const QString& index) { return FormatDate(index, now.date(), locale); });
    fill(*cbTime, [&](const QString& index) { return FormatTime(index, now.time(), locale); });
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
