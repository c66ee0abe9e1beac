// The wave player and the tone.
#pragma once

#include <functional>
#include <string>

namespace zrt {

enum class WaveState { NotOpen = 524, Stopped = 525, Playing = 526, Paused = 529 };

// One player. `Notify` is called while it plays, every `NotifyInterval` milliseconds, and once
// when it ends.
struct WavePlayer {
    std::string FileName;
    int NotifyInterval = 0; // 0 for none
    std::function<void()> Notify;

    WaveState State = WaveState::NotOpen; // kept by the door
    int LengthMs = 0;                     // of the open file
};

struct SoundDoor {
    // Open and Play return 0, or an error number: 30304 for a file that can't be read as a
    // wave, 30266 for a device that fails. With no sound device playing keeps its time silently.
    int (*Open)(WavePlayer &player) = nullptr;
    int (*Play)(WavePlayer &player) = nullptr; // from where it was paused or stopped
    void (*Pause)(WavePlayer &player) = nullptr;
    void (*Rewind)(WavePlayer &player) = nullptr;
    void (*Stop)(WavePlayer &player) = nullptr;
    void (*Close)(WavePlayer &player) = nullptr;
    // A tone of `hertz` that lasts `milliseconds`; returns when it has ended.
    void (*Beep)(int hertz, int milliseconds) = nullptr;
};
extern SoundDoor Sound;

} // namespace zrt
