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
void unmeasurable(double out[MeasureCount], bool quadrilateralFaces)
{
    out[AspectRatio] = kInf;
    out[Skew] = kInf;
    out[Warping] = quadrilateralFaces ? kInf : kNaN;
    out[Taper] = quadrilateralFaces ? kInf : kNaN;
    out[Jacobian] = 0.0;
}

// The triangle's measures on corners already in the element's own frame (the wedge measures
// its two end triangles with it).
void measureTriangle(V a, V b, V c, double out[MeasureCount])
{
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


// --- solids with quadrilateral faces ---

// A solid's faces and corners are many (six faces with two splits each, eight corners for a
// hexahedron): each is ranked by a key that orders as its cosine or scaled determinant
// x / sqrt(l) does, sign(x) x^2 / l, which takes a division but no square root; only the
// worst one is turned into its value.
inline double rankKey(double x, double l) { return (x < 0 ? -x : x) * x / l; }
inline double keyValue(double key) { return key < 0 ? -std::sqrt(-key) : std::sqrt(key); }

// Warping and taper of one quadrilateral face of a solid, as MeasureQuadrilateral takes them:
// the warping as the rank key of its cosine and the two normals that make it, the taper as
// the fraction taperNum / taperDen of its square (a zero denominator: collapsed).
struct FaceShape
{
    double warpKey;
    V h1, h2;
    double taperNum, taperDen;
};

inline FaceShape quadFace(V a, V b, V c, V d)
{
    FaceShape f;
    const V x1 = (b - a) + (c - d);
    const V x2 = (c - b) + (d - a);
    const V x12 = (a - b) + (c - d);
    f.taperNum = dot(x12, x12);
    f.taperDen = std::min(dot(x1, x1), dot(x2, x2));
    // The normal at the centre is (C-A) x (D-B), half of X1 x X2; each diagonal split's two
    // triangle normals add up to it, so the second of each pair costs a subtraction.
    const V ac = c - a, bd = d - b;
    const V n = cross(ac, bd);
    const V n1 = cross(b - a, ac); // split along 1-3: triangles 1 2 3 and 1 3 4
    const V m1 = cross(c - b, bd); // split along 2-4: triangles 2 3 4 and 2 4 1
    const V n2 = n - n1, m2 = n - m1;
    // Whether a split's diagonal runs inside (both halves face the side of the centre
    // normal); a split with a collapsed half counts 0 (its key is that of cosine 1). As the
    // halves add up to n, h2 . n = n . n - h1 . n and h1 . h2 = h1 . n - h1 . h1.
    const double nn = dot(n, n);
    const double a13 = dot(n1, n1), p13 = dot(n1, n), a24 = dot(m1, m1), p24 = dot(m1, n);
    const double l13 = a13 * dot(n2, n2), l24 = a24 * dot(m2, m2);
    const bool ok13 = l13 > 0, ok24 = l24 > 0;
    const bool in13 = !ok13 || (p13 > 0 && nn - p13 > 0);
    const bool in24 = !ok24 || (p24 > 0 && nn - p24 > 0);
    const double k13 = ok13 ? rankKey(p13 - a13, l13) : 1.0;
    const double k24 = ok24 ? rankKey(p24 - a24, l24) : 1.0;
    bool use13;
    if (in13 && in24)
        use13 = k13 <= k24;
    else if (in13 || in24)
        use13 = in13;
    else
        use13 = k13 >= k24;
    f.warpKey = use13 ? k13 : k24;
    f.h1 = use13 ? n1 : m1;
    f.h2 = use13 ? n2 : m2;
    return f;
}

// The largest warping and taper of the given quadrilateral faces (corner indices into q).
void quadFaces(const V q[], const int (*faces)[4], int count, double out[MeasureCount])
{
    FaceShape worst{2.0, {}, {}, 0.0, 1.0};
    double taperNum = 0.0, taperDen = 1.0;
    for (int i = 0; i < count; ++i) {
        const int* f = faces[i];
        const FaceShape s = quadFace(q[f[0]], q[f[1]], q[f[2]], q[f[3]]);
        if (s.warpKey < worst.warpKey)
            worst = s;
        // The larger taper by cross-multiplying: no division per face.
        if (!(taperDen > 0))
            continue;
        if (!(s.taperDen > 0) || s.taperNum * taperDen > taperNum * s.taperDen) {
            taperNum = s.taperNum;
            taperDen = s.taperDen;
        }
    }
    // The angle from its sine and cosine together: exact near 0, where an arc cosine of a
    // rounded 1 - 1e-16 would read 1.5e-8 for a flat face.
    const bool collapsed = !(dot(worst.h1, worst.h1) * dot(worst.h2, worst.h2) > 0);
    out[Warping] = collapsed ? 0.0
                             : std::atan2(norm(cross(worst.h1, worst.h2)), dot(worst.h1, worst.h2));
    out[Taper] = taperDen > 0 ? std::sqrt(taperNum / taperDen) : kInf;
}

// The determinant of a corner's three edges over the product of their lengths (1 for three
// edges at right angles in right-handed order, negative for a corner turned inside out, 0 for
// a collapsed edge), as its rank key.
inline double cornerKey(V o, V a, V b, V c)
{
    const V u = a - o, v = b - o, w = c - o;
    const double l = dot(u, u) * dot(v, v) * dot(w, w);
    return l > 0 ? rankKey(dot(u, cross(v, w)), l) : 0.0;
}

// The angle between two directions taken as lines (0 to 90 degrees); +infinity when one of
// them has no length.
inline double lineAngle(V a, V b)
{
    const double la = dot(a, a), lb = dot(b, b);
    if (!(la > 0 && lb > 0))
        return kInf;
    return std::atan2(norm(cross(a, b)), std::fabs(dot(a, b)));
}

constexpr int kHexFaces[6][4] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                 {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};
// Each corner's three neighbours in the order that makes a good element's determinant
// positive.
constexpr int kHexCorners[8][3] = {{1, 3, 4}, {2, 0, 5}, {3, 1, 6}, {0, 2, 7},
                                   {7, 5, 0}, {4, 6, 1}, {5, 7, 2}, {6, 4, 3}};
constexpr int kWedgeFaces[3][4] = {{0, 1, 4, 3}, {1, 2, 5, 4}, {2, 0, 3, 5}};
constexpr int kWedgeCorners[6][3] = {{1, 2, 3}, {2, 0, 4}, {0, 1, 5},
                                     {5, 4, 0}, {3, 5, 1}, {4, 3, 2}};
constexpr int kPyramidBase[1][4] = {{0, 1, 2, 3}};

} // namespace

void MeasureTriangle(const double* const p[3], double out[MeasureCount])
{
    V q[3];
    if (!localCorners(p, 3, q))
        return unmeasurable(out, false);
    measureTriangle(q[0], q[1], q[2], out);
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

void MeasureHexahedron(const double* const p[8], double out[MeasureCount])
{
    V q[8];
    if (!localCorners(p, 8, q))
        return unmeasurable(out, true);
    // Principal axes: the sums of the four edges that run each way (four times the mean edge).
    const V x[3] = {(q[1] - q[0]) + (q[2] - q[3]) + (q[5] - q[4]) + (q[6] - q[7]),
                    (q[3] - q[0]) + (q[2] - q[1]) + (q[7] - q[4]) + (q[6] - q[5]),
                    (q[4] - q[0]) + (q[5] - q[1]) + (q[6] - q[2]) + (q[7] - q[3])};
    const double l[3] = {dot(x[0], x[0]), dot(x[1], x[1]), dot(x[2], x[2])};
    const double lmin = std::min({l[0], l[1], l[2]});
    if (lmin > 0) {
        out[AspectRatio] = std::sqrt(std::max({l[0], l[1], l[2]}) / lmin);
        // Skew: how far the two axes furthest from a right angle are from it; the pair with
        // the largest squared cosine, then one arc tangent.
        int worst = 0;
        double worstCos2 = -1;
        for (int k = 0; k < 3; ++k) {
            const int i = k, j = (k + 1) % 3;
            const double d = dot(x[i], x[j]);
            const double c2 = d * d / (l[i] * l[j]);
            if (c2 > worstCos2) {
                worstCos2 = c2;
                worst = k;
            }
        }
        const V& a = x[worst];
        const V& b = x[(worst + 1) % 3];
        out[Skew] = std::atan2(std::fabs(dot(a, b)), norm(cross(a, b)));
    } else {
        out[AspectRatio] = kInf;
        out[Skew] = kInf;
    }
    quadFaces(q, kHexFaces, 6, out);
    double jmin = kInf;
    for (int i = 0; i < 8; ++i) {
        const int* c = kHexCorners[i];
        jmin = std::min(jmin, cornerKey(q[i], q[c[0]], q[c[1]], q[c[2]]));
    }
    out[Jacobian] = keyValue(jmin);
}

void MeasureWedge(const double* const p[6], double out[MeasureCount])
{
    V q[6];
    if (!localCorners(p, 6, q))
        return unmeasurable(out, true);
    // The end triangles as triangles.
    double bottom[MeasureCount], top[MeasureCount];
    measureTriangle(q[0], q[1], q[2], bottom);
    measureTriangle(q[3], q[4], q[5], top);
    // The extrusion axis: the sum of the three edges between the ends (three times the mean).
    const V x3 = (q[3] - q[0]) + (q[4] - q[1]) + (q[5] - q[2]);
    const double triangleEdges = norm(q[1] - q[0]) + norm(q[2] - q[1]) + norm(q[0] - q[2]) +
                                 norm(q[4] - q[3]) + norm(q[5] - q[4]) + norm(q[3] - q[5]);
    const double across = triangleEdges / 6, along = norm(x3) / 3;
    const double stretch = across > 0 && along > 0 ? std::max(across, along) /
                                                         std::min(across, along)
                                                   : kInf;
    out[AspectRatio] = std::max({bottom[AspectRatio], top[AspectRatio], stretch});
    // The axis against the normal of the triangle halfway between the ends.
    const V s0 = q[0] + q[3], s1 = q[1] + q[4], s2 = q[2] + q[5];
    const double lean = lineAngle(x3, cross(s1 - s0, s2 - s0));
    out[Skew] = std::max({bottom[Skew], top[Skew], lean});
    quadFaces(q, kWedgeFaces, 3, out);
    double jmin = kInf;
    for (int i = 0; i < 6; ++i) {
        const int* c = kWedgeCorners[i];
        jmin = std::min(jmin, cornerKey(q[i], q[c[0]], q[c[1]], q[c[2]]));
    }
    // A regular wedge's corner has its triangle edges at 60 degrees: sin 60 scales to 1.
    out[Jacobian] = (2.0 / std::sqrt(3.0)) * keyValue(jmin);
}

void MeasurePyramid(const double* const p[5], double out[MeasureCount])
{
    V q[5];
    if (!localCorners(p, 5, q))
        return unmeasurable(out, true);
    // The base's principal axes (twice its mean edges) and the height axis from the base's
    // centre to the apex. The regular pyramid (every edge the same) stands edge / sqrt(2)
    // high: sqrt(2) times the height compares with the edges.
    const V x1 = (q[1] - q[0]) + (q[2] - q[3]);
    const V x2 = (q[2] - q[1]) + (q[3] - q[0]);
    const V centre{(q[0].x + q[1].x + q[2].x + q[3].x) / 4, (q[0].y + q[1].y + q[2].y + q[3].y) / 4,
                   (q[0].z + q[1].z + q[2].z + q[3].z) / 4};
    const V h = q[4] - centre;
    const double a1 = norm(x1) / 2, a2 = norm(x2) / 2, a3 = std::sqrt(2.0) * norm(h);
    const double amin = std::min({a1, a2, a3});
    out[AspectRatio] = amin > 0 ? std::max({a1, a2, a3}) / amin : kInf;
    if (amin > 0) {
        const double baseSkew = std::atan2(std::fabs(dot(x1, x2)), norm(cross(x1, x2)));
        out[Skew] = std::max(baseSkew, lineAngle(h, cross(x1, x2)));
    } else {
        out[Skew] = kInf;
    }
    quadFaces(q, kPyramidBase, 1, out);
    double jmin = kInf;
    for (int i = 0; i < 4; ++i)
        jmin = std::min(jmin, keyValue(cornerKey(q[i], q[(i + 1) & 3], q[(i + 3) & 3], q[4])));
    // The regular pyramid's base corner measures 1/sqrt(2); a taller one comes nearer a right
    // angle at its base, which is no better an element: the value stops at 1.
    out[Jacobian] = std::min(std::sqrt(2.0) * jmin, 1.0);
}

void MeasureFamily(int family, const double* const pts[], double out[MeasureCount])
{
    switch (family) {
    case Triangle: return MeasureTriangle(pts, out);
    case Quadrilateral: return MeasureQuadrilateral(pts, out);
    case Tetrahedron: return MeasureTetrahedron(pts, out);
    case Hexahedron: return MeasureHexahedron(pts, out);
    case Wedge: return MeasureWedge(pts, out);
    case Pyramid: return MeasurePyramid(pts, out);
    default:
        for (int m = 0; m < MeasureCount; ++m)
            out[m] = kNaN;
    }
}

} // namespace KwMeshQuality
