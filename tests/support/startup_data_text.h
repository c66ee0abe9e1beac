// A start-up data file in which every value tells where it belongs. For tests, fuzzers' corpora and
// benchmarks.
#pragma once

#include <array>
#include <string>

namespace zrt {

struct StartupSection {
    const char *Header;
    int Rows;
    const char *Text; // values are this and the row; nullptr: numbers, row + Base
    int Base = 0;
};

inline const std::array kStartupSections = {
    StartupSection{"[ZRT State/Province Mults]", 58, "ST"},
    StartupSection{"[ZRT Zar County Mults]", 58, "CO"},
    StartupSection{"[SS Mults]", 83, "SS"},
    StartupSection{"[SS Short Forms]", 83, "SF"},
    StartupSection{"[Sprint Mults]", 72, "SP"},
    StartupSection{"[PAQP Mults]", 67, "PA"},
    StartupSection{"[NEQP Mults]", 67, "NE"},
    StartupSection{"[NAQP Mults]", 72, "NA"},
    StartupSection{"[10M Mults]", 65, "TE"},
    StartupSection{"[ARRL Mults]", 63, "AR"},
    StartupSection{"[ZRT X Coordinates]", 72, nullptr, 1000},
    StartupSection{"[ZRT Y Coordinates]", 72, nullptr, 2000},
    StartupSection{"[SS X Coordinates]", 83, nullptr, 3000},
    StartupSection{"[SS Y Coordinates]", 83, nullptr, 4000},
    StartupSection{"[ARRL USVEMultOrder]", 63, nullptr, 5000},
    StartupSection{"[10M X Coordinates]", 65, nullptr, 6000},
    StartupSection{"[10M Y Coordinates]", 65, nullptr, 7000},
    StartupSection{"[ARRL X Coordinates]", 63, nullptr, 8000},
    StartupSection{"[ARRL Y Coordinates]", 63, nullptr, 9000},
    StartupSection{"[CW Characters]", 42, "CW"},
    StartupSection{"[Band Frequencies]", 24, nullptr, 1200000},
};

inline std::string StartupValue(const StartupSection &section, int row) {
    return section.Text == nullptr ? std::to_string(section.Base + row)
                                   : section.Text + std::to_string(row);
}

inline std::string StartupText(const StartupSection &section, const char *lineEnd = "\r\n") {
    std::string text = std::string(section.Header) + lineEnd;
    for (int row = 1; row <= section.Rows; ++row)
        text += StartupValue(section, row) + lineEnd;
    return text;
}

inline std::string WholeStartupText() {
    std::string text;
    for (const StartupSection &section : kStartupSections)
        text += StartupText(section);
    return text;
}

} // namespace zrt
