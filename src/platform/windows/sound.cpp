#include "platform/windows/sound.h"

#include "platform/windows/system.h"

#include <mmsystem.h>

#include <QDir>

#include <cstdint>

void WindowsSound::Play(const QString& file) {
    const QString path = QDir::toNativeSeparators(file);
    // Without SND_NODEFAULT a missing file would sound like an error.
    PlaySoundW(reinterpret_cast<LPCWSTR>(path.utf16()), nullptr,
               SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

void WindowsSound::SetVolume(quint32 volume) {
    // The mapper has a number, which stands in the place of a handle here.
    const auto mapper = static_cast<std::uintptr_t>(WAVE_MAPPER);
    waveOutSetVolume(reinterpret_cast<HWAVEOUT>(mapper), volume);
}
