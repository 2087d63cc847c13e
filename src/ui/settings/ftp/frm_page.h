#pragma once

#include "net/publishing/page_placing.h"
#include "ui/settings/settings_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

// Puts a web page beside the pictures, the way that the FTP settings show.
class frmPage : public SettingsWindow {
    Q_OBJECT

  public:
    // What the window of the server asks for.
    struct Place {
        // Where the page goes; nothing while something is wrong there, which the operator is told.
        std::function<std::optional<ServerAccess>()> Access;
        // The settings as they stand in the fields, saved or not.
        std::function<QList<ProfileEntry>()> Entries;
    };
    frmPage(const Surroundings& surroundings, Place ownPlace, QWidget* parent);

    QLineEdit* txtTitle = new QLineEdit;
    QLineEdit* txtFile = new QLineEdit;
    QPushButton* btnPut = new QPushButton;
    QPushButton* btnStop = new QPushButton;
    QLabel* lblState = new QLabel;  // what is done at the moment, or how it went

  protected:
    void ShowSettings() override;
    void hideEvent(QHideEvent* event) override;

  private:
    void LayOut();
    void Put();
    void PutThere(const ServerAccess& access, const PagePlacing::Page& page);
    void Say(std::function<QString()> text);

    Place place;
    PagePlacing placing;
    Timer second;
    PageStep step = PageStep::Connecting;
    int seconds = 0;
    std::function<QString()> said;  // again when the language changes
};
