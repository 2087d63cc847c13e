#pragma once

#include <QImage>
#include <QWidget>

// Shows the newest preview picture: in its proportions unless it is to be stretched, at the top
// left unless it is to be centred.
class PreviewArea : public QWidget {
    Q_OBJECT

  public:
    explicit PreviewArea(QWidget* parent = nullptr);

    void SetPicture(const QImage& newest);
    void Clear();
    void SetStretched(bool on);
    void SetCentred(bool on);

    // Where a picture of this size comes to lie in an area of that size, both in pixels.
    [[nodiscard]] static QRect Place(const QSize& picture, const QSize& area, bool stretched,
                                     bool centred);

  signals:
    // The room for a picture in pixels of the screen, more than those of the window on a screen
    // with a scale factor.
    void RoomChanged(QSize pixels);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage picture;
    bool stretched = false;
    bool centred = false;
};
