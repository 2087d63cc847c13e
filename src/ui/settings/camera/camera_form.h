#pragma once

#include "camera/capture_fault.h"

#include <QWidget>

class Bindings;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class SettingsRows;

// A camera that the operator writes down.
struct WrittenCamera {
    QString Name = {};
    QString Address = {};
    QString FormerName = {};  // in the settings; empty for a new one
    CaptureKind Kind = CaptureKind::Network;

    // NAME|ADDRESS, and back.
    [[nodiscard]] QString Line() const { return Name + u'|' + Address; }
    [[nodiscard]] static WrittenCamera FromLine(const QString& line);

    // The key of the text in section "CameraSources" on what is wrong with the address; empty when
    // nothing is.
    [[nodiscard]] QString AddressFault() const;
};

// The fields of one such camera. Which there are depends on what kind of camera it is; the password
// has a field of its own, in which it cannot be read.
class CameraForm : public QWidget {
    Q_OBJECT

  public:
    // bindings: of the window, which they outlive.
    explicit CameraForm(Bindings& ownBindings);

    QLineEdit* txtName;
    QComboBox* cbKind;  // network camera, video file, test picture
    QLineEdit* txtAddress;
    QPushButton* btnFile;
    QLineEdit* txtUser;
    QLineEdit* txtPassword;

    void Show(const WrittenCamera& camera);
    [[nodiscard]] WrittenCamera Camera() const;

  signals:
    // By the operator.
    void Changed();

  private:
    void LayOut();
    void Connect();
    void ChangeKind();
    void TakeApart();
    void FitToKind();
    void ChooseFile();
    [[nodiscard]] CaptureKind Kind() const;
    [[nodiscard]] QString Address() const;

    Bindings& bindings;
    SettingsRows* rows;
    QLabel* lblAddress;
    WrittenCamera shown;
};
