#pragma once

#include <QPixmap>
#include <QProgressBar>

// A bar that fills from left to right, drawn from a picture of it empty and one of it full. Without
// pictures it is plain, in a colour that can be chosen.
class PictureBar : public QProgressBar {
    Q_OBJECT

  public:
    enum class Caption { None, TextAndPercentage, Percentage };

    explicit PictureBar(QWidget* parent);

    // Takes the size of the first; null pictures make a plain bar. A missing full picture is
    // replaced by a plain fill.
    void SetPictures(const QPixmap& emptyPicture, const QPixmap& fullPicture);
    // To be used in place of setValue, which paints each bar at once and by itself.
    void SetValue(int newValue);
    // What a plain bar is filled with; an invalid colour is that of the window's text.
    void SetColour(const QColor& fill);
    // What is written on the bar: `before`, the percentage, `after`.
    void SetCaption(Caption kind, const QString& before, const QString& after);

    [[nodiscard]] QString text() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QPixmap empty;
    QPixmap full;
    QColor colour = Qt::darkBlue;
    Caption caption = Caption::None;
    QString textBefore;
    QString textAfter;
};
