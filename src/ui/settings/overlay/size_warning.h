#pragma once

#include <QSet>
#include <QSize>
#include <QString>

// Which overlay pictures the operator has been told of that they are larger than the camera's: each
// once, however often it is looked at.
class SizeWarning {
  public:
    // These were chosen some other time.
    void Begin(const QStringList& known) { told = QSet<QString>(known.begin(), known.end()); }
    // A picture is chosen anew.
    void Choose(const QString& name) { told.remove(name); }
    // Whether to tell it now. Sizes in pixels; empty ones are not known yet and wait.
    [[nodiscard]] bool Tells(const QString& name, QSize overlay, QSize camera) {
        if (overlay.isEmpty() || camera.isEmpty() || told.contains(name)) return false;
        told.insert(name);
        return overlay.width() > camera.width() || overlay.height() > camera.height();
    }

  private:
    QSet<QString> told;
};
