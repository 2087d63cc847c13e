#pragma once

#include <QLineEdit>

class QPushButton;

// A field for a folder. A click opens the chooser, and so do F4, Alt+Down and the button beside it;
// what is known by heart can be typed, marked with the mouse and pasted as in any field.
class PathField : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString Folder READ Folder WRITE SetFolder USER true)

  public:
    explicit PathField(QWidget* parent = nullptr);

    QPushButton* btnBrowse;  // to be put beside the field

    // As the settings have it: with a separator at its end.
    [[nodiscard]] QString Folder() const;
    void SetFolder(const QString& folder);

    [[nodiscard]] QSize sizeHint() const override;

  signals:
    void ChooserWanted();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QPoint pressedAt;
};
