#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QWidget;

// F1, in whatever window of the program.
class HelpKey : public QObject {
    Q_OBJECT

  public:
    // open: shows a page of the help, named without its ending; empty for the start page.
    HelpKey(std::function<void(const QString& page)> open, QObject* parent);

    // The page about the window that a control is in; empty where there is none.
    [[nodiscard]] static QString PageOf(const QWidget& control);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    std::function<void(const QString& page)> open;
};
