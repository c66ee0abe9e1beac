#include "session/date_text.h"

#include "session/log_file.h"

#include <cstdlib>

namespace zrt {

namespace {

constexpr int kMonths200x = 20; // added to the month from 2000 on

// Of a year from 2000 on.
char DecadeDigitFrom2000(i16 dateCode, char decade) {
    if (dateCode < 0)
        return '1';
    return decade >= '2' && decade <= '9' ? decade : '0';
}

char DecadeDigit(i16 dateCode, char decade) {
    return dateCode < 0 || IsYear200x(dateCode) ? DecadeDigitFrom2000(dateCode, decade) : '9';
}

} // namespace

std::string DateText(i16 dateCode, char decade) {
    const int code = std::abs(static_cast<int>(dateCode));
    const int month = code / 1000;
    return std::to_string(month > kMonths200x ? month - kMonths200x : month) + "/" +
           PadLeft(std::to_string(code / 10 % 100), 2, '0') + "/" + DecadeDigit(dateCode, decade) +
           std::to_string(code % 10);
}

std::string IsoDateText(i16 dateCode, char decade) {
    const std::string code = std::to_string(std::abs(static_cast<int>(dateCode)));
    if (code.size() == 4) // M DD Y
        return std::string("199") + code[3] + "-0" + code[0] + "-" + code.substr(1, 2);
    if (code.size() != 5) // MM DD Y
        return "";
    std::string year = "199";
    if (code[0] != '1')
        year = std::string("20") + DecadeDigitFrom2000(dateCode, decade);
    return year + code[4] + (code[0] == '2' ? "-0" : "-1") + code[1] + "-" + code.substr(2, 2);
}

std::string EntryDateText(i16 n) {
    return DateText(EntryFields(n).Date, DecadeOfEntry(n));
}

char DecadeOfEntry(i16 n) {
    return Log.CurrentFormat ? Log.LogEntries[static_cast<std::size_t>(n)].Reserved.Whole()[0]
                             : ' ';
}

} // namespace zrt
