#pragma once

#include <QScrollArea>

// Shows what is in it whole as long as the screen has room for it; below that, with scroll bars.
class FittingArea : public QScrollArea {
    Q_OBJECT

  public:
    explicit FittingArea(QWidget* parent);

    // The size of what is in it, at most what its window can give it on its screen.
    [[nodiscard]] QSize sizeHint() const override;
    // Nobody has to scroll sideways where the screen is wide enough.
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    // Asks for more or less room when what is in it does.
    bool eventFilter(QObject* object, QEvent* event) override;
    // The control that has the keyboard stays in sight.
    void resizeEvent(QResizeEvent* event) override;

  private:
    [[nodiscard]] QSize Most() const;
    [[nodiscard]] int Bar() const;
    [[nodiscard]] QSize RoomOfOthers(const QLayout& all) const;
};
