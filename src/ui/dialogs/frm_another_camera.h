#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class Texts;

// Asks for the name of another camera and makes the program folder for it.
class frmAnotherCamera : public QDialog {
    Q_OBJECT

  public:
    // ownFolder: the program folder, whose settings are copied. The texts outlive the window.
    frmAnotherCamera(const QString& ownFolder, Texts& ownTexts, QWidget* parent);

    QLineEdit* txtName;
    QPushButton* btnMake;
    QPushButton* btnCancel;
    QLabel* lblNote;  // why it cannot be made

    void Open();

  signals:
    // The folder is there; a program is to be started with it.
    void Made(const QString& folder);

  public slots:
    void accept() override;

  protected:
    bool event(QEvent* event) override;

  private:
    void ShowTexts();
    void Fit();
    void Note(const QString& text);
    [[nodiscard]] QString Text(const QString& key) const;

    QString folder;
    Texts& texts;
    QLabel* explained;
    QLabel* caption;
};
