#pragma once

#include <QAbstractButton>
#include <QPixmap>

// A line of the options menu or of a window beside it: a check picture, a text, and an arrow where
// such a window opens. The mouse takes the keyboard along, so that one line is lit.
class MenuRow : public QAbstractButton {
    Q_OBJECT

  public:
    explicit MenuRow(QWidget* parent);

    // The picture in front of the text, and the one while the line is lit, when that is another;
    // `checked` is what screen readers say. Null pictures leave a plain check mark, or none.
    void SetMarks(const QPixmap& picture, bool checked, const QPixmap& litPicture = {});
    void SetHasFlyOut(bool has);
    // Stays lit while its fly-out is open.
    void SetOpen(bool isOpen);

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    // The mouse has moved over the line.
    void Entered();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void nextCheckState() override {}

  private:
    void PaintMark(QPainter& painter, bool lit);

    QPixmap mark;
    QPixmap litMark;
    bool hasFlyOut = false;
    bool open = false;
};
