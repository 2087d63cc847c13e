#pragma once

#include "platform/sound.h"

// Sounds through the system's own player; the volume is the wave mapper's.
class WindowsSound : public Sound {
  public:
    void Play(const QString& file) override;
    void SetVolume(quint32 volume) override;
};
