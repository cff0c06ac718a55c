#include "KwSolverResults.h"

#include <Eigen/Dense>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <string>

const double* KwNodalField::Find(int nodeId) const
{
    // Files list nodes in ascending order; fall back to a scan when one does not.
    auto it = std::lower_bound(nodeIds.begin(), nodeIds.end(), nodeId);
    std::size_t i = std::size_t(it - nodeIds.begin());
    if (it == nodeIds.end() || *it != nodeId) {
        const auto found = std::find(nodeIds.begin(), nodeIds.end(), nodeId);
        if (found == nodeIds.end())
            return nullptr;
        i = std::size_t(found - nodeIds.begin());
    }
    return values.data() + i * std::size_t(components);
}

const KwResultSet* KwSolverResults::LastOfStep(int step) const
{
    const KwResultSet* last = nullptr;
    for (const KwResultSet& s : sets)
        if (s.step == step)
            last = &s;
    return last;
}

std::vector<const KwResultSet*> KwSolverResults::Modes() const
{
    std::vector<const KwResultSet*> modes;
    for (const KwResultSet& s : sets)
        if (s.modal)
            modes.push_back(&s);
    return modes;
}

double KwVonMises(const double* s)
{
    // Squared in units of the largest component, so that no finite stress overflows.
    double scale = 0;
    for (int i = 0; i < 6; ++i)
        scale = std::max(scale, std::abs(s[i]));
    if (scale == 0 || !std::isfinite(scale))
        return scale == 0 ? 0.0 : scale;
    double t[6];
    for (int i = 0; i < 6; ++i)
        t[i] = s[i] / scale;
    const double a = t[0] - t[1], b = t[1] - t[2], c = t[2] - t[0];
    return scale *
           std::sqrt(0.5 * (a * a + b * b + c * c) + 3.0 * (t[3] * t[3] + t[4] * t[4] + t[5] * t[5]));
}

void KwPrincipalStresses(const double* s, double* principal)
{
    // The closed-form roots of the characteristic cubic lose half their digits next to a
    // double root (uniaxial states); the iterative symmetric solver keeps them all.
    Eigen::Matrix3d m;
    m << s[0], s[3], s[5], s[3], s[1], s[4], s[5], s[4], s[2];
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(m, Eigen::EigenvaluesOnly);
    const Eigen::Vector3d v = solver.eigenvalues(); // ascending
    principal[0] = v[2];
    principal[1] = v[1];
    principal[2] = v[0];
}

namespace {

std::string_view trim(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\r' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

// A fixed-width column of a line; empty past its end.
std::string_view column(std::string_view line, std::size_t from, std::size_t width)
{
    return from >= line.size() ? std::string_view{} : trim(line.substr(from, width));
}

bool toInt(std::string_view s, int& v)
{
    s = trim(s);
    if (!s.empty() && s.front() == '+')
        s.remove_prefix(1);
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return !s.empty() && r.ec == std::errc() && r.ptr == s.data() + s.size();
}

bool toDouble(std::string_view s, double& v)
{
    s = trim(s);
    if (!s.empty() && s.front() == '+')
        s.remove_prefix(1);
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return !s.empty() && r.ec == std::errc() && r.ptr == s.data() + s.size() && std::isfinite(v);
}

// The whitespace-separated words of a line.
std::vector<std::string_view> words(std::string_view line)
{
    std::vector<std::string_view> w;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r'))
            ++i;
        const std::size_t start = i;
        while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r')
            ++i;
        if (i > start)
            w.push_back(line.substr(start, i - start));
    }
    return w;
}

struct Reader
{
    std::string_view text;
    std::size_t pos = 0;
    int lineNo = 0;
    bool next(std::string_view& line)
    {
        if (pos >= text.size())
            return false;
        std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            end = text.size();
        line = text.substr(pos, end - pos);
        pos = end + 1;
        ++lineNo;
        return true;
    }
};

} // namespace

bool KwReadSolverResults(std::string_view text, const std::vector<int>& stepSubcases,
                         KwSolverResults& results, QString& error)
{
    results.sets.clear();
    Reader r{text};
    std::string_view line;
    int step = 0, mode = 0;
    bool ended = false;
    // Sets by the counter the file gives each output time.
    std::map<int, std::size_t> setIndex;
    const auto fail = [&](const QString& why) {
        error = QStringLiteral("Result file, line %1: %2").arg(r.lineNo).arg(why);
        results.sets.clear();
        return false;
    };
    while (r.next(line)) {
        const std::string_view t = trim(line);
        if (t == "9999") {
            ended = true;
            break;
        }
        if (t.starts_with("1PSTEP")) {
            const auto w = words(t);
            if (w.size() < 4 || !toInt(w[3], step) || step < 1 || step > 1000000)
                return fail(QStringLiteral("a step header without its step"));
            mode = 0;
            continue;
        }
        if (t.starts_with("1PMODE")) {
            const auto w = words(t);
            if (w.size() < 2 || !toInt(w[1], mode))
                return fail(QStringLiteral("a mode header without its mode"));
            continue;
        }
        if (t.starts_with("2C") || t.starts_with("3C")) {
            // Nodes and elements: the model has them already.
            while (r.next(line) && trim(line) != "-3") {}
            continue;
        }
        if (!t.starts_with("100C"))
            continue;
        // A result block: its header, then its component lines, then one line per node.
        double value = 0;
        int ictype = 0, counter = 0, format = 1;
        if (!toDouble(column(line, 12, 12), value) || !toInt(column(line, 56, 2), ictype)
            || !toInt(column(line, 58, 5), counter))
            return fail(QStringLiteral("a damaged result block header"));
        if (!toInt(column(line, 73, 2), format))
            format = 1;
        if (format != 0 && format != 1)
            return fail(QStringLiteral("a binary result block"));
        if (!r.next(line) || !trim(line).starts_with("-4"))
            return fail(QStringLiteral("a result block without its name"));
        const auto head = words(line);
        if (head.size() < 2)
            return fail(QStringLiteral("a result block without its name"));
        const std::string_view name = head[1];
        int components = 0;
        std::size_t after = r.pos;
        while (r.next(line) && trim(line).starts_with("-5")) {
            const auto w = words(line);
            if (w.size() >= 2 && w[1] != "ALL")
                ++components;
            after = r.pos;
        }
        r.pos = after; // the first node line is read again below
        --r.lineNo;
        if (components < 1 || components > 64)
            return fail(QStringLiteral("a result block without components"));

        KwNodalField field;
        field.components = components;
        const std::size_t idWidth = format == 0 ? 5 : 10;
        while (r.next(line)) {
            const std::string_view tl = trim(line);
            if (tl == "-3")
                break;
            const bool more = line.size() >= 3 && line.substr(0, 3) == " -2";
            if (!more && !(line.size() >= 3 && line.substr(0, 3) == " -1"))
                return fail(QStringLiteral("a damaged result line"));
            std::size_t at = 3;
            if (!more) {
                int id = 0;
                if (!toInt(column(line, 3, idWidth), id))
                    return fail(QStringLiteral("a result line without its node"));
                field.nodeIds.push_back(id);
                at += idWidth;
            } else if (field.nodeIds.empty()) {
                return fail(QStringLiteral("a continued result line without its node"));
            } else {
                at += idWidth;
            }
            for (; at < line.size(); at += 12) {
                double v = 0;
                const std::string_view cell = column(line, at, 12);
                if (cell.empty())
                    break;
                if (!toDouble(cell, v))
                    return fail(QStringLiteral("a number that cannot be read"));
                field.values.push_back(v);
            }
            if (field.values.size() > field.nodeIds.size() * std::size_t(components))
                return fail(QStringLiteral("more values than components"));
        }
        if (field.values.size() != field.nodeIds.size() * std::size_t(components))
            return fail(QStringLiteral("fewer values than components"));

        auto [it, added] = setIndex.try_emplace(counter, results.sets.size());
        if (added) {
            KwResultSet s;
            s.step = step;
            s.subcaseId = step >= 1 && std::size_t(step) <= stepSubcases.size()
                              ? stepSubcases[std::size_t(step - 1)] : 0;
            s.modal = ictype == 2;
            s.increment = s.modal ? mode : counter;
            s.value = value;
            results.sets.push_back(std::move(s));
        }
        KwResultSet& set = results.sets[it->second];
        if (name == "DISP" && components >= 3) {
            field.components = 3;
            if (components != 3)
                return fail(QStringLiteral("displacements with %1 components").arg(components));
            set.displacement = std::move(field);
        } else if (name == "DISPI" && components == 3) {
            set.displacementImaginary = std::move(field);
        } else if (name == "FORC" && components == 3) {
            set.reaction = std::move(field);
        } else if (name == "STRESS" && components == 6) {
            // A second stress block of the same output time replaces the first, measures too.
            set.vonMises = {};
            set.principal = {};
            set.vonMises.components = 1;
            set.principal.components = 3;
            set.vonMises.nodeIds = set.principal.nodeIds = field.nodeIds;
            for (std::size_t i = 0; i < field.nodeIds.size(); ++i) {
                const double* s = field.values.data() + 6 * i;
                double pr[3];
                KwPrincipalStresses(s, pr);
                const double vm = KwVonMises(s);
                // A stress whose measures lie beyond the range of numbers is no result.
                if (!std::isfinite(vm) || !std::isfinite(pr[0]) || !std::isfinite(pr[1]) ||
                    !std::isfinite(pr[2]))
                    return fail(QStringLiteral("a stress beyond the range of numbers at node %1")
                                    .arg(field.nodeIds[i]));
                set.vonMises.values.push_back(vm);
                set.principal.values.insert(set.principal.values.end(), pr, pr + 3);
            }
            set.stress = std::move(field);
        } else if (name == "TOSTRAIN" && components == 6) {
            set.strain = std::move(field);
        }
    }
    if (!ended)
        return fail(QStringLiteral("the file ends early"));
    error.clear();
    return true;
}
