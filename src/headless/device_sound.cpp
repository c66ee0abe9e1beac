// A wave player that plays nothing, for as long as the file says, on the virtual clock.
#include "headless/device_doors.h"
#include "headless/devices.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/sound.h"

#include <algorithm>
#include <optional>

namespace zrt {

namespace {

constexpr int kNoWave = 30304;
constexpr int kDeviceFails = 30266;

struct Playing {
    Microseconds Began = 0;    // when it was last started
    Microseconds Position = 0; // at that time
    int Run = 0;               // an older run's events find another number here
};

int lastRun = 0;

// By player, since the door's record has no room for it.
std::map<const WavePlayer *, Playing> &Players() {
    static std::map<const WavePlayer *, Playing> players;
    return players;
}

std::uint32_t NumberAt(const FileBytes &bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8U | std::to_integer<std::uint32_t>(bytes[at + i]);
    return number;
}

bool TextAt(const FileBytes &bytes, std::size_t at, std::string_view text) {
    return bytes.size() >= at + text.size() &&
           std::equal(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                      [](char c, std::byte b) { return std::byte(c) == b; });
}

// The length by the byte rate of "fmt " and the size of "data"; nothing if this is no wave.
std::optional<int> WaveLengthMs(const FileBytes &bytes) {
    constexpr std::size_t chunkHead = 8;
    if (!TextAt(bytes, 0, "RIFF") || !TextAt(bytes, 8, "WAVE"))
        return std::nullopt;
    std::uint64_t byteRate = 0;
    for (std::size_t at = 12; at + chunkHead <= bytes.size();) {
        const std::size_t size = NumberAt(bytes, at + 4);
        const std::size_t held = std::min(size, bytes.size() - at - chunkHead);
        if (TextAt(bytes, at, "fmt ") && held >= 12)
            byteRate = NumberAt(bytes, at + chunkHead + 8);
        if (TextAt(bytes, at, "data") && byteRate > 0)
            return static_cast<int>(held * 1000 / byteRate);
        at += chunkHead + held + (held & 1U);
    }
    return std::nullopt;
}

Microseconds PositionOf(const WavePlayer &player) {
    const Playing &playing = Players()[&player];
    const Microseconds moved =
        player.State == WaveState::Playing ? Devices.Steady - playing.Began : 0;
    return std::min(playing.Position + moved, player.LengthMs * kMillisecond);
}

void Halt(WavePlayer &player, WaveState state) {
    const Microseconds position = PositionOf(player);
    Playing &playing = Players()[&player];
    playing.Position = position;
    playing.Run = ++lastRun;
    player.State = state;
}

void Notify(const WavePlayer &player) {
    if (const auto notify = player.Notify)
        notify();
}

// Schedules the next call of Notify, or the end, whichever comes first.
void ScheduleNext(WavePlayer &player) {
    const Microseconds left = player.LengthMs * kMillisecond - PositionOf(player);
    const Microseconds step =
        player.NotifyInterval > 0 ? player.NotifyInterval * kMillisecond : left;
    const bool ends = left <= step;
    const int run = Players()[&player].Run;
    Schedule(Devices.Steady + std::min(left, step), [&player, run, ends] {
        const auto found = Players().find(&player);
        if (found == Players().end() || found->second.Run != run)
            return; // stopped or closed since
        if (ends)
            Halt(player, WaveState::Stopped);
        else
            ScheduleNext(player);
        Notify(player);
    });
}

int HeadlessOpen(WavePlayer &player) {
    FileBytes bytes;
    player.State = WaveState::NotOpen;
    if (ReadFile(player.FileName, bytes) != 0)
        return kNoWave;
    const auto length = WaveLengthMs(bytes);
    if (!length)
        return kNoWave;
    Players()[&player] = {0, 0, ++lastRun};
    player.LengthMs = *length;
    player.State = WaveState::Stopped;
    return 0;
}

int HeadlessPlay(WavePlayer &player) {
    if (player.State == WaveState::NotOpen || Devices.SoundFails)
        return kDeviceFails;
    if (player.State == WaveState::Playing)
        return 0;
    Playing &playing = Players()[&player];
    if (playing.Position == 0) {
        Devices.WavesStarted.push_back(player.FileName);
        if (Devices.Trace)
            Devices.Trace("plays " + player.FileName);
    }
    playing.Began = Devices.Steady;
    player.State = WaveState::Playing;
    ScheduleNext(player);
    return 0;
}

void HeadlessPause(WavePlayer &player) {
    if (player.State == WaveState::Playing)
        Halt(player, WaveState::Paused);
}

void HeadlessStop(WavePlayer &player) {
    if (player.State != WaveState::NotOpen)
        Halt(player, WaveState::Stopped);
}

void HeadlessRewind(WavePlayer &player) {
    const bool wasPlaying = player.State == WaveState::Playing;
    if (player.State == WaveState::NotOpen)
        return;
    Halt(player, WaveState::Stopped);
    Players()[&player].Position = 0;
    if (wasPlaying)
        (void)HeadlessPlay(player); // it is open, and played a moment ago
}

void HeadlessClosePlayer(WavePlayer &player) {
    Players().erase(&player);
    player.State = WaveState::NotOpen;
}

void HeadlessBeep(int hertz, int milliseconds) {
    Devices.Tones.push_back({hertz, milliseconds});
    Devices.Steady += milliseconds * kMillisecond;
}

} // namespace

void InstallSoundDoor() {
    Players().clear();
    Sound = {HeadlessOpen, HeadlessPlay,        HeadlessPause, HeadlessRewind,
             HeadlessStop, HeadlessClosePlayer, HeadlessBeep};
}

} // namespace zrt
