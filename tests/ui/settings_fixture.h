#pragma once

#include "shell_fixture.h"
#include "ui/settings/settings_window.h"

// The program with a settings window of its own, and the aids to look at one.
class SettingsFixture : public WindowFixture {
  public:
    SettingsFixture() { Start(); }

    Texts Words{Texts::Language::English};
    [[nodiscard]] SettingsWindow::Surroundings Around() { return {*Core, Words, Boxes}; }

    [[nodiscard]] QString File() const { return Folder.filePath("ftpOptions.ini"); }
    // The keys with their values as they stand in the file: "Server=x".
    [[nodiscard]] QStringList Lines() const;
    // Replaces the settings file.
    void Write(const QString& lines) const;
};

// The texts of a window that do not fit into their place, and controls that lie on one another; the
// window must be shown.
[[nodiscard]] QStringList ClippedTexts(const QWidget& window);

// A caption without the mark of its letter.
[[nodiscard]] QString WithoutMnemonic(const QString& text);

// All captions of the window's labels, buttons, options and frames, and its title.
[[nodiscard]] QStringList Captions(const QWidget& window);

// Shows the window in each language and with a small and a large font, and gives what was clipped,
// with the language and the font's size.
[[nodiscard]] QStringList ClippedAnywhere(SettingsWindow& window, Texts& words);
// The same of any window, which `open` shows.
[[nodiscard]] QStringList ClippedAnywhere(QWidget& window, Texts& words,
                                          const std::function<void()>& open);
