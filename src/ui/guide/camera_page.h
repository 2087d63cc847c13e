#pragma once

#include "ui/guide/guide_page.h"

class CameraView;
class Languages;
class QComboBox;
class QLineEdit;
class QPushButton;
class SettingsRows;
struct WrittenCamera;

// The first page: the language of everything, and the camera, whose picture is seen at once: one of
// those that the program knows, a network camera with its address, or the test picture.
class CameraPage : public GuidePage {
    Q_OBJECT

  public:
    CameraPage(const SettingsWindow::Surroundings& surroundings, Languages& ownLanguages);

    QComboBox* cbLanguage;
    QComboBox* cbCamera;
    QLineEdit* txtAddress;
    QLineEdit* txtUser;
    QLineEdit* txtPassword;
    QPushButton* btnTry;
    CameraView* View;

    void ShowSettings() override;
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    void ShowTexts(const QList<QAbstractButton*>& below) override;
    [[nodiscard]] QWidget* First() const override;
    // An address that nobody has looked at yet is tried first.
    [[nodiscard]] bool validatePage() override;

    // What is chosen counts again after the settings were loaded meanwhile.
    void ApplyAgain();
    // Of the camera chosen.
    [[nodiscard]] QString CameraName() const;

  protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    enum class Kind { Listed, Network, Test };

    void LayOut();
    void ListCameras();
    void Choose();
    void Apply();
    void ApplyLanguage();
    void ShowFields();
    void Try();
    void Look(bool waiting);
    void TakeAddressApart();
    [[nodiscard]] Kind Chosen() const;
    [[nodiscard]] WrittenCamera Written() const;
    [[nodiscard]] QString FreeName(const QString& name) const;

    Languages& languages;
    SettingsRows* rows;
    QString line;  // of the camera that is tried, NAME|ADDRESS; empty for one of the list
};
