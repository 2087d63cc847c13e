#pragma once

#include "platform/autostart_entry.h"

// A value below the user's Run key, which the system reads at login.
class WindowsAutostartEntry : public AutostartEntry {
  public:
    [[nodiscard]] bool Write(const QString& program, const QStringList& arguments) override;
    [[nodiscard]] bool Remove() override;
    [[nodiscard]] QString Place() const override;
};
