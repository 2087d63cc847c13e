#pragma once

#include "core/settings/settings.h"
#include "ui/texts/texts.h"

#include <QGroupBox>

class NumberField;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;

// History, replacement, quality, dial-up and autostart.
class FtpExtendedGroup : public QGroupBox {
    Q_OBJECT

  public:
    explicit FtpExtendedGroup(const Texts& ownWords);

    QCheckBox* chkHistory;
    NumberField* txtHistory;
    QCheckBox* chkDelete;
    QComboBox* cbQuality;
    QComboBox* cbConnection;
    QCheckBox* chkAnwahl;
    QCheckBox* chkAbwahl;
    QCheckBox* chkAutostart;

    void ShowSettings(const Settings& values, bool hangUp, bool autostart);
    // The system's dial-up entries, and the one that the settings name. One that is gone stays
    // shown, so that saving does not lose it; without a name the place in the list counts.
    void ShowConnections(const QStringList& entries, const QString& name, int place);
    void ShowTexts();
    // A folder of this computer has neither a history nor a line to dial.
    void SetLocal(bool nowLocal);

    [[nodiscard]] QString Connection() const;  // empty when there is none
    [[nodiscard]] int ConnectionPlace() const;

    // The quality that the operator has chosen in the list since it was shown, in per cent.
    [[nodiscard]] std::optional<int> ChosenQuality() const;

  private:
    void LayOut();
    void ApplyAvailability();
    [[nodiscard]] QString Text(const QString& key) const { return words.Get("frmFTP", key); }
    void Describe(QWidget* control, const QString& key);

    const Texts& words;
    QLabel* lblHistory;
    QLabel* lblDelete;
    QLabel* lblQuality;
    QLabel* lblDialUp;
    QLabel* lblConnection;
    bool local = false;
    bool qualityChosen = false;
};
