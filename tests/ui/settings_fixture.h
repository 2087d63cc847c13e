#pragma once

#include "ui/settings/settings_window.h"
#include "ui/window_fixture.h"

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

// What is wrong with the way of the Tab key through a window: controls that it leaves out or that
// have no name for a screen reader or no help, and steps back within a frame.
[[nodiscard]] QStringList TabFaults(QWidget& window);

// Shows the window in each language and with a small and a large font, and gives what was clipped
// or larger than the screen, with the language and the font's size.
[[nodiscard]] QStringList ClippedAnywhere(SettingsWindow& window, Texts& words);
// The same of any window, which `open` shows.
[[nodiscard]] QStringList ClippedAnywhere(QWidget& window, Texts& words,
                                          const std::function<void()>& open);
