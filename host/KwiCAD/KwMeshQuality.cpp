#include "KwMeshQuality.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace KwMeshQuality {

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = 3.14159265358979323846;

struct V
{
    double x, y, z;
};
inline V operator-(V a, V b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline V operator+(V a, V b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline double dot(V a, V b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline V cross(V a, V b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double norm(V a) { return std::sqrt(dot(a, a)); }
// acos that tolerates rounding just outside [-1, 1].
inline double safeAcos(double c) { return std::acos(std::clamp(c, -1.0, 1.0)); }

// The corners relative to the first one, scaled by a power of two so that the largest
// coordinate difference lies in [1, 2). Every measure is a ratio or an angle, so neither step
// changes it, but squares, cross products and the triple product of lengths then stay far
// from overflow (coordinates near 1e200) and underflow (elements a few 1e-200 across).
// Powers of two scale exactly. Returns false when a coordinate is not a finite number.
bool localCorners(const double* const p[], int n, V out[])
{
    double big = 0;
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < 3; ++k) {
            if (!std::isfinite(p[i][k]))
                return false;
            big = std::max(big, std::fabs(p[i][k]));
        }
    // Differences of coordinates beyond half the largest double would overflow: bring such
    // coordinates down first (exact but for parts far below the element's own size).
    const double down = big > 0x1p1000 ? std::ldexp(1.0, -std::ilogb(big)) : 1.0;
    const V o{p[0][0] * down, p[0][1] * down, p[0][2] * down};
    double span = 0;
    for (int i = 0; i < n; ++i) {
        out[i] = V{p[i][0] * down, p[i][1] * down, p[i][2] * down} - o;
        span = std::max({span, std::fabs(out[i].x), std::fabs(out[i].y), std::fabs(out[i].z)});
    }
    if (span > 0) {
        // A power of two as a factor (one multiplication a coordinate); beyond the range of
        // normal factors, in two steps.
        const int e = std::ilogb(span);
        const double f1 = std::ldexp(1.0, -e / 2), f2 = std::ldexp(1.0, -e - (-e / 2));
        for (int i = 0; i < n; ++i)
            out[i] = {out[i].x * f1 * f2, out[i].y * f1 * f2, out[i].z * f1 * f2};
    }
    return true;
}

// An element with a coordinate that is not a number cannot be measured: every measure of its
// family reads as collapsed (+infinity, the Jacobian 0), so an active check fails it.
void unmeasurable(double out[MeasureCount], bool quadrilateral)
{
    out[AspectRatio] = kInf;
    out[Skew] = kInf;
    out[Warping] = quadrilateral ? kInf : kNaN;
    out[Taper] = quadrilateral ? kInf : kNaN;
    out[Jacobian] = 0.0;
}

} // namespace

void MeasureTriangle(const double* const p[3], double out[MeasureCount])
{
    V q[3];
    if (!localCorners(p, 3, q))
        return unmeasurable(out, false);
    const V a = q[0], b = q[1], c = q[2];
    const V ab = b - a, bc = c - b, ca = a - c;
    const double lab = norm(ab), lbc = norm(bc), lca = norm(ca);
    const double area2 = norm(cross(ab, c - a)); // twice the area
    const double lmax = std::max({lab, lbc, lca});
    out[Warping] = kNaN;
    out[Taper] = kNaN;
    // Longest edge over inradius, scaled so that the equilateral triangle gives 1:
    // lmax * perimeter / (4 sqrt(3) area).
    out[AspectRatio] = area2 > 0 ? lmax * (lab + lbc + lca) / (2.0 * std::sqrt(3.0) * area2)
                                 : kInf;
    // Corner angles from their cosines; only the extremes need an arc cosine.
    if (lab > 0 && lbc > 0 && lca > 0) {
        const double cA = -dot(ab, ca) / (lab * lca);
        const double cB = -dot(bc, ab) / (lbc * lab);
        const double cC = -dot(ca, bc) / (lca * lbc);
        const double thetaMax = safeAcos(std::min({cA, cB, cC}));
        const double thetaMin = safeAcos(std::max({cA, cB, cC}));
        const double ideal = kPi / 3;
        out[Skew] = std::max(thetaMax - ideal, ideal - thetaMin);
    } else {
        out[Skew] = kInf;
    }
    // Smallest corner sine, scaled so that the equilateral triangle gives 1.
    const double maxProduct = std::max({lab * lca, lab * lbc, lbc * lca});
    out[Jacobian] = maxProduct > 0 ? (2.0 / std::sqrt(3.0)) * area2 / maxProduct : 0.0;
}

void MeasureQuadrilateral(const double* const p[4], double out[MeasureCount])
{
    V q[4];
    if (!localCorners(p, 4, q))
        return unmeasurable(out, true);
    const V p0 = q[0], p1 = q[1], p2 = q[2], p3 = q[3];
    // Principal axes (twice the bimedians) and the cross term of the bilinear map.
    const V x1 = (p1 - p0) + (p2 - p3);
    const V x2 = (p2 - p1) + (p3 - p0);
    const V x12 = (p0 - p1) + (p2 - p3);
    const double l1 = norm(x1), l2 = norm(x2);
    const double lmin = std::min(l1, l2);
    if (lmin > 0) {
        out[AspectRatio] = std::max(l1, l2) / lmin;
        const double theta = std::atan2(norm(cross(x1, x2)), dot(x1, x2));
        out[Skew] = std::fabs(kPi / 2 - theta);
        out[Taper] = norm(x12) / lmin;
    } else {
        out[AspectRatio] = kInf;
        out[Skew] = kInf;
        out[Taper] = kInf;
    }
    // Warping: the angle between the normals of the two triangles of a diagonal split, the
    // larger of the two splits. Only a split whose diagonal runs inside the element measures a
    // bend out of its plane; its two triangles then both face the side of the centre normal.
    // Across the outside diagonal of a concave quadrilateral the halves face opposite ways, an
    // angle near 180 degrees that is the re-entrant corner and no bend at all: the Jacobian
    // reports that corner (negative). When neither split runs inside (a twisted or folded
    // element) the smaller angle is how far it folds over. A split with a collapsed half
    // says nothing and counts 0.
    const V n = cross(x1, x2);
    auto splitAngle = [&n](V a, V b, V c, V d, bool* inside) {
        const V n1 = cross(b - a, c - a);
        const V n2 = cross(c - a, d - a);
        const double l = norm(n1) * norm(n2);
        if (!(l > 0)) {
            *inside = true;
            return 0.0;
        }
        *inside = dot(n1, n) > 0 && dot(n2, n) > 0;
        return safeAcos(dot(n1, n2) / l);
    };
    bool in13 = false, in24 = false;
    const double w13 = splitAngle(p0, p1, p2, p3, &in13);
    const double w24 = splitAngle(p1, p2, p3, p0, &in24);
    if (in13 && in24)
        out[Warping] = std::max(w13, w24);
    else if (in13 || in24)
        out[Warping] = in13 ? w13 : w24;
    else
        out[Warping] = std::min(w13, w24);
    // Jacobian: the smallest corner determinant, each over its two edge lengths, measured
    // against the normal at the centre (negative at a re-entrant corner).
    const double ln = norm(n);
    if (ln > 0) {
        const V nh{n.x / ln, n.y / ln, n.z / ln};
        const V pts[4] = {p0, p1, p2, p3};
        double jmin = kInf;
        for (int i = 0; i < 4; ++i) {
            const V u = pts[(i + 1) & 3] - pts[i];
            const V v = pts[(i + 3) & 3] - pts[i];
            const double l = norm(u) * norm(v);
            jmin = std::min(jmin, l > 0 ? dot(cross(u, v), nh) / l : 0.0);
        }
        out[Jacobian] = jmin;
    } else {
        out[Jacobian] = 0.0;
    }
}

void MeasureTetrahedron(const double* const p[4], double out[MeasureCount])
{
    V q[4];
    if (!localCorners(p, 4, q))
        return unmeasurable(out, false);
    const V p0 = q[0], p1 = q[1], p2 = q[2], p3 = q[3];
    const V e01 = p1 - p0, e02 = p2 - p0, e03 = p3 - p0;
    const V e12 = p2 - p1, e13 = p3 - p1, e23 = p3 - p2;
    const double l01 = norm(e01), l02 = norm(e02), l03 = norm(e03);
    const double l12 = norm(e12), l13 = norm(e13), l23 = norm(e23);
    const double v6 = dot(e01, cross(e02, e03)); // six times the signed volume
    out[Warping] = kNaN;
    out[Taper] = kNaN;
    // Face normals, each twice the face's area; their orientation does not matter below.
    const V n0 = cross(e12, e13);  // opposite node 0
    const V n1 = cross(e03, e02);  // opposite node 1
    const V n2 = cross(e01, e03);  // opposite node 2
    const V n3 = cross(e02, e01);  // opposite node 3
    const double a0 = norm(n0), a1 = norm(n1), a2 = norm(n2), a3 = norm(n3);
    const double faces2 = a0 + a1 + a2 + a3; // twice the surface
    const double lmax = std::max({l01, l02, l03, l12, l13, l23});
    // Longest edge over inradius, scaled so that the regular tetrahedron gives 1:
    // lmax * surface / (sqrt(6) * 6 volume).
    const double av6 = std::fabs(v6);
    out[AspectRatio] = av6 > 0 ? lmax * (faces2 / 2) / (std::sqrt(6.0) * av6) : kInf;
    // Dihedral angle at an edge: pi minus the angle between the normals of its two faces.
    if (a0 > 0 && a1 > 0 && a2 > 0 && a3 > 0) {
        const double c[6] = {dot(n2, n3) / (a2 * a3),   // edge 0-1
                             dot(n1, n3) / (a1 * a3),   // edge 0-2
                             dot(n1, n2) / (a1 * a2),   // edge 0-3
                             dot(n0, n3) / (a0 * a3),   // edge 1-2
                             dot(n0, n2) / (a0 * a2),   // edge 1-3
                             dot(n0, n1) / (a0 * a1)};  // edge 2-3
        const auto [cmin, cmax] = std::minmax_element(c, c + 6);
        // The dihedral angle grows with the normals' cosine.
        const double thetaMax = kPi - safeAcos(*cmax);
        const double thetaMin = kPi - safeAcos(*cmin);
        const double ideal = std::acos(1.0 / 3.0);
        out[Skew] = std::max(thetaMax - ideal, ideal - thetaMin);
    } else {
        out[Skew] = kInf;
    }
    // Scaled Jacobian: the corner determinant over the product of its three edge lengths,
    // smallest over the corners, times sqrt(2) so that the regular tetrahedron gives 1.
    const double maxProduct = std::max({l01 * l02 * l03, l01 * l12 * l13, l02 * l12 * l23,
                                        l03 * l13 * l23});
    out[Jacobian] = maxProduct > 0 ? std::sqrt(2.0) * v6 / maxProduct : 0.0;
}

} // namespace KwMeshQuality
