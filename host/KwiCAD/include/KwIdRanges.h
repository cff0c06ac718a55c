#pragma once
// Node and element ID lists as the user types them: "ALL", single IDs and ranges with an
// optional step, separated by commas ("1-100, 205, 300-310 by 5"). Parsing never expands a
// range; the count of IDs a list names is known before anything is allocated, so a range of
// ten million IDs is refused without building it.
#include "KwiCADExport.h"

#include <QList>
#include <QString>
#include <QStringView>
#include <functional>
#include <vector>

namespace KwIdRanges {

struct Range
{
    int from = 0;
    int to = 0;
    int step = 1;
    bool operator==(const Range&) const = default;
    long long Count() const { return (static_cast<long long>(to) - from) / step + 1; }
};

enum Status {
    Ok = 0,
    Empty,      // nothing but blanks and commas
    BadText,    // an item that is no ID, range or "ALL"
    BadNumber,  // an ID of zero, below zero or beyond the largest ID
    Reversed,   // a range whose end lies below its start
    ZeroStep,   // a step of zero (or below)
    TooMany,    // more IDs than one list may name
    AllMixed,   // "ALL" beside other items
};

// The most IDs one list may name; a list beyond it is refused as a whole.
inline constexpr long long kMaxIds = 5'000'000;

struct Parsed
{
    Status status = Empty;
    bool all = false;
    std::vector<Range> ranges; // single IDs are ranges of one
    long long count = 0;       // IDs named, repeats included (0 for "ALL")
    QString item;              // the refused item, as typed
};

KWICAD_EXPORT Parsed Parse(QStringView text);

// The canonical text of a list: "ALL", or items joined by ", " ("5", "1-10", "1-10 by 3").
KWICAD_EXPORT QString Format(const Parsed& parsed);
KWICAD_EXPORT QString FormatRange(const Range& range);

struct Resolved
{
    std::vector<int> ids;     // the existing IDs named, ascending, each once
    QList<int> missing;       // IDs named that do not exist, in the order given, each once
    long long missingCount = 0; // all of them (beyond the listed ones repeats count again)
};
inline constexpr int kMaxListed = 1000;

// Splits the IDs of a parsed list into existing and missing ones. `exists` answers for one ID;
// `allIds` are the IDs "ALL" stands for.
KWICAD_EXPORT Resolved Resolve(const Parsed& parsed, const std::function<bool(int)>& exists,
                               const std::vector<int>& allIds);

} // namespace KwIdRanges
