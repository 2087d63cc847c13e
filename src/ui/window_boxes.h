#pragma once

#include "base/message_boxes.h"

#include <QPointer>

class QMessageBox;
class Waiting;

// Message boxes in windows.
class WindowBoxes : public MessageBoxes {
  public:
    // isUnattended: the program started by itself; a question that nobody answers within a minute
    // then counts as answered with Retry. wait: set before the first question.
    explicit WindowBoxes(bool isUnattended) : unattended(isUnattended) {}

    void SetWaiting(Waiting& ownWaiting) { waiting = &ownWaiting; }
    void Show(const QString& title, const QString& text, Icon icon) override;
    [[nodiscard]] bool AskRetry(const QString& title, const QString& text) override;

  private:
    bool unattended;
    Waiting* waiting = nullptr;
    QPointer<QMessageBox> shown;
};
