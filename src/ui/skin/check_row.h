#pragma once

#include <QAbstractButton>
#include <QPixmap>

// A line of a menu window: a check picture and a text. Arrow keys go from row to row, Space and
// Enter click; the row under the mouse and the one with the keyboard are lit.
class CheckRow : public QAbstractButton {
    Q_OBJECT

  public:
    CheckRow(const QString& text, QWidget* parent);

    // The picture in front of the text; `checked` is what screen readers say. A null picture
    // leaves a plain check mark, or none.
    void SetMark(const QPixmap& picture, bool checked);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void nextCheckState() override {}

  private:
    QPixmap mark;
};
