// A contact from Enter to stored, with the sync of the disk and without, beside the floor: the bare
// write of a record with and without the sync.
#include "app/contest_chooser.h"
#include "app/file_menu.h"
#include "bench/bench_folder.h"
#include "bench/percentiles.h"
#include "entry/log_form.h"
#include "headless/devices.h"
#include "platform/files.h"
#include "session/log_file.h"

#include <array>

namespace zrt {

namespace {

int NoSync(int) {
    return 0;
}

void TypeKeys(const std::string &text) {
    for (const char c : text) {
        TextBox &field = LogForm.InData[0];
        const KeyOutcome outcome = OfferKey(LogForm, {c, 0, c});
        field.Text.insert(static_cast<std::size_t>(field.SelStart++), 1,
                          static_cast<char>(outcome.CharCode));
    }
}

void StartGenericLog(const std::string &folder) {
    StartInFolder(folder);
    Devices.Operator = [] {
        ChCoForm.lstContest.ListIndex = 12;
        ClickControl(ChCoForm.cmdOK);
        return true;
    };
    FileNew();
}

void LogContacts(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    StartGenericLog(folder.Path);
    if (!sync)
        Files.Sync = NoSync;
    Percentiles percentiles;
    int n = 0;
    while (state.KeepRunning()) {
        TypeKeys("K" + std::to_string(10000 + n++));
        percentiles.Time(state, [] { OfferKey(LogForm, {kKeyEnter, 0, 0}); });
    }
    if (Log.NextEntry != n + 1)
        state.SkipWithError("a contact was not logged");
    percentiles.Report(state);
}

void WriteRecords(benchmark::State &state, bool sync) {
    const BenchFolder folder;
    Files = DiskFiles();
    const std::string path = folder.Path + "floor";
    OpenedFile made;
    if (made.Open(path, OpenMode::Create) != 0 || made.Close() != 0)
        state.SkipWithError("no file");
    const std::array<std::byte, kEntryLength> record{};
    Percentiles percentiles;
    std::uint64_t n = 0;
    while (state.KeepRunning()) {
        percentiles.Time(state, [&] {
            OpenedFile file;
            int error = file.Open(path, OpenMode::Update);
            error |= file.WriteAt(++n * kEntryLength, record);
            if (sync)
                error |= file.Sync();
            error |= file.Close();
            if (error != 0)
                state.SkipWithError("a write failed");
        });
    }
    percentiles.Report(state);
}

void EnterToStored(benchmark::State &state) {
    LogContacts(state, true);
}

void EnterToStoredWithoutSync(benchmark::State &state) {
    LogContacts(state, false);
}

void FloorWriteAndSync(benchmark::State &state) {
    WriteRecords(state, true);
}

void FloorWrite(benchmark::State &state) {
    WriteRecords(state, false);
}

constexpr int kContacts = 4000;

BENCHMARK(EnterToStored)->UseManualTime()->Iterations(kContacts)->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorWriteAndSync)->UseManualTime()->Iterations(kContacts)->Unit(benchmark::kMicrosecond);
BENCHMARK(EnterToStoredWithoutSync)
    ->UseManualTime()
    ->Iterations(kContacts)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(FloorWrite)->UseManualTime()->Iterations(kContacts)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace zrt
