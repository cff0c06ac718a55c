#include "CKwDynamicsSetup.h"

#include <algorithm>
#include <cmath>

CKwDamping::CKwDamping(int id, const QString& name) : CKwFEBase(id, name) {}
CKwSpectrumSetup::CKwSpectrumSetup(int id, const QString& name) : CKwFEBase(id, name) {}
CKwSolutionFrequency::CKwSolutionFrequency(int id, const QString& name) : CKwFEBase(id, name) {}

namespace {

// Sorted, each frequency once (values within a relative 1e-9 are one), none negative.
QList<double> ascendingOnce(QList<double> f)
{
    f.removeIf([](double v) { return !std::isfinite(v) || v < 0; });
    std::sort(f.begin(), f.end());
    QList<double> out;
    for (double v : std::as_const(f))
        if (out.isEmpty() || v - out.last() > 1e-9 * std::max(1.0, std::abs(v)))
            out.append(v);
    return out;
}

} // namespace

QList<double> CKwSolutionFrequency::Frequencies(const QList<double>& modes) const
{
    QList<double> f;
    switch (m_method) {
    case Discrete: f = m_discrete; break;
    case Range: {
        const int n = m_rangeIncrements;
        if (n < 1 || !(m_rangeEnd > m_rangeStart) || m_rangeStart < 0)
            break;
        const bool log = m_rangeSpacing == Logarithmic && m_rangeStart > 0;
        for (int i = 0; i <= n; ++i) {
            const double t = double(i) / n;
            f.append(log ? m_rangeStart * std::pow(m_rangeEnd / m_rangeStart, t)
                         : m_rangeStart + t * (m_rangeEnd - m_rangeStart));
        }
        break;
    }
    case ClusterModes: {
        QList<double> band;
        for (double m : modes)
            if (m >= m_clusterLow && m <= m_clusterHigh)
                band.append(m);
        band = ascendingOnce(band);
        f = band;
        const int n = m_clusterPoints;
        const double bias = m_clusterBias > 0 ? m_clusterBias : 1.0;
        for (qsizetype j = 0; j + 1 < band.size() && n > 0; ++j) {
            const double mid = 0.5 * (band[j] + band[j + 1]);
            const double half = 0.5 * (band[j + 1] - band[j]);
            for (int k = 1; k <= n; ++k) {
                // -1 .. 1 over the gap, pulled towards its ends by the bias.
                const double xi = -1.0 + 2.0 * k / (n + 1);
                const double s = std::pow(std::abs(xi), 1.0 / bias);
                f.append(mid + half * (xi < 0 ? -s : s));
            }
        }
        break;
    }
    case SpreadAround: {
        const int n = m_spreadPoints;
        for (double m : modes) {
            if (m < m_spreadLow || m > m_spreadHigh || n < 1)
                continue;
            if (n == 1) {
                f.append(m);
                continue;
            }
            const double lo = m * (1.0 - m_spreadFraction);
            const double hi = m * (1.0 + m_spreadFraction);
            for (int k = 0; k < n; ++k)
                f.append(lo + (hi - lo) * k / (n - 1));
        }
        break;
    }
    default: break;
    }
    return ascendingOnce(f);
}
