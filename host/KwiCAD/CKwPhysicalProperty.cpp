// Physical properties: the twenty beam section shapes, their outlines and section values.
#include "CKwPhysicalProperty.h"

#include "KwNumbers.h"
#include "KwSectionSolver.h"

#include <algorithm>
#include <cmath>

namespace {

struct ShapeInfo
{
    const char* name;
    int dims;
};
constexpr ShapeInfo kShapes[CKwPhysicalProperty::ShapeCount] = {
    {"ROD", 1},  {"TUBE", 2}, {"I", 6},     {"I1", 4}, {"CHAN", 4}, {"CHAN1", 4}, {"CHAN2", 4},
    {"T", 4},    {"T1", 4},   {"T2", 4},    {"CROSS", 4}, {"BAR", 2}, {"BOX", 4}, {"BOX1", 6},
    {"H", 4},    {"HEXA", 3}, {"Z", 4},     {"HAT", 4}, {"HAT1", 5}, {"L", 4},
};

// The shape rules: which dimensions a shape needs and how they must relate for the outline to
// be the shape at all (walls that do not overlap, a web narrower than its flanges, ...).
// One rule: factor * (d[a] + d[b]) < d[c], b = -1 for a single dimension; indices are DIM
// numbers minus one.
struct Rule
{
    int a, b;
    double factor;
    int c;
};

struct ShapeRules
{
    int tested;        // how many dimensions the nothing-entered and zero tests look at
    unsigned required; // bit i: DIMi+1 must be present
    std::vector<Rule> rules;
};

const ShapeRules kShapeRules[CKwPhysicalProperty::ShapeCount] = {
    /* ROD   */ {1, 0x1, {}},
    /* TUBE  */ {2, 0x3, {{1, -1, 1, 0}}},
    /* I     */ {6, 0x3f, {{4, -1, 1, 0}, {5, -1, 1, 0}, {3, -1, 1, 1}, {4, 5, 1, 0}, {3, -1, 1, 2}}},
    /* I1    */ {4, 0xf, {{2, -1, 1, 3}}},
    /* CHAN  */ {4, 0xf, {{2, -1, 1, 0}, {3, -1, 2, 1}}},
    /* CHAN1 */ {4, 0xf, {{2, -1, 1, 3}}},
    /* CHAN2 */ {4, 0xf, {{0, -1, 2, 3}, {1, -1, 1, 2}}},
    /* T     */ {4, 0xf, {{3, -1, 1, 0}, {2, -1, 1, 1}}},
    /* T1    */ {4, 0xf, {{3, -1, 1, 0}}},
    /* T2    */ {4, 0xf, {{3, -1, 1, 0}, {2, -1, 1, 1}}},
    /* CROSS */ {4, 0xf, {{3, -1, 1, 2}}},
    /* BAR   */ {2, 0x2, {}},
    /* BOX   */ {4, 0xf, {{3, -1, 2, 0}, {2, -1, 2, 1}}},
    /* BOX1  */ {6, 0x3f, {{4, 5, 1, 0}, {2, 3, 1, 1}}},
    /* H     */ {4, 0xf, {{3, -1, 1, 2}}},
    /* HEXA  */ {2, 0x7, {{0, -1, 2, 1}}},
    /* Z     */ {4, 0xf, {{2, -1, 1, 3}}},
    /* HAT   */ {4, 0xf, {{1, -1, 2, 2}, {0, -1, 1, 1}}},
    /* HAT1  */ {5, 0x1f, {{2, -1, 1, 0}, {3, -1, 1, 0}, {4, -1, 1, 1}, {3, -1, 1, 1},
                          {3, -1, 1, 2}, {3, -1, 2, 2}, {3, 4, 1, 1}}},
    /* L     */ {4, 0xf, {{3, -1, 1, 0}, {2, -1, 1, 1}}},
};

constexpr double kZeroDimension = 1e-15;

constexpr int kCircleSegments = CKwPhysicalProperty::kMaxLoopPoints;

using Loop = std::vector<Kw::Point>;

// Outline loops in the shape's own coordinates (outer loop anticlockwise first, holes after).
std::vector<Loop> shapeLoops(int shape, const double* d)
{
    using P = CKwPhysicalProperty;
    auto rect = [](double x0, double y0, double x1, double y1) {
        return Loop{{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
    };
    auto hole = [&](double x0, double y0, double x1, double y1) {
        Loop l = rect(x0, y0, x1, y1);
        std::reverse(l.begin(), l.end());
        return l;
    };
    auto circle = [](double r, bool ccw) {
        Loop l;
        for (int i = 0; i < kCircleSegments; ++i) {
            const double a = 2 * M_PI * i / kCircleSegments * (ccw ? 1 : -1);
            l.push_back({r * std::cos(a), r * std::sin(a)});
        }
        return l;
    };
    // An I with its own flange widths and thicknesses.
    auto ibeam = [](double h, double wb, double wt, double tw, double tb, double tt) {
        return Loop{{-wb / 2, 0},     {wb / 2, 0},      {wb / 2, tb},     {tw / 2, tb},
                    {tw / 2, h - tt}, {wt / 2, h - tt}, {wt / 2, h},      {-wt / 2, h},
                    {-wt / 2, h - tt}, {-tw / 2, h - tt}, {-tw / 2, tb},  {-wb / 2, tb}};
    };
    auto chan = [](double w, double h, double tw, double tf) {
        return Loop{{0, 0}, {w, 0}, {w, tf}, {tw, tf}, {tw, h - tf}, {w, h - tf}, {w, h}, {0, h}};
    };
    switch (shape) {
    case P::ROD:
        return {circle(d[0], true)};
    case P::TUBE:
        return {circle(d[0], true), circle(d[1], false)};
    case P::I:
        return {ibeam(d[0], d[1], d[2], d[3], d[4], d[5])};
    case P::I1: {
        const double tf = (d[3] - d[2]) / 2;
        return {ibeam(d[3], d[0] + d[1], d[0] + d[1], d[1], tf, tf)};
    }
    case P::CHAN:
        return {chan(d[0], d[1], d[2], d[3])};
    case P::CHAN1:
        return {chan(d[0] + d[1], d[3], d[1], (d[3] - d[2]) / 2)};
    case P::CHAN2: {
        const double t = d[0], tb = d[1], h = d[2], w = d[3];
        return {Loop{{0, 0}, {w, 0}, {w, h}, {w - t, h}, {w - t, tb}, {t, tb}, {t, h}, {0, h}}};
    }
    case P::T:
    case P::T2: {
        const double b = d[0], h = d[1], tf = d[2], tw = d[3];
        Loop l{{-tw / 2, 0},      {tw / 2, 0}, {tw / 2, h - tf}, {b / 2, h - tf},
               {b / 2, h},        {-b / 2, h}, {-b / 2, h - tf}, {-tw / 2, h - tf}};
        if (shape == P::T2) // flange at the bottom
            for (auto& p : l)
                p.y = h - p.y;
        if (shape == P::T2)
            std::reverse(l.begin(), l.end());
        return {l};
    }
    case P::T1: {
        const double h = d[0], len = d[1], tf = d[2], tw = d[3];
        return {Loop{{0, -h / 2}, {tf, -h / 2}, {tf, -tw / 2}, {tf + len, -tw / 2},
                     {tf + len, tw / 2}, {tf, tw / 2}, {tf, h / 2}, {0, h / 2}}};
    }
    case P::CROSS: {
        const double v = d[1] / 2, a = v + d[0] / 2, hh = d[2] / 2, ta = d[3] / 2;
        return {Loop{{-v, -hh}, {v, -hh}, {v, -ta}, {a, -ta}, {a, ta}, {v, ta}, {v, hh}, {-v, hh},
                     {-v, ta}, {-a, ta}, {-a, -ta}, {-v, -ta}}};
    }
    case P::BAR:
        return {rect(0, 0, d[0], d[1])};
    case P::BOX:
        return {rect(0, 0, d[0], d[1]), hole(d[3], d[2], d[0] - d[3], d[1] - d[2])};
    case P::BOX1:
        return {rect(0, 0, d[0], d[1]), hole(d[4], d[3], d[0] - d[5], d[1] - d[2])};
    case P::H: {
        const double g = d[0] / 2, t = d[1] / 2, hh = d[2] / 2, tw = d[3] / 2;
        return {Loop{{-g - t, -hh}, {-g, -hh}, {-g, -tw}, {g, -tw}, {g, -hh}, {g + t, -hh},
                     {g + t, hh}, {g, hh}, {g, tw}, {-g, tw}, {-g, hh}, {-g - t, hh}}};
    }
    case P::HEXA: {
        const double c = d[0], w = d[1], h = d[2];
        return {Loop{{c, 0}, {w - c, 0}, {w, h / 2}, {w - c, h}, {c, h}, {0, h / 2}}};
    }
    case P::Z: {
        const double o = d[0], tw = d[1], h = d[3], tf = (d[3] - d[2]) / 2;
        return {Loop{{-o, 0}, {tw, 0}, {tw, h - tf}, {tw + o, h - tf}, {tw + o, h}, {0, h},
                     {0, tf}, {-o, tf}}};
    }
    case P::HAT: {
        const double t = d[0], h = d[1], w = d[2] / 2, b = d[3];
        return {Loop{{-w - b, 0}, {-w + t, 0}, {-w + t, h - t}, {w - t, h - t}, {w - t, 0},
                     {w + b, 0}, {w + b, t}, {w, t}, {w, h}, {-w, h}, {-w, t}, {-w - b, t}}};
    }
    case P::HAT1: {
        const double w = d[0] / 2, h = d[1], c = d[2] / 2, t = d[3], tp = d[4];
        return {Loop{{-w, 0}, {w, 0}, {w, tp + t}, {c, tp + t}, {c, h}, {-c, h}, {-c, tp + t},
                     {-w, tp + t}},
                hole(-c + t, tp, c - t, h - t)};
    }
    case P::L: {
        const double w = d[0], h = d[1], th = d[2], tv = d[3];
        return {Loop{{0, 0}, {w, 0}, {w, th}, {tv, th}, {tv, h}, {0, h}}};
    }
    default:
        return {};
    }
}

// Turns the loops in whole steps; quarter turns are exact.
void rotateLoops(std::vector<Loop>& loops, int steps)
{
    const double a = steps * CKwPhysicalProperty::kRotationStepDegrees * M_PI / 180;
    const double c = std::cos(a), s = std::sin(a);
    const bool quarter = std::fmod(CKwPhysicalProperty::kRotationStepDegrees, 90.0) == 0;
    const int q = quarter ? ((static_cast<int>(std::lround(a / (M_PI / 2))) % 4) + 4) % 4 : -1;
    for (Loop& l : loops)
        for (Kw::Point& p : l) {
            const Kw::Point o = p;
            switch (q) {
            case 0: break;
            case 1: p = {-o.y, o.x}; break;
            case 2: p = {-o.x, -o.y}; break;
            case 3: p = {o.y, -o.x}; break;
            default: p = {c * o.x - s * o.y, s * o.x + c * o.y};
            }
        }
}

std::vector<Loop> toLoops(Kw::Point (*loops)[CKwPhysicalProperty::kMaxLoopPoints],
                          const int* counts, int loopCount)
{
    std::vector<Loop> out;
    if (!loops || !counts || loopCount <= 0 || loopCount > CKwPhysicalProperty::kMaxLoops)
        return out;
    for (int i = 0; i < loopCount; ++i) {
        const int n = std::clamp(counts[i], 0, CKwPhysicalProperty::kMaxLoopPoints);
        out.emplace_back(loops[i], loops[i] + n);
    }
    return out;
}

// Recovery points C, D, E, F: the outline's points nearest to the corners of its bounding box
// (upper right, upper left, lower left, lower right), so that each lies on the section.
void setRecoveryPoints(const std::vector<Loop>& loops, double* props)
{
    const KwLoopBounds b = KwBoundsOfLoops(loops);
    const double x0 = b.x0, x1 = b.x1, y0 = b.y0, y1 = b.y1;
    const Kw::Point corners[4] = {{x1, y1}, {x0, y1}, {x0, y0}, {x1, y0}};
    for (int k = 0; k < 4; ++k) {
        Kw::Point best = corners[k];
        double bestDistance = HUGE_VAL;
        if (!loops.empty())
            for (const Kw::Point& p : loops.front()) {
                // Scaled by the box, so that no square overflows.
                const double dx = (p.x - corners[k].x) / std::max(x1 - x0, 1e-300);
                const double dy = (p.y - corners[k].y) / std::max(y1 - y0, 1e-300);
                const double d = dx * dx + dy * dy;
                if (d < bestDistance) {
                    bestDistance = d;
                    best = p;
                }
            }
        props[KwSectionValue::RecoveryFirst + 2 * k] = best.x;
        props[KwSectionValue::RecoveryFirst + 2 * k + 1] = best.y;
    }
}

// Whether the loops are their own mirror image about the line x = axis (mirrorX) or y = axis:
// every mirrored loop, walked backwards, is one of the loops. `tolerance` is absolute.
bool isMirrorSymmetric(const std::vector<Loop>& loops, bool mirrorX, double axis, double tolerance)
{
    auto mirrored = [&](const Kw::Point& p) {
        return mirrorX ? Kw::Point{2 * axis - p.x, p.y} : Kw::Point{p.x, 2 * axis - p.y};
    };
    auto near = [&](const Kw::Point& a, const Kw::Point& b) {
        return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance;
    };
    for (const Loop& l : loops) {
        const size_t n = l.size();
        bool found = false;
        for (const Loop& other : loops) {
            if (other.size() != n)
                continue;
            for (size_t shift = 0; shift < n && !found; ++shift) {
                bool all = true;
                for (size_t k = 0; k < n && all; ++k)
                    all = near(mirrored(l[k]), other[(shift + n - k) % n]);
                found = all;
            }
            if (found)
                break;
        }
        if (!found)
            return false;
    }
    return true;
}

// Shear area over area of a solid (inner = 0) or hollow circle, Poisson's ratio 0: the
// flexure function is (A r^3 + B r + C / r) cos(theta) with no flux through either circle.
double circleShearFactor(double a, double b)
{
    const double s = a * a + b * b, p = a * a * b * b;
    double q = 10 * (std::pow(a, 6) - std::pow(b, 6)) / 6 - 6 * s * (std::pow(a, 4) - std::pow(b, 4)) +
               (9 * s * s + 6 * p) * (a * a - b * b);
    // 9 p^2 (1/a^2 - 1/b^2), multiplied out: no division by a vanishing inner radius.
    q -= 9 * p * (b * b - a * a);
    const double ixx = M_PI * (std::pow(a, 4) - std::pow(b, 4)) / 4;
    const double shearArea = 64 * ixx * ixx / (M_PI * q);
    return shearArea / (M_PI * (a * a - b * b));
}

} // namespace

CKwPhysicalProperty::CKwPhysicalProperty(int id, const QString& name)
    : CKwFEBase(id, name), m_thickness(MissingDouble), m_sectionArea(MissingDouble)
{
    m_dimA.fill(MissingDouble);
    m_dimB.fill(MissingDouble);
}

CKwPhysicalProperty* CKwPhysicalProperty::Clone() const
{
    auto* c = new CKwPhysicalProperty(GetID(), GetName());
    c->CloneInput(this);
    return c;
}

void CKwPhysicalProperty::CloneInput(const CKwPhysicalProperty* o)
{
    if (!o || o == this)
        return;
    SetName(o->GetName());
    m_idealization = o->m_idealization;
    m_materialId = o->m_materialId;
    m_thickness = o->m_thickness;
    m_sectionName = o->m_sectionName;
    m_sectionArea = o->m_sectionArea;
    m_elementKind = o->m_elementKind;
    m_sectionMode = o->m_sectionMode;
    m_sectionShape = o->m_sectionShape;
    m_tapered = o->m_tapered;
    m_rotationSteps = o->m_rotationSteps;
    m_refPoint = o->m_refPoint;
    m_dimA = o->m_dimA;
    m_dimB = o->m_dimB;
    m_shellOffset = o->m_shellOffset;
    m_bendingRatio = o->m_bendingRatio;
    m_shearRatio = o->m_shearRatio;
}

QString CKwPhysicalProperty::ShapeName(int code)
{
    return code >= 0 && code < ShapeCount ? QString::fromLatin1(kShapes[code].name) : QString();
}

int CKwPhysicalProperty::ShapeFromName(const QString& name)
{
    for (int i = 0; i < ShapeCount; ++i)
        if (name == QLatin1String(kShapes[i].name))
            return i;
    return -1;
}

int CKwPhysicalProperty::ShapeDimensionCount(int code)
{
    return code >= 0 && code < ShapeCount ? kShapes[code].dims : 0;
}

bool CKwPhysicalProperty::ShapeFitsElementKind(int code, int elementKind)
{
    if (code < 0 || code >= ShapeCount)
        return false;
    switch (elementKind) {
    case KindPipe: return code == TUBE;
    case KindBar: return code != L;
    case KindBeam: return true;
    default: return false;
    }
}

int CKwPhysicalProperty::CheckShapeDimensions(int shape, const double* d)
{
    if (shape < 0 || shape >= ShapeCount || !d)
        return 3;
    const ShapeRules& s = kShapeRules[shape];
    bool allMissing = true;
    for (int i = 0; i < s.tested; ++i)
        allMissing = allMissing && IsMissingValue(d[i]);
    if (allMissing)
        return 1;
    for (int i = 0; i < s.tested; ++i)
        if (!IsMissingValue(d[i]) && std::abs(d[i]) < kZeroDimension)
            return 2;
    for (int i = 0; i < kShapes[shape].dims; ++i)
        if ((s.required >> i & 1) && IsMissingValue(d[i]))
            return 3;
    for (const Rule& r : s.rules) {
        const double lhs = r.factor * (d[r.a] + (r.b >= 0 ? d[r.b] : 0.0));
        if (!(lhs < d[r.c]))
            return 3;
    }
    return 0;
}

bool CKwPhysicalProperty::IsValidShape(int shape, const double* dims)
{
    if (CheckShapeDimensions(shape, dims) != 0)
        return false;
    // Beyond the rules: every dimension the shape uses is a real, positive length.
    for (int i = 0; i < ShapeDimensionCount(shape); ++i)
        if (IsMissingValue(dims[i]) || !std::isfinite(dims[i]) || !(dims[i] > 0))
            return false;
    return true;
}

int CKwPhysicalProperty::BuildShapeLoops(int shape, const double* dims,
                                         Kw::Point (*loops)[kMaxLoopPoints], int* pointCounts)
{
    if (!IsValidShape(shape, dims))
        return 0;
    std::vector<Loop> l = shapeLoops(shape, dims);
    if (l.empty() || static_cast<int>(l.size()) > kMaxLoops || !KwCheckSectionLoops(l))
        return 0;
    // Centre the bounding box on the origin.
    double x0 = 1e300, x1 = -1e300, y0 = 1e300, y1 = -1e300;
    for (const Loop& lp : l)
        for (const Kw::Point& p : lp) {
            x0 = std::min(x0, p.x);
            x1 = std::max(x1, p.x);
            y0 = std::min(y0, p.y);
            y1 = std::max(y1, p.y);
        }
    const double mx = (x0 + x1) / 2, my = (y0 + y1) / 2;
    for (size_t i = 0; i < l.size(); ++i) {
        pointCounts[i] = static_cast<int>(l[i].size());
        for (size_t k = 0; k < l[i].size(); ++k)
            loops[i][k] = {l[i][k].x - mx, l[i][k].y - my};
    }
    return static_cast<int>(l.size());
}

void CKwPhysicalProperty::GetSectionLoopPoints(Kw::Point (*loops)[kMaxLoopPoints], int& loopCount,
                                               int* pointCounts, int end) const
{
    loopCount = BuildShapeLoops(m_sectionShape, GetDimensions(end), loops, pointCounts);
    if (loopCount == 0 || m_rotationSteps == 0)
        return;
    std::vector<Loop> l = toLoops(loops, pointCounts, loopCount);
    rotateLoops(l, m_rotationSteps);
    for (int i = 0; i < loopCount; ++i)
        std::copy(l[i].begin(), l[i].end(), loops[i]);
}

bool CKwPhysicalProperty::GetCrossSectionProperties(Kw::Point (*loops)[kMaxLoopPoints],
                                                    int* pointCounts, int loopCount,
                                                    double* props) const
{
    const std::vector<Loop> l = toLoops(loops, pointCounts, loopCount);
    KwSectionResult r;
    if (!props || l.empty() || !KwSolveSection(l, r))
        return false;
    double v[KwSectionValue::Count] = {};
    v[KwSectionValue::Area] = r.exact.area;
    v[KwSectionValue::Izz] = r.exact.iyy;
    v[KwSectionValue::Iyy] = r.exact.ixx;
    v[KwSectionValue::Izy] = r.exact.ixy;
    v[KwSectionValue::PrincipalAngle] = r.principalAngle;
    v[KwSectionValue::Torsion] = r.torsion;
    v[KwSectionValue::ShearFactorZ] = r.shearFactorX;
    v[KwSectionValue::ShearFactorY] = r.shearFactorY;
    v[KwSectionValue::Rotation] = m_rotationSteps * kRotationStepDegrees * M_PI / 180;
    v[KwSectionValue::CentroidZ] = r.exact.cx;
    v[KwSectionValue::CentroidY] = r.exact.cy;
    v[KwSectionValue::ShearOffsetZ] = r.shearCenterX - r.exact.cx;
    v[KwSectionValue::ShearOffsetY] = r.shearCenterY - r.exact.cy;
    v[KwSectionValue::Warping] = r.warping;
    setRecoveryPoints(l, v);
    // Symmetric sections: what is left of a zero product or offset is rounding and mesh noise.
    const double size = KwBoundsOfLoops(l).Extent();
    if (std::abs(v[KwSectionValue::Izy]) < 1e-12 * (r.exact.ixx + r.exact.iyy)) {
        v[KwSectionValue::Izy] = 0;
        v[KwSectionValue::PrincipalAngle] = r.exact.iyy >= r.exact.ixx ? 0 : M_PI / 2;
    }
    for (int k : {KwSectionValue::ShearOffsetZ, KwSectionValue::ShearOffsetY})
        if (std::abs(v[k]) < 1e-7 * size)
            v[k] = 0;
    // A section symmetric about an axis through its centroid has its shear centre on that
    // axis; the mesh of a slanted outline (HEXA) need not be symmetric, so say so exactly.
    const double tolerance = 1e-9 * size;
    const bool aboutY = isMirrorSymmetric(l, true, r.exact.cx, tolerance);
    const bool aboutZ = isMirrorSymmetric(l, false, r.exact.cy, tolerance);
    if (aboutY)
        v[KwSectionValue::ShearOffsetZ] = 0;
    if (aboutZ)
        v[KwSectionValue::ShearOffsetY] = 0;
    if (aboutY || aboutZ) {
        v[KwSectionValue::Izy] = 0;
        v[KwSectionValue::PrincipalAngle] = r.exact.iyy >= r.exact.ixx ? 0 : M_PI / 2;
    }
    std::copy(v, v + KwSectionValue::Count, props);
    return true;
}

bool CKwPhysicalProperty::GetTubeSectionProperties(double a, double b, double* props) const
{
    if (!props || !std::isfinite(a) || !std::isfinite(b) || !(a > 0) || !(b >= 0) || !(b < a))
        return false;
    double v[KwSectionValue::Count] = {};
    // In powers of the outer radius times functions of the ratio, which stay representable
    // for every radius whose fourth power is.
    const double k = b / a, a2 = a * a;
    const double i = M_PI * a2 * a2 * (1 - k * k * k * k) / 4;
    v[KwSectionValue::Area] = M_PI * a2 * (1 - k * k);
    v[KwSectionValue::Izz] = i;
    v[KwSectionValue::Iyy] = i;
    v[KwSectionValue::Torsion] = 2 * i;
    v[KwSectionValue::ShearFactorZ] = v[KwSectionValue::ShearFactorY] = circleShearFactor(1, k);
    v[KwSectionValue::Rotation] = m_rotationSteps * kRotationStepDegrees * M_PI / 180;
    const double pts[8] = {0, a, a, 0, 0, -a, -a, 0};
    std::copy(pts, pts + 8, v + KwSectionValue::RecoveryFirst);
    for (double x : v)
        if (!std::isfinite(x))
            return false;
    if (!(v[KwSectionValue::Area] > 0) || !(i > 0))
        return false;
    std::copy(v, v + KwSectionValue::Count, props);
    return true;
}

bool CKwPhysicalProperty::GetRodSectionProperties(double radius, double* props) const
{
    return GetTubeSectionProperties(radius, 0.0, props);
}

bool CKwPhysicalProperty::ComputeSectionProperties(int end, double* props) const
{
    const double* d = GetDimensions(end);
    if (!IsValidShape(m_sectionShape, d))
        return false;
    if (m_sectionShape == ROD)
        return GetRodSectionProperties(d[0], props);
    if (m_sectionShape == TUBE)
        return GetTubeSectionProperties(d[0], d[1], props);
    Kw::Point loops[kMaxLoops][kMaxLoopPoints];
    int counts[kMaxLoops] = {};
    int n = 0;
    GetSectionLoopPoints(loops, n, counts, end);
    return n > 0 && GetCrossSectionProperties(loops, counts, n, props);
}

void CKwPhysicalProperty::GetRefPoint(Kw::Point (*)[kMaxLoopPoints], int*, int, double* props,
                                      Kw::Point& point) const
{
    point = {};
    if (!props)
        return;
    point = {props[KwSectionValue::CentroidZ], props[KwSectionValue::CentroidY]};
    if (m_sectionMode == 2 && m_refPoint == RefShearCenter) {
        point.x += props[KwSectionValue::ShearOffsetZ];
        point.y += props[KwSectionValue::ShearOffsetY];
    }
}

void CKwPhysicalProperty::GetRodRefPoint(double, Kw::Point& point)
{
    point = {};
}

void CKwPhysicalProperty::GetTubeRefPoint(double, double, Kw::Point& point)
{
    point = {};
}
