#pragma once

#include <QLabel>

// A text in a room of fixed size: one line, or as many as fit when word wrap is on. A text that is
// too long ends in an ellipsis, and the whole of it is the tool tip.
class ReadoutLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ReadoutLabel(QWidget* parent);

    // An invalid colour is that of the window's text.
    void SetColour(const QColor& colour);

    // The lines as they are drawn in the room there is.
    [[nodiscard]] QStringList Lines() const;
    [[nodiscard]] bool Cut() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
