#include "entry/prior_contacts.h"

#include "entry/log_form.h"
#include "session/contests.h"
#include "session/radio_state.h"

#include <string>

namespace zrt {

namespace {

constexpr const char *kSeparator = "\n";
constexpr const char *kNoContact = "  --";
constexpr const char *kNoGenericContact = " ";

struct Column {
    const char *Caption;
    bool Phone;
};
constexpr Column kCwColumn = {" CW:", false};
constexpr Column kPhoneColumn = {"SSB:", true};

// The labels are filled from the left.
struct PriorTable {
    std::array<Column, 2> Columns;
    std::size_t ColumnCount;
    std::size_t Filled = 0;
};

std::string NumberText(const SentNumbers &sent, int position, bool phone, const char *none) {
    const i16 number = sent[static_cast<std::size_t>(CodeInMode(position, phone))];
    return number == 0 ? none : std::to_string(number);
}

// The bands of the radios are marked, that of the log radio above the other's.
Color BandColor(int position) {
    const bool firstLogs = Radios.LogRadio == 1;
    if (position == BandPosition(CurrentBand()))
        return firstLogs ? Color::LightBlue : Color::LightRed;
    if (position == BandPosition(Radios.RadioBandMode[firstLogs ? 1 : 0]))
        return firstLogs ? Color::LightRed : Color::LightBlue;
    return Color::Black;
}

void AddBand(PriorTable &table, const SentNumbers &sent, int position, const char *none) {
    if (table.Filled == LogForm.PrevQSO.size())
        return;
    std::string text = kBandNamesLong[static_cast<std::size_t>(position) - 1];
    for (std::size_t i = 0; i < table.ColumnCount; ++i)
        text += kSeparator + NumberText(sent, position, table.Columns[i].Phone, none);
    Label &label = LogForm.PrevQSO[table.Filled++];
    ShowLabel(label, text);
    label.ForeColor = BandColor(position);
}

void AddBands(PriorTable &table, const SentNumbers &sent, int count) {
    for (int position = 1; position <= count; ++position)
        AddBand(table, sent, position, kNoContact);
}

void AddWorkedBands(PriorTable &table, const SentNumbers &sent) {
    for (int position = 1; position <= kBandPositions; ++position) {
        const auto number = [&](bool phone) {
            return sent[static_cast<std::size_t>(CodeInMode(position, phone))];
        };
        if (number(false) != 0 || number(true) != 0)
            AddBand(table, sent, position, kNoGenericContact);
    }
}

PriorTable TableOfContest() {
    if (ContestTable(Contest.ContestId).BothModes)
        return {{kCwColumn, kPhoneColumn}, 2};
    return {{Contest.ModePhone ? kPhoneColumn : kCwColumn}, 1};
}

void ShowModes(const PriorTable &table) {
    std::string text = table.Columns[0].Caption;
    if (table.ColumnCount == 2)
        text += std::string(kSeparator) + table.Columns[1].Caption;
    ShowLabel(LogForm.Modelabel, text);
    LogForm.Modelabel.ForeColor = Color::Black;
}

} // namespace

void ShowPriorContacts(const SentNumbers &sent) {
    HidePriorContacts();
    if (Contest.ContestId == kNoContest)
        return;
    PriorTable table = TableOfContest();
    ShowModes(table);
    switch (Contest.ContestId) {
    case kSs: break; // once on any band: the mode alone
    case kGeneric: AddWorkedBands(table, sent); break;
    case kTenMeter: AddBands(table, sent, 1); break;
    default: AddBands(table, sent, 6); break;
    }
}

void HidePriorContacts() {
    LogForm.Modelabel.Visible = false;
    for (Label &label : LogForm.PrevQSO)
        label.Visible = false;
}

} // namespace zrt
