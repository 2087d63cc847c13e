#pragma once

#include "base/message_boxes.h"
#include "base/profile_file.h"
#include "base/status_hub.h"
#include "picture/overlay/overlays.h"
#include "picture/picture_pipeline.h"
#include "ui/settings/overlay/preview_camera.h"

#include <QTemporaryDir>

#include <memory>

// Makes the picture that would be published with other settings than those of the file. It comes
// out of the same routines as the published ones, with folder, settings file and turns of its own,
// so that the upload cycle notices nothing.
class PreviewMaker {
  public:
    // Both outlive this.
    PreviewMaker(Program& ownCore, const Texts& ownWords);

    // The picture as it would be with `entries` in place of what the settings file says; null when
    // none would be published. Rows and pictures that take turns stay where they are.
    [[nodiscard]] QImage Make(const QList<ProfileEntry>& entries);
    // From here on the next row of the text and the next picture of the list are shown.
    void Turn();
    // Begins with the first row and the first picture again.
    void Restart();
    // Frees what costs memory or disk until the next picture.
    void Rest();

    PreviewCamera Camera;

  private:
    // Faults of the picture show in the preview itself.
    class SilentBoxes : public MessageBoxes {
      public:
        void Show(const QString&, const QString&, Icon) override {}
        [[nodiscard]] bool AskRetry(const QString&, const QString&) override { return false; }
        [[nodiscard]] bool AskYes(const QString&, const QString&) override { return false; }
    };

    void TakeState();
    [[nodiscard]] bool WriteSettingsFile(const QList<ProfileEntry>& entries) const;
    [[nodiscard]] QList<ProfileEntry> FileEntries() const;

    Program& core;
    std::unique_ptr<QTemporaryDir> folder;
    PictureState state;
    StatusHub nobody;
    SilentBoxes boxes;
    PicturePipeline pipeline;
    std::unique_ptr<Overlays> before;  // the turns as they were before the picture shown
    std::unique_ptr<Overlays> after;
};
