#include "postcontest/driver.h"

#include "platform/dialogs.h"
#include "postcontest/cabrillo.h"
#include "postcontest/post_contest.h"
#include "postcontest/recount.h"
#include "session/contests.h"
#include "session/file_errors.h"

namespace zrt {

OutputHooks Outputs;

namespace {

using Output = int (*)();

// An output that nobody makes is left out.
bool Make(Output output) {
    return output == nullptr || WithRetry(output);
}

bool MakeAll(std::initializer_list<Output> outputs) {
    for (const Output output : outputs)
        if (!Make(output))
            return false;
    return true;
}

bool MakeNormalFiles() {
    if (Contest.ContestId == kGeneric)
        return MakeAll({Outputs.AsciiLog, Outputs.SummaryGeneric});
    return MakeAll({Outputs.Summary, Outputs.RateSheet, Outputs.AsciiLog, Outputs.DupeFiles});
}

bool MakeExport(const FileChoices &choices) {
    return Outputs.Adif == nullptr ||
           WithRetry([&] { return Outputs.Adif(choices.OmitJas, choices.OmitUs); });
}

void TellBeyond() {
    if (Recount.Beyond == 0)
        return;
    const i32 kept = Recount.TotalQsos;
    ShowMessageBox({"The log holds " + std::to_string(kept + Recount.Beyond) +
                        " entries; the files tell of the first " + std::to_string(kept) + ".",
                    "Log Full", BoxButtons::Ok, BoxIcon::Exclamation});
}

} // namespace

bool NormalFilesAreMade() {
    return Outputs.Summary != nullptr || Outputs.SummaryGeneric != nullptr ||
           Outputs.RateSheet != nullptr || Outputs.AsciiLog != nullptr ||
           Outputs.DupeFiles != nullptr;
}

bool MakeFiles(const FileChoices &choices) {
    if (!WithRetry(PostTally))
        return false;
    TellBeyond();
    return (!choices.Cabrillo || Make(WriteCabrilloFile)) &&
           (!choices.Normal || MakeNormalFiles()) && (!choices.Export || MakeExport(choices));
}

bool MakeCabrilloRateSheet() {
    return Make(Outputs.RateSheetOfCabrillo);
}

} // namespace zrt
