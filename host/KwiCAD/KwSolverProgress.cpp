#include "KwSolverProgress.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string>

namespace {

std::string_view trim(std::string_view s)
{
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\r' || s.back() == '\n' || s.back() == '\t'))
        s.remove_suffix(1);
    return s;
}

// The integer that starts `s` (after blanks); false when there is none or it does not fit.
bool leadingInt(std::string_view s, int& v)
{
    s = trim(s);
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    return r.ec == std::errc() && r.ptr != s.data();
}

// The number after "=" in `s`.
bool valueAfterEquals(std::string_view s, double& v)
{
    const std::size_t eq = s.find('=');
    if (eq == std::string_view::npos)
        return false;
    std::string rest(trim(s.substr(eq + 1)).substr(0, 40));
    char* end = nullptr;
    v = std::strtod(rest.c_str(), &end);
    return end != rest.c_str() && std::isfinite(v);
}

int percent(double fraction)
{
    if (!std::isfinite(fraction))
        return 0;
    return int(std::lround(std::clamp(fraction, 0.0, 1.0) * 100.0));
}

} // namespace

KwSolverProgress::KwSolverProgress(std::vector<int> stepSubcases, double stepPeriod,
                                   int maxIterations)
    : m_stepSubcases(std::move(stepSubcases)),
      m_period(stepPeriod > 0 && std::isfinite(stepPeriod) ? stepPeriod : 1.0),
      m_maxIterations(std::max(1, maxIterations))
{
}

int KwSolverProgress::Subcase() const
{
    if (m_step >= 1 && std::size_t(m_step) <= m_stepSubcases.size())
        return m_stepSubcases[std::size_t(m_step - 1)];
    return std::max(m_step, 1);
}

bool KwSolverProgress::AddLine(std::string_view raw)
{
    const std::string_view line = trim(raw);
    if (m_errorLinesLeft > 0) {
        // The lines after an error say what it is about; a blank one ends them.
        if (line.empty()) {
            m_errorLinesLeft = 0;
        } else {
            m_errors << QString::fromUtf8(line.data(), qsizetype(line.size()));
            --m_errorLinesLeft;
        }
        return false;
    }
    if (line.starts_with("*ERROR") || line.starts_with("ERROR")) {
        m_errors << QString::fromUtf8(line.data(), qsizetype(line.size()));
        m_errorLinesLeft = 4;
        return false;
    }
    int n = 0;
    if (line.starts_with("STEP") && leadingInt(line.substr(4), n) && n > 0) {
        m_step = n;
        m_increment = 0;
        m_attempt = 1;
        m_iteration = 0;
        m_stepTime = 0;
        m_residual = 0;
        m_stepDone = false;
        return true;
    }
    if (line.starts_with("increment ") && leadingInt(line.substr(10), n) && n > 0) {
        m_increment = n;
        m_iteration = 0;
        const std::size_t at = line.find("attempt");
        int attempt = 1;
        m_attempt = at != std::string_view::npos && leadingInt(line.substr(at + 7), attempt)
                        ? std::max(1, attempt) : 1;
        if (m_step == 0)
            m_step = 1;
        return false;
    }
    double v = 0;
    if (line.starts_with("actual step time") && valueAfterEquals(line, v)) {
        m_stepTime = v;
        return false;
    }
    if (line.starts_with("iteration ") && leadingInt(line.substr(10), n) && n > 0) {
        m_iteration = n;
        if (m_step == 0)
            m_step = 1;
        if (m_increment == 0)
            m_increment = 1;
        return true;
    }
    if (line.starts_with("largest residual force") && valueAfterEquals(line, v)) {
        m_residual = std::abs(v);
        return false;
    }
    if (line.starts_with("largest increment of disp") && valueAfterEquals(line, v)) {
        m_dispIncrement = std::abs(v);
        return false;
    }
    if (line.starts_with("largest correction to disp") && valueAfterEquals(line, v)) {
        m_dispCorrection = std::abs(v);
        return false;
    }
    if (line.starts_with("convergence")) {
        ++m_converged;
        m_dispCorrection = 0;
        m_stepDone = m_stepTime >= m_period * (1 - 1e-9);
        return true;
    }
    if (line.starts_with("Job finished")) {
        m_finished = true;
        m_stepDone = true;
        return true;
    }
    return false;
}

QString KwSolverProgress::CurrentLine() const
{
    const double load = m_stepDone ? 1.0 : m_stepTime / m_period;
    // How far the displacement of this increment has settled: the last correction against
    // the whole increment.
    const double settled = m_stepDone ? 1.0
                           : m_dispIncrement > 0 ? 1.0 - m_dispCorrection / m_dispIncrement : 0.0;
    const double iter = m_stepDone ? 1.0 : double(m_iteration) / m_maxIterations;
    return QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8")
        .arg(Subcase())
        .arg(std::max(m_increment, 1))
        .arg(std::max(m_iteration, m_stepDone ? 1 : 0))
        .arg(percent(load))
        .arg(percent(settled))
        .arg(percent(iter))
        .arg(m_residual, 0, 'E', 2)
        .arg(SubIncrement() ? QLatin1Char('S') : QLatin1Char('F'));
}
