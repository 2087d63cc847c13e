#pragma once

#include "film/archive_listing.h"
#include "ui/settings/background.h"

#include <QListWidget>

// Pictures of the archive in one row, evenly taken from many. Only those in sight are read, one
// after another on another thread.
class FilmStrip : public QListWidget {
    Q_OBJECT

  public:
    explicit FilmStrip(QWidget* parent = nullptr);

    // Shows some of them, the first and the last among them. locale: of their times.
    void ShowPictures(const std::vector<ArchivedPicture>& pictures, const QLocale& locale);

    // When the chosen one was taken; none: none is chosen.
    [[nodiscard]] std::optional<WallTime> Chosen() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Fit();
    void ReadSoon();
    void ReadNext();
    [[nodiscard]] QListWidgetItem* Unread() const;

    Background background;
    std::vector<ArchivedPicture> shown;
    bool reading = false;
};
