#include "CKwCoordinateSystem.h"

#include <cmath>

namespace {

using Vec = CKwCoordinateSystem::Vec;

Vec minus(const Vec& a, const Vec& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
Vec cross(const Vec& a, const Vec& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double norm(const Vec& a) { return std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]); }
Vec scaled(const Vec& a, double f) { return {a[0] * f, a[1] * f, a[2] * f}; }

// Below this relative size a direction or a cross product counts as zero: the points or axes
// then give no plane a user could have meant.
constexpr double kTiny = 1e-9;

} // namespace

CKwCoordinateSystem::CKwCoordinateSystem(int id, const QString& name) : CKwFEBase(id, name) {}

CKwCoordinateSystem::Problem CKwCoordinateSystem::ComputeAxes(Vec* origin, Vec* x, Vec* y,
                                                              Vec* z) const
{
    Vec o, ex, ez;
    switch (m_definition) {
    case ThreePoints: {
        const Vec a = minus(m_points[1], m_points[0]);
        const Vec b = minus(m_points[2], m_points[0]);
        const double scale = std::max(norm(a), norm(b));
        if (!(scale > 0) || !std::isfinite(scale))
            return CollinearPoints;
        const Vec n = cross(a, b);
        if (!(norm(n) > kTiny * scale * scale) || !(norm(a) > kTiny * scale))
            return CollinearPoints;
        o = m_points[0];
        ex = scaled(a, 1 / norm(a));
        ez = scaled(n, 1 / norm(n));
        break;
    }
    case PickedPoint:
        if (!m_pickedPoint)
            return NoPoint;
        o = m_pickedPosition;
        ex = {1, 0, 0};
        ez = {0, 0, 1};
        break;
    default: {
        const double lz = norm(m_zAxis), lx = norm(m_xAxis);
        if (!(lz > 0) || !(lx > 0) || !std::isfinite(lz) || !std::isfinite(lx))
            return ZeroDirection;
        ez = scaled(m_zAxis, 1 / lz);
        const Vec xr = scaled(m_xAxis, 1 / lx);
        // X is made perpendicular to Z; an X along Z leaves nothing to make it from.
        const Vec yv = cross(ez, xr);
        if (!(norm(yv) > kTiny))
            return ParallelAxes;
        ex = cross(scaled(yv, 1 / norm(yv)), ez);
        o = m_origin;
        break;
    }
    }
    const Vec ey = cross(ez, ex);
    if (origin)
        *origin = o;
    if (x)
        *x = ex;
    if (y)
        *y = ey;
    if (z)
        *z = ez;
    return Fine;
}
