#pragma once

#include <QAbstractButton>
#include <QPixmap>

// The mark of what has the keyboard.
void PaintFocusRing(QPainter& painter, const QRect& around);

// A button drawn from a pair of pictures: one at rest, one while the mouse is over it. Without a
// picture it draws itself with its text. The text is also what screen readers say. Reached with
// Tab; Space and Enter click it.
class PictureButton : public QAbstractButton {
    Q_OBJECT

  public:
    PictureButton(const QString& text, QWidget* parent);

    // Loads the pair and takes the size of the first; null pictures make a plain button. A missing
    // hover picture is replaced by the normal one.
    void SetPictures(const QPixmap& normalPicture, const QPixmap& hoverPicture);
    // The picture at rest, as if the mouse had left.
    void ShowNormal() { SetHovered(false); }
    [[nodiscard]] bool Hovered() const { return hovered; }

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void SetHovered(bool on);
    void PaintPicture();
    void PaintPlain();

    QPixmap normal;
    QPixmap hover;
    bool hovered = false;
};
