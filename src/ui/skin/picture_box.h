#pragma once

#include <QPixmap>
#include <QWidget>

// Shows a picture and has its size.
class PictureBox : public QWidget {
    Q_OBJECT

  public:
    explicit PictureBox(QWidget* parent);
    void SetPicture(const QPixmap& newPicture);
    [[nodiscard]] const QPixmap& Picture() const { return picture; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap picture;
};
