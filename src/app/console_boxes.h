#pragma once

#include "base/message_boxes.h"

#include <functional>
#include <set>

// Messages of a program without a display: printed, each text once; nobody can answer, so a
// question means trying again, or that all stays as it is.
class ConsoleBoxes : public MessageBoxes {
  public:
    explicit ConsoleBoxes(std::function<void(const QString&)> ownPrint)
        : print(std::move(ownPrint)) {}

    void Show(const QString& title, const QString& text, Icon) override {
        if (told.insert(text).second) print(title + ": " + text);
    }
    [[nodiscard]] bool AskRetry(const QString& title, const QString& text) override {
        Show(title, text, Icon::Warning);
        return true;
    }
    [[nodiscard]] bool AskYes(const QString& title, const QString& text) override {
        Show(title, text, Icon::Warning);
        return false;
    }

  private:
    std::function<void(const QString&)> print;
    std::set<QString> told;
};
