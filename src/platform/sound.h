#pragma once

#include <QString>

// Sounds and the volume around the enumeration of the capture devices.
class Sound {
  public:
    virtual ~Sound() = default;
    // Plays a WAV file without waiting for its end; a missing file or player is no fault.
    virtual void Play(const QString& file) = 0;
    // Sets the wave-out volume, right channel in the high word, left in the low one.
    virtual void SetVolume(quint32 volume) = 0;
};
