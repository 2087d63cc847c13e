#pragma once

#include "ui/settings/overlay/picture_list.h"
#include "ui/settings/overlay/size_warning.h"
#include "ui/settings/settings_window.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include <functional>

class OverlayPreview;

// The list of overlay pictures that take turns on the camera's picture, or in its place. With a
// list the pictures use it from the next one on; without one they use the single overlay again.
// Pictures are read one at a time between other events, because fifty large ones take a while.
class frmBild : public SettingsWindow {
    Q_OBJECT

  public:
    frmBild(const Surroundings& surroundings, QWidget* parent);

    // The settings of other windows that count for the preview though they are not saved.
    void SetBase(std::function<QList<ProfileEntry>()> source) { base = std::move(source); }

    PictureList* List = new PictureList;
    QPushButton* btnAdd = new QPushButton;
    QPushButton* btnRemove = new QPushButton;
    QPushButton* btnUp = new QPushButton;
    QPushButton* btnDown = new QPushButton;
    QPushButton* btnDeleteList = new QPushButton;
    QCheckBox* chkCapture = new QCheckBox;
    NumberBox* UB = new NumberBox;
    QLabel* lblPicture = new QLabel;  // how many there are, and about the one that is chosen
    OverlayPreview* Preview;

    // Puts picture files from anywhere at the end of the list. What is no picture is told.
    void Add(const QStringList& files);

    void reject() override;

  protected:
    void ShowSettings() override;
    [[nodiscard]] bool Check() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;

  private:
    void LayOut();
    [[nodiscard]] QWidget* ListFrame();
    [[nodiscard]] QWidget* EffectFrame();
    void ConnectControls();
    void ChooseFiles();
    void DeleteList();
    void ReadSoon();
    void ReadNext();
    void ReadFile(const QString& path);
    void ShowState();
    void ShowPicture();
    void WarnOfSizes();
    void RemoveCopies(const QStringList& kept);
    [[nodiscard]] QStringList Places() const;
    [[nodiscard]] QList<ProfileEntry> PreviewEntries() const;

    std::function<QList<ProfileEntry>()> base;
    SizeWarning warning;
    QStringList waiting;  // files that are yet to be read into the list
    QStringList refused;  // what is wrong with those that were no pictures
    QStringList copies;   // that were made since the window was opened
    bool reading = false;
};
