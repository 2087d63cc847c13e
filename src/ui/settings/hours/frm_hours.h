#pragma once

#include "ui/settings/settings_window.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

class QGroupBox;
class WeekPicture;

// The settings of when pictures are published and what visitors see otherwise: hours of the week or
// of daylight, cameras that give no picture, pictures on the minute.
class frmHours : public SettingsWindow {
    Q_OBJECT

  public:
    frmHours(const Surroundings& surroundings, QWidget* parent);

    QRadioButton* optAlways = new QRadioButton;
    QRadioButton* optWeek = new QRadioButton;
    QRadioButton* optSun = new QRadioButton;
    WeekPicture* Week;
    QLineEdit* txtWeek = new QLineEdit;  // the same in words
    QLineEdit* txtPlace = new QLineEdit;
    QLabel* lblShown;  // the hour that the keyboard is at, or today's light
    QComboBox* cbOutside = new QComboBox;
    NumberBox* txtOfflineAfter = new NumberBox;
    NumberBox* txtFrozenAfter = new NumberBox;
    QCheckBox* chkOnTheMinute = new QCheckBox;

  protected:
    void ShowSettings() override;
    void ShowTexts() override;
    [[nodiscard]] bool Check() override;

  private:
    [[nodiscard]] QGroupBox* HoursFrame();
    [[nodiscard]] QGroupBox* OtherFrame();
    void Connect();
    void ShowHours(const QString& written);
    [[nodiscard]] QString HoursText() const;
    void ShowWeek();
    void ShowLight();
    void TakePainted();
    [[nodiscard]] QDateTime Now() const;
};
