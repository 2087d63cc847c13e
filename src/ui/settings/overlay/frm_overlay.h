#pragma once

#include "picture/overlay/overlay_reader.h"
#include "ui/settings/overlay/colour_button.h"
#include "ui/settings/overlay/headed_list.h"
#include "ui/settings/overlay/size_warning.h"
#include "ui/settings/settings_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

class FontChooser;
class OverlayPreview;
class frmBild;
class frmText;

// What is put on the pictures: date, time, text or picture, where, in which form, font and colours.
// The lines of the text and the list of pictures have windows of their own, which this one opens;
// what is saved there is chosen here, so that it shows.
class frmOverlay : public SettingsWindow {
    Q_OBJECT

  public:
    // The two windows outlive this one.
    frmOverlay(const Surroundings& surroundings, frmText& textWindow, frmBild& pictureWindow,
               QWidget* parent);

    HeadedList* lstEffect = new HeadedList;
    QPushButton* btnText = new QPushButton;
    QComboBox* cbPicture =
        new QComboBox;  // the list of pictures first, then each file of the overlay folder
    QPushButton* btnPicture = new QPushButton;
    QCheckBox* chkKombi = new QCheckBox;
    HeadedList* lstPosition = new HeadedList;
    HeadedList* lstPositionBild = new HeadedList;
    QComboBox* cbDate = new QComboBox;
    QComboBox* cbTime = new QComboBox;
    FontChooser* Font = nullptr;
    ColourButton* btnColor = new ColourButton;
    ColourButton* btnBackColor = new ColourButton;
    QCheckBox* chkTransparent = new QCheckBox;
    QLabel* lblText = new QLabel;  // how the operator's text begins
    OverlayPreview* Preview;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;

  private:
    // Effects by their place in the list.
    enum Effect { Date, Time, DateTimeText, SpecialText, Picture, NoOverlay };

    void LayOut();
    [[nodiscard]] QWidget* EffectFrame();
    [[nodiscard]] QWidget* PositionFrame();
    [[nodiscard]] QWidget* FontFrame();
    [[nodiscard]] QWidget* FormatFrame();
    [[nodiscard]] QWidget* PreviewFrame();
    void ConnectControls();
    void ConnectWindows(frmText& textWindow, frmBild& pictureWindow);
    void ShowFont();
    void ShowLists();
    void ShowFormats();
    void ShowPictures();
    void ShowOwnText();
    void ShowNote();
    void ChoosePicture();
    void TakeText();
    void TakePictures();
    void WarnOfSize();
    [[nodiscard]] bool WithText() const;
    [[nodiscard]] bool WithPicture() const;
    [[nodiscard]] QString TextKind() const;
    [[nodiscard]] QList<ProfileEntry> FontEntries() const;
    [[nodiscard]] QList<ProfileEntry> EntriesWithPicture() const;

    QString single = "Overlay.bmp";  // the overlay picture when it is not the list
    int freeX = 0;  // where the text is to stand, in pixels: kept, nothing here changes it
    int freeY = 0;
    SizeWarning warning;
    OverlayReader file;  // the single picture
};
