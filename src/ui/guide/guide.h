#pragma once

#include "ui/settings/settings_window.h"

#include <QWizard>

class CameraPage;
class GuidePage;
class Languages;
class PicturePage;
class PlacePage;
class StartPage;

// From nothing to a picture on the web in four pages: camera, where to, what is on the picture,
// start. Nothing is written before the last button; that writes everything at once, as the settings
// windows do, and starts. Cancelling leaves everything as it was.
class Guide : public QWizard {
    Q_OBJECT

  public:
    // All outlive the guide.
    Guide(const SettingsWindow::Surroundings& surroundings, Languages& ownLanguages,
          QWidget* parent);

    CameraPage* Camera;
    PlacePage* Place;
    PicturePage* Picture;
    StartPage* Start;

    // Begins with the first page and the settings as they are; an open guide only comes to the
    // front. language: to begin with, in place of the one in use.
    void Open();
    void Open(Texts::Language language);

    // The one of the three that a system with this locale has; English where it is another.
    [[nodiscard]] static Texts::Language LanguageOf(const QLocale& locale);

  public slots:
    void accept() override;
    void reject() override;

  protected:
    // Keeps within the screen when texts or fonts change.
    bool event(QEvent* event) override;

  private:
    void ShowTexts();
    void EnterPage(int id);
    void LayOutAgain();
    void FitToScreen();
    void SetTabOrder();
    void ApplyAgain();
    [[nodiscard]] QList<QAbstractButton*> Buttons() const;
    [[nodiscard]] QString Text(const QString& key) const;

    SettingsWindow::Surroundings around;
    Languages& languages;
    QList<GuidePage*> pages;
    bool open = false;   // and not being closed
    QString openedWith;  // the camera in use when it was opened
};
