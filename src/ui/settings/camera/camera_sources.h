#pragma once

#include "camera/ezvidcap.h"
#include "ui/settings/camera/camera_form.h"
#include "ui/settings/settings_window.h"

class CameraView;
class QListWidget;

// The list of cameras that no driver announces: network cameras, video files, test pictures. Each
// can be tried out before it is saved.
class CameraSources : public SettingsWindow {
    Q_OBJECT

  public:
    CameraSources(const Surroundings& surroundings, QWidget* parent);

    QListWidget* lstCameras;
    QPushButton* btnAdd;
    QPushButton* btnRemove;
    CameraForm* Form = nullptr;  // of the one that is marked in the list
    QPushButton* btnTry;
    CameraView* Live = nullptr;

    // Puts one more camera into the list of the open window, to be looked at and saved there.
    void AddAddress(const QString& address);

  protected:
    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    [[nodiscard]] bool Check() override;
    void hideEvent(QHideEvent* event) override;

  private:
    // For the trial no installed cameras are looked for.
    class NoDevices : public CaptureDevices {
      public:
        [[nodiscard]] QList<CaptureDevice> List() const override { return {}; }
        [[nodiscard]] QList<CaptureFormat> Formats(const CaptureDevice&) const override {
            return {};
        }
    };

    void AddControls();
    void LayOut();
    void Connect();
    void ShowList(int marked);
    void ShowMarked();
    void TakeForm();
    void Remove();
    void Try();
    void EndTrial();
    [[nodiscard]] int Marked() const;
    [[nodiscard]] bool Fits(int index);
    [[nodiscard]] QString FaultOf(const WrittenCamera& camera, QWidget*& field) const;
    [[nodiscard]] bool NameTaken(int index) const;
    [[nodiscard]] QString FreshName() const;

    QList<WrittenCamera> cameras;
    NoDevices noDevices;
    ezVidCap trial;
};
