#pragma once

#include "picture/bitmap/picture_file.h"

#include <QListWidget>

// The overlay pictures that take turns, in their order, with a small picture of each. They are
// dragged to another place with the mouse; Delete takes one out.
class PictureList : public QListWidget {
    Q_OBJECT

  public:
    explicit PictureList(QWidget* parent = nullptr);

    // The pictures, the file names in the overlay folder.
    [[nodiscard]] QStringList Names() const;
    void AddName(const QString& name);
    // Shows what was found in the file of that line.
    void SetPicture(int row, const FilePicture& picture);
    // The first line of which nothing is shown yet; -1 when there is none.
    [[nodiscard]] int NextUnread() const;
    // The picture's size; empty while it is unknown.
    [[nodiscard]] QSize SizeOf(int row) const;
    // What is wrong with its file; nothing as long as it was not read.
    [[nodiscard]] PictureFault FaultOf(int row) const;

    // Moves the chosen line by one, up (-1) or down (1).
    void MoveChosen(int by);
    void RemoveChosen();

  signals:
    // Lines were added, moved or removed.
    void Changed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // What is known of a line's file.
    enum Role { Fault = Qt::UserRole, Size };
};
