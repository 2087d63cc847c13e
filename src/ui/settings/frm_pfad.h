#pragma once

#include "ui/settings/background.h"
#include "ui/settings/bindings.h"
#include "ui/settings/places.h"

#include <QDialog>

class FolderList;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// The path chooser: picks a folder. It writes nothing; whoever asked takes the folder over.
class frmPfad : public QDialog {
    Q_OBJECT

  public:
    // texts: outlive the window.
    frmPfad(const Texts& texts, QWidget* parent);

    QComboBox* Drive1;
    FolderList* Dir1;
    QLineEdit* txtFolder;  // the folder that Dir1 is at; another one can be typed
    QPushButton* btnNew;
    QPushButton* btnSave;
    QPushButton* btnCancel;
    QLabel* lblNote;
    QLabel* lblPurpose;  // what the folder is for

    // What the folder is for.
    enum class Purpose { Pictures, Archive, Publishing };

    // Begins at the folder, or at the nearest one above it; one that is open stays where it is.
    void Open(const QString& folder, Purpose isFor);

  signals:
    // A folder was accepted.
    void Chosen(const QString& folder);

  public slots:
    void accept() override;

  protected:
    // Enter in the field goes to the folder; a second one is needed for the button.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void LayOut();
    void Connect();
    void ShowTexts();
    void ShowPlaces();
    void ShowPurpose();
    void ShowPath();
    void ShowFolder();
    void GoToTyped();
    void AskForName();
    [[nodiscard]] bool Typed() const;
    [[nodiscard]] QString Text(const QString& key) const { return controls.Text(key); }

    Bindings controls;
    Background background;
    QList<Place> places;
    Purpose purpose = Purpose::Pictures;
    bool acceptWhenOpened = false;
};
