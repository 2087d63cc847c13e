#pragma once

#include "base/message_boxes.h"

#include <QStringList>

// Message boxes that are answered in advance and remembered.
class AnsweringBoxes : public MessageBoxes {
  public:
    QStringList Shown;  // "title: text"
    bool Retry = false;
    bool Yes = false;

    void Show(const QString& title, const QString& text, Icon /*icon*/) override {
        Shown << title + QStringLiteral(": ") + text;
    }
    bool AskRetry(const QString& title, const QString& text) override {
        Show(title, text, Icon::Warning);
        return Retry;
    }
    bool AskYes(const QString& title, const QString& text) override {
        Show(title, text, Icon::Warning);
        return Yes;
    }
};
