#pragma once

#include "core/settings/settings.h"
#include "ui/texts/ftp_examples.h"

#include <QGroupBox>

class NumberField;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

// Where pictures go: a server with its account, or a folder of this computer. Examples stand in
// empty fields as hints only, so that none can be saved or tried by mistake.
class FtpAccessGroup : public QGroupBox {
    Q_OBJECT

  public:
    explicit FtpAccessGroup(const Texts& ownWords);

    QRadioButton* optServer;
    QRadioButton* optLocal;
    QLineEdit* txtServer;
    QLineEdit* txtVerzeichnis;
    QPushButton* btnFolder;
    QLineEdit* txtUser;
    QLineEdit* txtPW;
    QPushButton* btnShowPW;
    NumberField* txtPort;

    // folder: as it is written in the settings, unlike the one among the values.
    void ShowSettings(const Settings& values, const QString& server, const QString& folder);
    void ShowTexts();

    // The name of the local mode, typed as a server, means the local mode.
    void AdoptTypedMode();
    [[nodiscard]] bool Local() const;
    // As the settings have them: "Local" for a folder, which ends in a separator then.
    [[nodiscard]] QString Server() const;
    [[nodiscard]] QString Folder() const;
    [[nodiscard]] bool ServerIsExample() const;

    // Puts something below the fields.
    void AddBelow(QWidget* widget);

  signals:
    void Edited();
    void ModeChanged();

  private:
    void LayOut();
    void ApplyMode();
    void ChooseFolder();
    void ShowExamples();
    [[nodiscard]] QString Text(const QString& key) const { return words.Get("frmFTP", key); }
    void Describe(QWidget* control, const QString& key, const QString& name);

    const Texts& words;
    QVBoxLayout* all;
    QLabel* lblServer;
    QLabel* lblPath;
    QLabel* lblUser;
    QLabel* lblPassword;
    QLabel* lblPort;
    FtpExamples examples;
    QString otherFolder;  // of the mode that is not shown
};
