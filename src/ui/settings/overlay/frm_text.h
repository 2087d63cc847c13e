#pragma once

#include "ui/settings/settings_window.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include <array>
#include <functional>

class OverlayPreview;
class QLineEdit;
class SettingsRows;

// The eight lines of the overlay text and whether they are shown all at once or in turn. Saving
// makes the pictures show them: with the date and time where that was chosen, else alone.
class frmText : public SettingsWindow {
    Q_OBJECT

  public:
    frmText(const Surroundings& surroundings, QWidget* parent);

    // The settings of other windows that count for the preview though they are not saved.
    void SetBase(std::function<QList<ProfileEntry>()> source) { base = std::move(source); }

    std::array<QLineEdit*, 8> Lin{};
    QRadioButton* optWhole = new QRadioButton;
    QRadioButton* optRows = new QRadioButton;
    NumberBox* Pic = new NumberBox;
    QCheckBox* chkDateFirst = new QCheckBox;
    QLineEdit* txtFile;  // the text file
    QPushButton* btnFile = new QPushButton(QStringLiteral("…"));
    NumberBox* Age = new NumberBox;
    OverlayPreview* Preview;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;

  private:
    void LayOut();
    void AddEffect();
    [[nodiscard]] QWidget* TextFrame();
    void AddFile(SettingsRows& rows);
    void ChooseFile();
    void ShowEffect(const QString& written);
    void ShowNote();
    [[nodiscard]] QList<ProfileEntry> PreviewEntries() const;

    std::function<QList<ProfileEntry>()> base;
};
