#pragma once

#include "base/clock.h"
#include "ui/settings/overlay/preview_maker.h"

#include <QWidget>

#include <functional>

class PreviewArea;
class QLabel;

// Shows the picture as the settings in a window would have it published, renewed as soon as one of
// them changes and, while it is visible, about once a second with a new frame of the camera. What
// takes turns does so every few seconds.
class OverlayPreview : public QWidget {
    Q_OBJECT

  public:
    // Both outlive the preview.
    OverlayPreview(Program& core, const Texts& words, QWidget* parent = nullptr);

    // What the controls of the window say. To be set before the preview is shown.
    void SetEntries(std::function<QList<ProfileEntry>()> source) { entries = std::move(source); }
    // A setting has changed.
    void Renew();
    // Another first row or picture was chosen: begins with it.
    void Restart();
    // What the picture alone does not tell; empty for nothing.
    void SetNote(const QString& text);
    [[nodiscard]] QString Note() const;

    // The picture as it would be published; null when none would be.
    [[nodiscard]] const QImage& Picture() const { return picture; }
    // Of the camera's pictures, pixels; empty while it is not known.
    [[nodiscard]] QSize CameraSize() const { return maker.Camera.Size(); }

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    // The picture was made anew.
    void Renewed();

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void AskCamera();
    void Draw();
    void ShowScaled();

    PreviewMaker maker;
    const Clock& clock;
    std::function<QList<ProfileEntry>()> entries;
    PreviewArea* area;
    QLabel* note;
    QImage picture;
    Timer soon;  // several changes at a time make one picture
    Timer calm;
    int renewals = 0;  // since the last turn
    bool asking = false;
};
