#pragma once

#include "platform/sound.h"

// Sounds through a player of the desktop's own: PipeWire's, PulseAudio's or ALSA's, whichever is
// found first, so that no sound library has to be linked for one click.
class LinuxSound : public Sound {
  public:
    void Play(const QString& file) override;

    // Nothing: cameras are listed here without opening an audio device, so there is no noise to
    // mute, and the volume that the user has set for other programs is left alone.
    void SetVolume(quint32 volume) override;
};
