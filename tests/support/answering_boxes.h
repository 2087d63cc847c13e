#pragma once

#include "base/message_boxes.h"

#include <QStringList>

// Message boxes that are answered in advance and remembered.
class AnsweringBoxes : public MessageBoxes {
  public:
    QStringList Shown;  // "title: text"
    bool Retry = false;

    void Show(const QString& title, const QString& text) override {
        Shown << title + QStringLiteral(": ") + text;
    }
    bool AskRetry(const QString& title, const QString& text) override {
        Show(title, text);
        return Retry;
    }
};
