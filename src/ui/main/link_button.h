#pragma once

#include <QAbstractButton>

// A line that opens something: "Password refused - FTP settings...". It is written in the window's
// colour and underlined; where there is little room, narrower, or as "Password refused...". Space
// and Enter click it.
class LinkButton : public QAbstractButton {
    Q_OBJECT

  public:
    explicit LinkButton(QWidget* parent);

    void SetText(const QString& what, const QString& opens);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QString brief;
};
