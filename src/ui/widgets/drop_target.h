#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QDropEvent;
class QMimeData;
class QWidget;

// Lets files, or addresses, be dropped on a control. What the control drags itself stays its own.
class DropTarget : public QObject {
    Q_OBJECT

  public:
    enum class Takes { Files, Addresses };

    // The target goes with its control. dropped: gets full paths of local files; or addresses of
    // the network, files among them as their paths.
    DropTarget(QWidget* control, Takes kind, std::function<void(const QStringList&)> whenDropped);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    [[nodiscard]] QStringList Wanted(const QMimeData& data) const;
    bool Take(QDropEvent& event, bool drop) const;

    Takes takes;
    std::function<void(const QStringList&)> dropped;
};
