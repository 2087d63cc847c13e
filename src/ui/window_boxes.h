#pragma once

#include "base/message_boxes.h"

#include <QList>
#include <QPointer>

#include <optional>

class QMessageBox;
class Waiting;

// Message boxes in windows: one at a time, and the next when that has been read.
class WindowBoxes : public MessageBoxes {
  public:
    // isUnattended: the program started by itself; a question that nobody answers within a minute
    // then counts as answered with Retry or No. wait: set before the first question.
    explicit WindowBoxes(bool isUnattended) : unattended(isUnattended) {}

    void SetWaiting(Waiting& ownWaiting) { waiting = &ownWaiting; }
    void Show(const QString& title, const QString& text, Icon icon) override;
    [[nodiscard]] bool AskRetry(const QString& title, const QString& text) override;
    [[nodiscard]] bool AskYes(const QString& title, const QString& text) override;
    void Withdraw() override;

  private:
    struct Message {
        QString Title;
        QString Text;
        Icon Picture;
    };
    void Open(const Message& message);

    // The button that was pressed; nothing when nobody was there to press one.
    [[nodiscard]] std::optional<int> Ask(QMessageBox& question);

    bool unattended;
    Waiting* waiting = nullptr;
    QPointer<QMessageBox> shown;
    QList<Message> unread;  // behind the one that is shown
    QPointer<QMessageBox> asked;
};
