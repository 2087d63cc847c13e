#include "ui/settings/overlay/picture_list.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace {

constexpr QSize thumbnail(64, 48);

// All of one size, so that the names stand below each other.
QIcon Thumbnail(const QPixmap& small) {
    QPixmap picture(thumbnail);
    picture.fill(Qt::transparent);
    QRect place(QPoint(), small.size());
    place.moveCenter(picture.rect().center());
    QPainter(&picture).drawPixmap(place, small);
    return picture;
}

QPixmap Small(const QImage& image) {
    const bool large = image.width() > thumbnail.width() || image.height() > thumbnail.height();
    return QPixmap::fromImage(
        large ? image.scaled(thumbnail, Qt::KeepAspectRatio, Qt::SmoothTransformation) : image);
}

}  // namespace

PictureList::PictureList(QWidget* parent) : QListWidget(parent) {
    setIconSize(thumbnail);
    setDragDropMode(QAbstractItemView::InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(model(), signal, this, &PictureList::Changed);
    connect(model(), &QAbstractItemModel::rowsMoved, this, &PictureList::Changed);
}

QStringList PictureList::Names() const {
    QStringList names;
    for (int row = 0; row < count(); ++row) names << item(row)->text();
    return names;
}

void PictureList::AddName(const QString& name) {
    auto* line = new QListWidgetItem(name);
    line->setToolTip(name);
    line->setIcon(Thumbnail({}));
    addItem(line);
}

void PictureList::SetPicture(int row, const FilePicture& picture) {
    QListWidgetItem* line = item(row);
    line->setData(Role::Fault, static_cast<int>(picture.Fault));
    line->setData(Role::Size, picture.Image.size());
    const QIcon broken = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    line->setIcon(
        Thumbnail(picture.Image.isNull() ? broken.pixmap(thumbnail) : Small(picture.Image)));
}

int PictureList::NextUnread() const {
    for (int row = 0; row < count(); ++row)
        if (!item(row)->data(Role::Fault).isValid()) return row;
    return -1;
}

QSize PictureList::SizeOf(int row) const {
    return row >= 0 && row < count() ? item(row)->data(Role::Size).toSize() : QSize();
}

PictureFault PictureList::FaultOf(int row) const {
    if (row < 0 || row >= count()) return PictureFault::None;
    return static_cast<PictureFault>(item(row)->data(Role::Fault).toInt());
}

void PictureList::MoveChosen(int by) {
    const int from = currentRow();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= count()) return;
    QListWidgetItem* line = takeItem(from);
    insertItem(to, line);
    setCurrentRow(to);
}

void PictureList::RemoveChosen() {
    if (currentRow() < 0) return;
    delete takeItem(currentRow());
}

void PictureList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete)
        RemoveChosen();
    else
        QListWidget::keyPressEvent(event);
}
