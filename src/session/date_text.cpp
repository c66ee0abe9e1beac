#include "session/date_text.h"

#include "session/log_file.h"

#include <cstdlib>

namespace zrt {

namespace {

constexpr int kMonths200x = 20; // added to the month from 2000 on

char DecadeDigit(i16 dateCode, char decade) {
    if (dateCode < 0)
        return '1';
    if (!IsYear200x(dateCode))
        return '9';
    return decade >= '2' && decade <= '9' ? decade : '0';
}

} // namespace

std::string DateText(i16 dateCode, char decade) {
    const int code = std::abs(static_cast<int>(dateCode));
    const int month = code / 1000;
    return std::to_string(month > kMonths200x ? month - kMonths200x : month) + "/" +
           PadLeft(std::to_string(code / 10 % 100), 2, '0') + "/" + DecadeDigit(dateCode, decade) +
           std::to_string(code % 10);
}

std::string EntryDateText(i16 n) {
    const char decade =
        Log.CurrentFormat ? Log.LogEntries[static_cast<std::size_t>(n)].Reserved.Whole()[0] : ' ';
    return DateText(EntryFields(n).Date, decade);
}

} // namespace zrt
