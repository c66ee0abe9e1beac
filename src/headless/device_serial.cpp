// Serial ports that record what is written and reply by rules, and the I/O port bytes and relays.
#include "headless/device_doors.h"
#include "headless/devices.h"
#include "platform/events.h"
#include "platform/station_lines.h"

#include <cerrno>
#include <utility>

namespace zrt {

namespace {

constexpr Microseconds kReplyDelay = 5 * kMillisecond;
constexpr std::size_t kLongestRequest = 4096;

void Trace(const std::string &text) {
    if (Devices.Trace)
        Devices.Trace(text);
}

std::string HexOf(std::string_view bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {' ', digits[byte >> 4U], digits[byte & 15U]};
    }
    return text;
}

void RecordLine(const std::string &line, int value) {
    Devices.Lines.push_back({Devices.Steady, line, value});
    Trace(line + " " + std::to_string(value));
}

int SetLine(SerialPort &port, bool PortState::*line, const char *name, bool on) {
    if (!port.IsOpen)
        return 0;
    PortState &state = Devices.Ports[port.PortName];
    if (std::exchange(state.*line, on) != on)
        RecordLine(port.PortName + " " + name, on ? 1 : 0);
    return 0;
}

int HeadlessSetDtr(SerialPort &port, bool on) {
    if (!port.IsOpen)
        port.DtrAtOpen = on;
    return SetLine(port, &PortState::Dtr, "DTR", on);
}

int HeadlessSetRts(SerialPort &port, bool on) {
    if (!port.IsOpen)
        port.RtsAtOpen = on;
    return SetLine(port, &PortState::Rts, "RTS", on);
}

int HeadlessOpen(SerialPort &port) {
    PortState &state = Devices.Ports[port.PortName];
    if (state.Mode == PortMode::Absent)
        return ENOENT;
    if (state.Mode == PortMode::Failing)
        return EIO;
    if (state.Owner != nullptr)
        return EBUSY;
    state.Owner = &port;
    state.Arrived.clear();
    state.Unanswered.clear();
    port.IsOpen = true;
    SetLine(port, &PortState::Dtr, "DTR", port.DtrAtOpen);
    SetLine(port, &PortState::Rts, "RTS", port.RtsAtOpen);
    return 0;
}

void HeadlessClose(SerialPort &port) {
    if (!port.IsOpen)
        return;
    SetLine(port, &PortState::Dtr, "DTR", false);
    SetLine(port, &PortState::Rts, "RTS", false);
    Devices.Ports[port.PortName].Owner = nullptr;
    port.IsOpen = false;
}

// The rule whose request ends first in what was written; of several the longest.
const PortReply *FirstReply(const PortState &state, std::size_t &end) {
    const PortReply *first = nullptr;
    for (const PortReply &reply : state.Replies) {
        const auto at = state.Unanswered.find(reply.Request);
        if (at == std::string::npos)
            continue;
        const std::size_t replyEnd = at + reply.Request.size();
        const bool better = first == nullptr || replyEnd < end ||
                            (replyEnd == end && reply.Request.size() > first->Request.size());
        if (better) {
            first = &reply;
            end = replyEnd;
        }
    }
    return first;
}

void ScheduleReplies(const std::string &portName, PortState &state) {
    std::size_t end = 0;
    while (const PortReply *reply = FirstReply(state, end)) {
        state.Unanswered.erase(0, end);
        Schedule(Devices.Steady + kReplyDelay, [portName, bytes = reply->Reply] {
            (void)ArriveAtPort(portName, bytes); // a port that has been closed hears nothing
        });
    }
    if (state.Unanswered.size() > kLongestRequest)
        state.Unanswered.erase(0, state.Unanswered.size() - kLongestRequest);
}

int HeadlessWrite(SerialPort &port, std::string_view bytes) {
    if (!port.IsOpen)
        return EBADF;
    PortState &state = Devices.Ports[port.PortName];
    if (state.Mode != PortMode::Present)
        return EIO;
    Trace(port.PortName + " <" + HexOf(bytes));
    state.Written += bytes;
    state.Unanswered += bytes;
    ScheduleReplies(port.PortName, state);
    return 0;
}

std::string HeadlessRead(SerialPort &port) {
    if (!port.IsOpen)
        return {};
    return std::exchange(Devices.Ports[port.PortName].Arrived, {});
}

void HeadlessSettle(SerialPort &port) {
    (void)HeadlessRead(port);
}

std::vector<std::string> HeadlessPresent() {
    auto ports = Devices.Ports;
    for (const char *always : {"Com1", "Com2", "Com3", "Com4"})
        ports.try_emplace(always);
    std::vector<std::string> names;
    for (const auto &[name, state] : ports)
        if (state.Mode != PortMode::Absent)
            names.push_back(name);
    return names;
}

// ---- I/O port bytes and relays

std::uint8_t ReadIoPort(int address) {
    const auto found = Devices.IoPorts.find(address);
    return found == Devices.IoPorts.end() ? std::uint8_t{0} : found->second;
}

void WriteIoPort(int address, std::uint8_t value) {
    if (ReadIoPort(address) != value)
        RecordLine(std::to_string(address), value);
    Devices.IoPorts[address] = value;
}

bool SetRelay(int number, bool on) {
    if (number < 1 || number > Devices.RelayCount)
        return false;
    if (std::exchange(Devices.Relays[number], on) != on)
        RecordLine("Relay " + std::to_string(number), on ? 1 : 0);
    return true;
}

bool RelayOn(int number) {
    return SetRelay(number, true);
}

bool RelayOff(int number) {
    return SetRelay(number, false);
}

} // namespace

void InstallSerialDoor() {
    Serial = {HeadlessOpen,   HeadlessClose,  HeadlessWrite,  HeadlessRead,
              HeadlessSetDtr, HeadlessSetRts, HeadlessSettle, HeadlessPresent};
}

void InstallStationLinesDoor() {
    StationLines = {ReadIoPort, WriteIoPort, RelayOn, RelayOff};
}

bool ArriveAtPort(const std::string &portName, std::string_view bytes) {
    PortState &state = Devices.Ports[portName];
    if (state.Owner == nullptr || state.Mode != PortMode::Present)
        return false;
    Trace(portName + " >" + HexOf(bytes));
    state.Arrived += bytes;
    if (const auto received = state.Owner->Received)
        received();
    return true;
}

void SetReply(const std::string &portName, std::string request, std::string reply) {
    auto &replies = Devices.Ports[portName].Replies;
    std::erase_if(replies, [&](const PortReply &r) { return r.Request == request; });
    replies.push_back({std::move(request), std::move(reply)});
}

} // namespace zrt
