#pragma once

#include "camera/capture_fault.h"

#include <QWidget>

class Texts;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

// A camera that the operator writes down.
struct WrittenCamera {
    QString Name = {};
    QString Address = {};
    QString FormerName = {};  // in the settings; empty for a new one
    CaptureKind Kind = CaptureKind::Network;

    // NAME|ADDRESS, and back.
    [[nodiscard]] QString Line() const { return Name + u'|' + Address; }
    [[nodiscard]] static WrittenCamera FromLine(const QString& line);
};

// The fields of one such camera. Which there are depends on what kind of camera it is; the password
// has a field of its own, in which it cannot be read.
class CameraForm : public QWidget {
    Q_OBJECT

  public:
    // ownTexts outlives the form.
    explicit CameraForm(const Texts& ownTexts, QWidget* parent = nullptr);

    QLineEdit* txtName;
    QComboBox* cbKind;  // network camera, video file, test picture
    QLineEdit* txtAddress;
    QPushButton* btnFile;
    QLineEdit* txtUser;
    QLineEdit* txtPassword;

    void Show(const WrittenCamera& camera);
    [[nodiscard]] WrittenCamera Camera() const;
    void ShowTexts();

  signals:
    // By the operator.
    void Changed();

  private:
    void Lay();
    void Connect();
    void ChangeKind();
    void FitToKind();
    void ChooseFile();
    [[nodiscard]] CaptureKind Kind() const;
    [[nodiscard]] QString Address() const;
    [[nodiscard]] QString Text(const QString& key) const;

    const Texts& texts;
    QLabel* lblName;
    QLabel* lblKind;
    QLabel* lblAddress;
    QLabel* lblUser;
    QLabel* lblPassword;
    WrittenCamera shown;
};
