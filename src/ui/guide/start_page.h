#pragma once

#include "net/server_access.h"
#include "ui/guide/guide_page.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

// What the other pages have led to.
struct GuidePlan {
    QString Camera;
    ServerAccess Place;
    qint64 Interval = 0;  // milliseconds
    QString IntervalText;
    bool Offline = false;
    qint64 PictureBytes = 0;  // 0: not known
};

// The last page: what will happen now in words, what a web page needs, and what runs by itself.
class StartPage : public GuidePage {
    Q_OBJECT

  public:
    explicit StartPage(const SettingsWindow::Surroundings& surroundings);

    QLabel* lblPlan;
    QLineEdit* txtPublic;
    QLineEdit* txtHtml;
    QPushButton* btnCopy;
    QCheckBox* chkAutostart;
    QCheckBox* chkArchive;
    QLabel* lblSpace;

    // To be called each time the page is reached. An address that the operator has corrected stays
    // as long as the pictures go to the same place.
    void Show(const GuidePlan& newPlan);
    [[nodiscard]] QList<ProfileEntry> Entries() const override;
    void ShowTexts(const QList<QAbstractButton*>& below) override;
    [[nodiscard]] QWidget* First() const override;

  private:
    void LayOut();
    void ShowPlan();
    void ShowHtml();
    [[nodiscard]] QString SpaceText() const;

    GuidePlan plan;
    QString guessed;  // the address, before the operator corrected it
};
