#pragma once

#include "camera/capture_format.h"
#include "ui/settings/settings_window.h"

class QComboBox;
class QLabel;
class QPushButton;

// The picture size and the rate to ask an installed camera for, out of those that it offers.
class CameraFormat : public SettingsWindow {
    Q_OBJECT

  public:
    CameraFormat(const Surroundings& surroundings, QWidget* parent);

    QComboBox* cbSize;
    QComboBox* cbRate;
    QPushButton* btnDriver;  // only where the driver has a window of its own
    QLabel* lblOffer;        // which camera, or that it cannot be asked

  private:
    void Ask(const QString& setting);
    void ShowOffer();
    void ShowSizes();
    void ShowRates();
    void ShowDriverPages();

    CaptureDevice device;
    QString camera;
    QList<CaptureFormat> offered;
    FormatWish wish;  // 0 x 0: automatic
};
