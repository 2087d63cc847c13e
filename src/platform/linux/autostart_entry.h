#pragma once

#include "platform/autostart_entry.h"

// A desktop file in the autostart folder, which every desktop reads at login.
class LinuxAutostartEntry : public AutostartEntry {
  public:
    // configFolder: where programs keep their settings, usually ~/.config.
    explicit LinuxAutostartEntry(const QString& configFolder) : folder(configFolder) {}

    [[nodiscard]] bool Write(const QString& program, const QStringList& arguments) override;
    [[nodiscard]] bool Remove() override;
    [[nodiscard]] QString Place() const override;

  private:
    QString folder;
};
