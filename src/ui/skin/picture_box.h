#pragma once

#include <QLabel>

// Shows a picture and has its size. A label, which is what assistive programs take for a picture.
class PictureBox : public QLabel {
    Q_OBJECT

  public:
    explicit PictureBox(QWidget* parent);
    void SetPicture(const QPixmap& newPicture);

  protected:
    void paintEvent(QPaintEvent* event) override;
};
