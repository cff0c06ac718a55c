// ID lists as users type them: what reads, what is refused and why, the count known before
// anything is expanded, and the split of a list into IDs the mesh has and IDs it lacks.
#include "KwIdRanges.h"

#include <QString>
#include <gtest/gtest.h>
#include <set>

namespace {

using namespace KwIdRanges;

struct ParseCase
{
    const char* text;
    Status status;
    long long count;     // IDs named (good lists)
    const char* canon;   // the canonical text (good lists), or the refused item
};

const ParseCase kParseCases[] = {
    {"1-100, 205, 300-310 by 5", Ok, 100 + 1 + 3, "1-100, 205, 300-310 by 5"},
    {"  7 ", Ok, 1, "7"},
    {"1 - 10 BY 3", Ok, 4, "1-10 by 3"},
    {"5-5", Ok, 1, "5"},
    {" 4 , 9-9 BY 3 ,", Ok, 2, "4, 9"}, // one ID with a step reads back as that ID
    {"1-10 by 1", Ok, 10, "1-10"},
    {"3,,4,", Ok, 2, "3, 4"},
    {"all", Ok, 0, "ALL"},
    {" ALL , ", Ok, 0, "ALL"},
    {"2147483640-2147483647 by 3", Ok, 3, "2147483640-2147483647 by 3"},
    {"1-1000000", Ok, 1000000, "1-1000000"},
    {"", Empty, 0, ""},
    {" , ,", Empty, 0, ""},
    {"1, abc, 3", BadText, 0, "abc"},
    {"1-", BadText, 0, "1-"},
    {"-5", BadText, 0, "-5"},
    {"1-10 by", BadText, 0, "1-10 by"},
    {"7 by 2", BadText, 0, "7 by 2"},
    {"1.5", BadText, 0, "1.5"},
    {"1-2-3", BadText, 0, "1-2-3"},
    {"0", BadNumber, 0, "0"},
    {"3-2147483648", BadNumber, 0, "3-2147483648"},
    {"99999999999999999999", BadNumber, 0, "99999999999999999999"},
    {"1, 100-50", Reversed, 0, "100-50"},
    {"1-10 by 0", ZeroStep, 0, "1-10 by 0"},
    {"1-10 by 000", ZeroStep, 0, "1-10 by 000"},
    {"1-10 by -2", ZeroStep, 0, "1-10 by -2"},
    {"1-10000000", TooMany, 0, "1-10000000"},
    {"1-3000000, 3000001-6000000", TooMany, 0, "3000001-6000000"},
    {"1, ALL", AllMixed, 0, "ALL"},
    {"ALL, 4", AllMixed, 0, "4"},
};

TEST(IdRanges, listsReadOrAreRefusedWithTheItemThatFailed)
{
    for (const ParseCase& c : kParseCases) {
        SCOPED_TRACE(c.text);
        const Parsed p = Parse(QString::fromLatin1(c.text));
        EXPECT_EQ(p.status, c.status);
        if (c.status == Ok) {
            EXPECT_EQ(p.count, c.count);
            EXPECT_EQ(Format(p), QString::fromLatin1(c.canon));
            // The canonical text reads back as the same list.
            const Parsed again = Parse(Format(p));
            EXPECT_EQ(again.ranges, p.ranges);
            EXPECT_EQ(again.all, p.all);
        } else {
            // A refused list keeps nothing of what read before the bad item.
            EXPECT_TRUE(p.ranges.empty());
            EXPECT_EQ(p.count, 0);
            EXPECT_EQ(p.item, QString::fromLatin1(c.canon));
            EXPECT_TRUE(Format(p).isEmpty());
        }
    }
}

TEST(IdRanges, aHugeRangeIsCountedNotExpanded)
{
    // Ten million IDs are refused from their count; the highest IDs never overflow the loop.
    const Parsed huge = Parse(u"1-2147483647");
    EXPECT_EQ(huge.status, TooMany);
    const Parsed top = Parse(u"2147483646-2147483647");
    ASSERT_EQ(top.status, Ok);
    const Resolved r = Resolve(top, [](int) { return true; }, {});
    EXPECT_EQ(r.ids, (std::vector<int>{2147483646, 2147483647}));
}

struct ResolveCase
{
    const char* text;
    std::vector<int> found;
    QList<int> missing;
    long long missingCount;
};

TEST(IdRanges, resolvingSplitsExistingFromMissingIds)
{
    // The mesh has IDs 1..20 and 40.
    const auto exists = [](int id) { return (id >= 1 && id <= 20) || id == 40; };
    std::vector<int> all;
    for (int i = 1; i <= 20; ++i)
        all.push_back(i);
    all.push_back(40);
    const ResolveCase cases[] = {
        // Found IDs come out ascending and once; missing ones in the order given, once.
        {"18-22, 3, 3, 1-2", {1, 2, 3, 18, 19, 20}, {21, 22}, 2},
        {"50, 40, 45, 50", {40}, {50, 45}, 2},
        {"35-45 by 5", {40}, {35, 45}, 2},
        {"ALL", all, {}, 0},
        {"100-105", {}, {100, 101, 102, 103, 104, 105}, 6},
    };
    for (const ResolveCase& c : cases) {
        SCOPED_TRACE(c.text);
        const Resolved r = Resolve(Parse(QString::fromLatin1(c.text)), exists, all);
        EXPECT_EQ(r.ids, c.found);
        EXPECT_EQ(r.missing, c.missing);
        EXPECT_EQ(r.missingCount, c.missingCount);
    }
    // A refused list resolves to nothing.
    const Resolved bad = Resolve(Parse(u"1-5 by 0"), exists, all);
    EXPECT_TRUE(bad.ids.empty());
    EXPECT_TRUE(bad.missing.isEmpty());
}

TEST(IdRanges, theWarningListStopsAtItsLimitWhileTheCountGoesOn)
{
    const Resolved r = Resolve(Parse(u"1-4000000"), [](int id) { return id % 2 == 0; }, {});
    EXPECT_EQ(r.ids.size(), 2000000u);
    EXPECT_EQ(r.missing.size(), kMaxListed);
    EXPECT_EQ(r.missing.front(), 1);
    EXPECT_EQ(r.missing.back(), 2 * kMaxListed - 1);
    EXPECT_EQ(r.missingCount, 2000000);
}

} // namespace
