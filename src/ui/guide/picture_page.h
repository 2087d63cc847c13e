#pragma once

#include "ui/guide/guide_page.h"

class OverlayPreview;
class PreviewArea;
class QCheckBox;
class QComboBox;
class QLineEdit;

// The third page: what stands on the picture, how often there is a new one, and whether visitors
// see another picture when publishing stops. What nobody has changed here stays as the settings
// have it, a richer overlay for example.
class PicturePage : public GuidePage {
    Q_OBJECT

  public:
    explicit PicturePage(const SettingsWindow::Surroundings& surroundings);

    QCheckBox* chkDate;
    QCheckBox* chkTime;
    QLineEdit* txtLine;
    QComboBox* cbInterval;
    QCheckBox* chkOffline;
    QCheckBox* chkOfflineAfter;
    PreviewArea* OfflineLook;
    OverlayPreview* Preview;

    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    void ShowTexts(const QList<QAbstractButton*>& below) override;
    [[nodiscard]] QWidget* First() const override;
    // Remembers how large the picture shown is when it is encoded.
    [[nodiscard]] bool validatePage() override;

    [[nodiscard]] qint64 Interval() const;  // milliseconds
    [[nodiscard]] QString IntervalText() const;
    [[nodiscard]] qint64 PictureBytes() const { return bytes; }

  private:
    void LayOut();
    void ShowOverlay();
    void ShowIntervals(qint64 wanted);
    void ShowOffline();
    void ShowPatience(const QString& minutes);
    [[nodiscard]] QString Patience() const;
    void ShowNote();
    [[nodiscard]] QString IntervalName(qint64 milliseconds) const;
    [[nodiscard]] QList<ProfileEntry> OverlayEntries() const;

    bool overlayChanged = false;
    qint64 bytes = 0;
};
