#pragma once

#include "ui/settings/background.h"
#include "ui/settings/camera/places.h"
#include "ui/texts/texts.h"

#include <QDialog>

class FolderList;
class Program;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

// The path chooser: picks a folder for the pictures or for their archive, as the main state says.
// It writes nothing; whoever asked takes the folder over.
class frmPfad : public QDialog {
    Q_OBJECT

  public:
    // Both outlive the window.
    frmPfad(Program& ownProgram, Texts& ownTexts, QWidget* parent);

    QComboBox* Drive1;
    FolderList* Dir1;
    QLineEdit* txtFolder;  // the folder that Dir1 is at; another one can be typed
    QPushButton* btnNew;
    QPushButton* btnSave;
    QPushButton* btnCancel;
    QLabel* lblNote;

    // Begins at the folder that the settings have now.
    void Open();

  signals:
    // A folder was accepted.
    void Chosen(const QString& folder);

  public slots:
    void accept() override;

  private:
    void Lay();
    void Connect();
    void ShowTexts();
    void ShowPlaces();
    void ShowPath();
    void ShowFolder();
    void GoToTyped();
    void AskForName();
    [[nodiscard]] QString Begin() const;
    [[nodiscard]] QString Text(const QString& key) const { return texts.Get("frmPfad", key); }
    bool eventFilter(QObject* object, QEvent* event) override;

    Program& program;
    Texts& texts;
    QGroupBox* frame;
    QLabel* lblSearch;
    QLabel* lblFolder;
    Background background;
    QList<Place> places;
    bool acceptWhenOpened = false;
};
