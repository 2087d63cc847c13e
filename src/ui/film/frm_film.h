#pragma once

#include "core/settings/settings.h"
#include "film/film_work.h"
#include "ui/film/film_strip.h"
#include "ui/menu/links.h"
#include "ui/settings/settings_window.h"
#include "ui/widgets/number_box.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include <atomic>

// Films of the archive: which pictures, how they are shown, where the film goes. A film that is
// being made goes on when the window is closed. The archive is looked through on another thread.
class frmFilm : public SettingsWindow {
    Q_OBJECT

  public:
    // opener: shows the folder of a film.
    frmFilm(const Surroundings& surroundings, Opener opener, QWidget* parent);
    ~frmFilm() override;

    QDateTimeEdit* edtFrom = new QDateTimeEdit;
    QDateTimeEdit* edtTo = new QDateTimeEdit;
    NumberBox* Every = new NumberBox;
    FilmStrip* Strip = new FilmStrip;
    QPushButton* btnBegin = new QPushButton;
    QPushButton* btnEnd = new QPushButton;
    QLabel* lblCount = new QLabel;
    QLineEdit* txtFile = new QLineEdit;
    QPushButton* btnBrowse = new QPushButton(QStringLiteral("…"));
    QPushButton* btnMake = new QPushButton;
    QPushButton* btnCancel = new QPushButton;
    QPushButton* btnShow = new QPushButton;
    QProgressBar* Progress = new QProgressBar;
    QLabel* lblState = new QLabel;  // time left, or how it went

  protected:
    void ShowSettings() override;
    void ShowTexts() override;

  private:
    void LayOut();
    [[nodiscard]] QWidget* PicturesFrame();
    [[nodiscard]] QWidget* FilmFrame();
    [[nodiscard]] QWidget* DayFrame();
    void Connect();
    void LookSoon();
    void Look();
    void ShowFound(const ArchiveListing& found);
    void ShowCount();
    void ShowFile();
    void ChooseFile();
    void Make();
    void ShowProgress(int done, int total);
    void ShowResult(const FilmResult& result);
    [[nodiscard]] Settings Wanted() const;
    [[nodiscard]] FilmOrder Order() const;

    Opener open;
    QComboBox* format = new QComboBox;
    Background background;
    Timer look;
    std::shared_ptr<std::atomic<bool>> outdated;  // the search that is under way
    std::optional<qsizetype> pictures;            // that were found; none: not known yet
    bool noArchive = false;
    FilmWork work;
    FilmOrder order;  // of the film that is, or was, being made
    qint64 began = 0;
    bool made = false;
};
