#pragma once

#include "platform/camera_controls.h"
#include "ui/settings/settings_window.h"

class ControlRow;
class CameraView;
class QLabel;

// Brightness, contrast and whatever else the camera can adjust, beside its live picture. What is
// changed acts at once; saving keeps it for the next time that the camera is opened, closing gives
// the camera its former values back. That holds for what is changed in the driver's own window as
// well, as far as it stands in this one.
class CameraAdjusting : public SettingsWindow {
    Q_OBJECT

  public:
    CameraAdjusting(const Surroundings& surroundings, QWidget* parent);

    CameraView* Live;
    QPushButton* btnDefaults;
    QPushButton* btnDriver;  // only where the driver has a window of its own
    QLabel* lblState;        // that there is nothing to adjust, or a value was not taken

    [[nodiscard]] const QList<ControlRow*>& Rows() const { return rows; }

  public slots:
    void reject() override;

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LayOut();
    [[nodiscard]] QList<CameraControl> CurrentControls() const;
    void MakeRows(const QList<CameraControl>& controls);
    void RefreshRows();
    void Set(const QString& id, int value);
    void SetAll(const QList<CameraControl>& controls, int CameraControl::*value);
    void ShowDriverPages();
    void GiveBack();
    void Watch();
    void LeaveOtherCamera();
    [[nodiscard]] QString Caption(const CameraControl& control) const;
    [[nodiscard]] CameraControl Translated(const CameraControl& control) const;

    QVBoxLayout* column;
    QWidget* panel = nullptr;  // with the rows
    QList<ControlRow*> rows;
    CaptureDevice device;
    QString camera;
    QList<CameraControl> before;  // the controls when the window was opened
};
