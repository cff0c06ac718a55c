#include "KwStressStrain.h"

#include <cmath>

int KwEngineeringToTrue(std::vector<double>& strain, std::vector<double>& stress)
{
    int skipped = 0;
    for (std::size_t i = 0; i < strain.size() && i < stress.size(); ++i) {
        const double e = strain[i];
        if (!(e > -1.0) || !std::isfinite(e)) {
            ++skipped;
            continue;
        }
        stress[i] *= 1.0 + e;
        strain[i] = std::log1p(e);
    }
    return skipped;
}

KwPlasticCurve KwPlasticCurveOf(const std::vector<double>& strain,
                                const std::vector<double>& stress, double modulus,
                                bool engineering)
{
    KwPlasticCurve c;
    if (!(modulus > 0) || !std::isfinite(modulus)) {
        c.problem = KwPlasticCurve::NoModulus;
        return c;
    }
    std::vector<double> e = strain, s = stress;
    e.resize(std::min(e.size(), s.size()));
    s.resize(e.size());
    if (engineering)
        KwEngineeringToTrue(e, s);
    for (std::size_t i = 0; i < e.size(); ++i) {
        if (!std::isfinite(e[i]) || !std::isfinite(s[i]) || e[i] < 0 || s[i] < 0) {
            c.problem = KwPlasticCurve::BelowZero;
            c.point = int(i);
            return c;
        }
        if (s[i] == 0)
            continue; // the origin
        const double plastic = e[i] - s[i] / modulus;
        if (c.stress.empty()) {
            // The yield point: the first point off the elastic line, or the last one on it.
            c.stress.push_back(s[i]);
            c.plasticStrain.push_back(0.0);
            continue;
        }
        if (c.plasticStrain.size() == 1 && plastic <= 1e-9) {
            c.stress.back() = s[i]; // still elastic: the yield point moves up
            continue;
        }
        if (!(plastic > c.plasticStrain.back())) {
            c.problem = KwPlasticCurve::NotIncreasing;
            c.point = int(i);
            return c;
        }
        c.stress.push_back(s[i]);
        c.plasticStrain.push_back(plastic);
    }
    if (c.stress.size() < 2)
        c.problem = KwPlasticCurve::TooFewPoints;
    return c;
}
