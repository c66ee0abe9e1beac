// The order of the outputs after a contest. The dialog calls it on OK, with PostData filled.
#pragma once

namespace zrt {

// Writers of the files that other modules make, each 0 or the system's error. Null until app/
// sets it; the dialog does not offer what nobody makes.
struct OutputHooks {
    int (*Summary)() = nullptr;
    int (*SummaryGeneric)() = nullptr;
    int (*RateSheet)() = nullptr;
    int (*AsciiLog)() = nullptr;
    int (*DupeFiles)() = nullptr;
    int (*Adif)(bool omitJas, bool omitUs) = nullptr;
    int (*RateSheetOfCabrillo)() = nullptr; // reads PostData.InputPath
};
extern OutputHooks Outputs;

bool NormalFilesAreMade();

struct FileChoices {
    bool Cabrillo = false;
    bool Normal = false;
    bool Export = false;
    bool OmitJas = false, OmitUs = false;
};

// Recounts the log and makes the files that were chosen, in their order. A failure asks to retry;
// false when the operator gives it up: the files before it stay. May pump.
bool MakeFiles(const FileChoices &choices);
// The rate sheet of a Cabrillo file.
bool MakeCabrilloRateSheet();

} // namespace zrt
