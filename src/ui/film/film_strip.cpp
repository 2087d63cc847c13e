#include "ui/film/film_strip.h"

#include "film/film_pictures.h"
#include "picture/overlay/date_time_form.h"

#include <QEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr QSize thumbnail(128, 96);
constexpr std::size_t mostShown = 60;
constexpr int readRole = Qt::UserRole;
constexpr int textLines = 2;
constexpr int margin = 6;

QPixmap OnGround(const QImage& picture) {
    QPixmap ground(thumbnail);
    ground.fill(Qt::darkGray);
    if (picture.isNull()) return ground;
    const QImage small = picture.scaled(thumbnail, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QPainter(&ground).drawImage((thumbnail.width() - small.width()) / 2,
                                (thumbnail.height() - small.height()) / 2, small);
    return ground;
}

QString TextOf(WallTime at, const QLocale& locale) {
    const QDateTime time = LocalTimeOf(at);
    return ShortDate(time.date(), locale) + u'\n' +
           locale.toString(time.time(), QStringLiteral("HH:mm:ss"));
}

}  // namespace

FilmStrip::FilmStrip(QWidget* parent) : QListWidget(parent) {
    setViewMode(QListView::IconMode);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setMovement(QListView::Static);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setIconSize(thumbnail);
    setUniformItemSizes(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Fit();
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &FilmStrip::ReadSoon);
}

void FilmStrip::Fit() {
    setGridSize(
        {std::max(thumbnail.width(), fontMetrics().horizontalAdvance("00.00.0000")) + margin,
         thumbnail.height() + textLines * fontMetrics().lineSpacing() + 2 * margin});
    updateGeometry();
}

QSize FilmStrip::sizeHint() const {
    constexpr int usual = 4;
    return {usual * gridSize().width(), minimumSizeHint().height()};
}

QSize FilmStrip::minimumSizeHint() const {
    return {gridSize().width(),
            gridSize().height() + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth()};
}

void FilmStrip::changeEvent(QEvent* event) {
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) Fit();
}

bool FilmStrip::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Paint) ReadSoon();
    return QListWidget::viewportEvent(event);
}

void FilmStrip::ShowPictures(const std::vector<ArchivedPicture>& pictures, const QLocale& locale) {
    clear();
    shown.clear();
    reading = false;  // what is under way is answered no more once there is another question
    const std::size_t count = std::min(pictures.size(), mostShown);
    static const QPixmap empty = OnGround({});
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t last = std::max<std::size_t>(count - 1, 1);
        shown.push_back(pictures[i * (pictures.size() - 1) / last]);
        addItem(new QListWidgetItem(empty, TextOf(shown.back().At, locale)));
    }
    ReadSoon();
}

std::optional<WallTime> FilmStrip::Chosen() const {
    const int row = currentRow();
    if (row < 0) return {};
    return shown[static_cast<std::size_t>(row)].At;
}

QListWidgetItem* FilmStrip::Unread() const {
    for (int i = 0; i < count(); ++i) {
        QListWidgetItem* const one = item(i);
        const bool inSight = visualItemRect(one).intersects(viewport()->rect());
        if (inSight && !one->data(readRole).toBool()) return one;
    }
    return nullptr;
}

// The places are known once the list has been laid out.
void FilmStrip::ReadSoon() {
    QMetaObject::invokeMethod(this, &FilmStrip::ReadNext, Qt::QueuedConnection);
}

void FilmStrip::ReadNext() {
    QListWidgetItem* const one = reading || !isVisible() ? nullptr : Unread();
    if (!one) return;
    reading = true;
    one->setData(readRole, true);
    const int number = row(one);
    const QString file = shown[static_cast<std::size_t>(number)].File;
    background.Run([this, number, file]() -> std::function<void()> {
        const QImage picture = ReadArchived(file, thumbnail);
        return [this, number, file, picture] {
            reading = false;
            const auto place = static_cast<std::size_t>(number);
            if (place < shown.size() && shown[place].File == file)
                item(number)->setIcon(OnGround(picture));
            ReadNext();
        };
    });
}
