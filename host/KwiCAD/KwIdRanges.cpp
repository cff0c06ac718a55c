#include "KwIdRanges.h"

#include <QSet>
#include <algorithm>
#include <limits>

namespace KwIdRanges {

namespace {

// A positive decimal ID; false for anything else (signs, digits beyond int, other text).
// `overflow` tells an out-of-range number from text that is no number at all.
bool readId(QStringView s, int& id, bool& outOfRange)
{
    outOfRange = false;
    if (s.isEmpty() || s.size() > 32)
        return false;
    long long v = 0;
    for (QChar c : s) {
        if (c < u'0' || c > u'9')
            return false;
        if (v <= std::numeric_limits<int>::max())
            v = v * 10 + (c.unicode() - u'0');
    }
    if (v < 1 || v > std::numeric_limits<int>::max()) {
        outOfRange = true;
        return false;
    }
    id = static_cast<int>(v);
    return true;
}

// One item: "N", "N-M", "N-M by S" (blanks around the parts are allowed).
Status readItem(QStringView item, Range& r)
{
    QStringView body = item;
    QStringView stepText;
    // " by " splits off the step; case does not matter.
    const qsizetype by = item.indexOf(u"by", 0, Qt::CaseInsensitive);
    if (by >= 0) {
        body = item.left(by).trimmed();
        stepText = item.mid(by + 2).trimmed();
        if (stepText.isEmpty())
            return BadText;
    }
    const qsizetype dash = body.indexOf(u'-');
    bool outOfRange = false;
    if (dash < 0) {
        if (!stepText.isEmpty())
            return BadText;
        if (!readId(body.trimmed(), r.from, outOfRange))
            return outOfRange ? BadNumber : BadText;
        r.to = r.from;
        r.step = 1;
        return Ok;
    }
    if (!readId(body.left(dash).trimmed(), r.from, outOfRange))
        return outOfRange ? BadNumber : BadText;
    if (!readId(body.mid(dash + 1).trimmed(), r.to, outOfRange))
        return outOfRange ? BadNumber : BadText;
    r.step = 1;
    if (!stepText.isEmpty()) {
        // A step of 0 is its own mistake, not a bad number.
        if (!stepText.isEmpty() && std::all_of(stepText.begin(), stepText.end(),
                                               [](QChar c) { return c == u'0'; }))
            return ZeroStep;
        if (stepText.startsWith(u'-'))
            return ZeroStep;
        if (!readId(stepText, r.step, outOfRange))
            return outOfRange ? BadNumber : BadText;
    }
    if (r.to < r.from)
        return Reversed;
    // A range of one ID names that ID whatever its step: "9-9 by 3" is "9", so that a list
    // reads back the same from the text it is shown as.
    if (r.from == r.to)
        r.step = 1;
    return Ok;
}

} // namespace

Parsed Parse(QStringView text)
{
    Parsed out;
    qsizetype start = 0;
    bool any = false;
    while (start <= text.size()) {
        qsizetype end = text.indexOf(u',', start);
        if (end < 0)
            end = text.size();
        const QStringView item = text.mid(start, end - start).trimmed();
        start = end + 1;
        if (item.isEmpty())
            continue;
        if (item.compare(u"ALL", Qt::CaseInsensitive) == 0) {
            if (any) {
                out = Parsed{AllMixed, false, {}, 0, item.toString()};
                return out;
            }
            out.all = true;
            any = true;
            continue;
        }
        if (out.all) {
            out = Parsed{AllMixed, false, {}, 0, item.toString()};
            return out;
        }
        any = true;
        Range r;
        const Status s = readItem(item, r);
        if (s != Ok) {
            out = Parsed{s, false, {}, 0, item.toString()};
            return out;
        }
        out.count += r.Count();
        if (out.count > kMaxIds) {
            out = Parsed{TooMany, false, {}, 0, item.toString()};
            return out;
        }
        out.ranges.push_back(r);
    }
    out.status = any ? Ok : Empty;
    return out;
}

QString FormatRange(const Range& r)
{
    if (r.from == r.to)
        return QString::number(r.from);
    if (r.step == 1)
        return QStringLiteral("%1-%2").arg(r.from).arg(r.to);
    return QStringLiteral("%1-%2 by %3").arg(r.from).arg(r.to).arg(r.step);
}

QString Format(const Parsed& parsed)
{
    if (parsed.status != Ok)
        return {};
    if (parsed.all)
        return QStringLiteral("ALL");
    QStringList items;
    items.reserve(static_cast<qsizetype>(parsed.ranges.size()));
    for (const Range& r : parsed.ranges)
        items << FormatRange(r);
    return items.join(QStringLiteral(", "));
}

Resolved Resolve(const Parsed& parsed, const std::function<bool(int)>& exists,
                 const std::vector<int>& allIds)
{
    Resolved out;
    if (parsed.status != Ok)
        return out;
    if (parsed.all) {
        out.ids = allIds;
    } else {
        out.ids.reserve(static_cast<std::size_t>(
            std::min<long long>(parsed.count, static_cast<long long>(allIds.size()) + 1)));
        QSet<int> missingSeen;
        for (const Range& r : parsed.ranges) {
            for (long long id = r.from; id <= r.to; id += r.step) {
                const int i = static_cast<int>(id);
                if (exists(i)) {
                    out.ids.push_back(i);
                } else if (out.missing.size() < kMaxListed) {
                    // Only the listed ones are kept apart from repeats: the set stays small
                    // however many IDs a range names beyond the mesh.
                    if (!missingSeen.contains(i)) {
                        missingSeen.insert(i);
                        out.missing.append(i);
                        ++out.missingCount;
                    }
                } else {
                    ++out.missingCount;
                }
            }
        }
    }
    // Lists typed in ascending order (the usual case) come out sorted already.
    if (!std::is_sorted(out.ids.begin(), out.ids.end()))
        std::sort(out.ids.begin(), out.ids.end());
    out.ids.erase(std::unique(out.ids.begin(), out.ids.end()), out.ids.end());
    return out;
}

} // namespace KwIdRanges
