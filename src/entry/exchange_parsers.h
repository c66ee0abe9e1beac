// The exchange parsers: each reads what was received in its contest off the two fields of the entry
// window and checks it against the contest's tables. LogQso calls ParseExchange before it stores.
#pragma once

#include "entry/parsed_exchange.h"

#include <string>

namespace zrt {

// What the last good exchange of ARRL 10 m held. A serial out of range is logged as these.
struct ParserState {
    i16 TenNumber = 0;
    std::string TenMult;
};
extern ParserState Parsers;

// Runs the parser of the open contest; AA and Generic have none.
void ParseExchange(ParsedExchange &parsed);

// Each takes the trimmed upper-case call in `parsed` and the exchange from its field, and first
// clears Entry.ParseError and the selection. A refusal has shown its box when it returns: it sets
// Entry.ParseError and what to select in the exchange field, and leaves both fields and `parsed`
// as they were. All may pump.

void ARRLParse(ParsedExchange &parsed);   // power, or state; "K" in the field becomes "1000"
void CountyParse(ParsedExchange &parsed); // ZRT, PAQP, NEQP; sets Entry.CountyLineFlag too
// A zone on the end of the call goes first. DigitsOnCall counts those of a refused one.
void CQWWParse(ParsedExchange &parsed);
void SprintParse(ParsedExchange &parsed);
// A corrected call in the exchange replaces that of the call field, and is checked for a dupe.
void SSParse(ParsedExchange &parsed);
// Shows no box: the caller does. DigitsOnCall counts those of a refused serial on the end of the
// call.
void WPXParse(ParsedExchange &parsed);
void NaqpParse(ParsedExchange &parsed);
void TenParse(ParsedExchange &parsed); // a serial out of range shows a box, but is no refusal
void CWOParse(ParsedExchange &parsed);

} // namespace zrt
