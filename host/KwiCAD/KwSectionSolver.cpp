// Section values of polygonal beam sections: exact polygon integrals, a triangulation of the
// section with its holes, and a six-node triangle solution of the warping and shear functions.
#include "KwSectionSolver.h"

#include <Eigen/Sparse>
#include <Eigen/SparseCholesky>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace {

using Pt = Kw::Point;

double cross(const Pt& o, const Pt& a, const Pt& b)
{
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}

double signedArea(const KwLoop& l)
{
    double a = 0;
    for (size_t i = 0, n = l.size(); i < n; ++i) {
        const Pt& p = l[i];
        const Pt& q = l[(i + 1) % n];
        a += p.x * q.y - q.x * p.y;
    }
    return a / 2;
}

double loopsScale(const std::vector<KwLoop>& loops)
{
    double lo = std::numeric_limits<double>::max(), hi = -lo;
    for (const KwLoop& l : loops)
        for (const Pt& p : l) {
            lo = std::min({lo, p.x, p.y});
            hi = std::max({hi, p.x, p.y});
        }
    return hi > lo ? hi - lo : 0;
}

// Closed segments ab and cd share a point.
bool segmentsTouch(const Pt& a, const Pt& b, const Pt& c, const Pt& d, double eps)
{
    auto side = [eps](double v) { return v > eps ? 1 : (v < -eps ? -1 : 0); };
    const int d1 = side(cross(a, b, c)), d2 = side(cross(a, b, d));
    const int d3 = side(cross(c, d, a)), d4 = side(cross(c, d, b));
    if (d1 * d2 < 0 && d3 * d4 < 0)
        return true;
    auto onSeg = [eps](const Pt& p, const Pt& q, const Pt& r) {
        return std::min(p.x, q.x) - eps <= r.x && r.x <= std::max(p.x, q.x) + eps &&
               std::min(p.y, q.y) - eps <= r.y && r.y <= std::max(p.y, q.y) + eps;
    };
    return (d1 == 0 && onSeg(a, b, c)) || (d2 == 0 && onSeg(a, b, d)) ||
           (d3 == 0 && onSeg(c, d, a)) || (d4 == 0 && onSeg(c, d, b));
}

bool insideLoop(const KwLoop& l, const Pt& p)
{
    bool in = false;
    for (size_t i = 0, n = l.size(), j = n - 1; i < n; j = i++) {
        const Pt& a = l[i];
        const Pt& b = l[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            in = !in;
    }
    return in;
}

bool insideRegion(const std::vector<KwLoop>& loops, const Pt& p)
{
    bool in = false;
    for (const KwLoop& l : loops)
        if (insideLoop(l, p))
            in = !in;
    return in;
}

// Drops repeated points and the closing duplicate; orders the outer loop first, anticlockwise,
// and the holes clockwise. Empty result for anything that is not a valid section.
std::vector<KwLoop> normalised(const std::vector<KwLoop>& input)
{
    std::vector<KwLoop> loops;
    const double scale = loopsScale(input);
    if (!(scale > 0) || !std::isfinite(scale))
        return {};
    const double eps = scale * 1e-12;
    for (const KwLoop& in : input) {
        KwLoop l;
        for (const Pt& p : in) {
            if (!std::isfinite(p.x) || !std::isfinite(p.y))
                return {};
            if (!l.empty() && std::abs(l.back().x - p.x) <= eps && std::abs(l.back().y - p.y) <= eps)
                continue;
            l.push_back(p);
        }
        while (l.size() > 1 && std::abs(l.back().x - l.front().x) <= eps &&
               std::abs(l.back().y - l.front().y) <= eps)
            l.pop_back();
        if (l.size() < 3 || std::abs(signedArea(l)) <= scale * scale * 1e-14)
            return {};
        loops.push_back(std::move(l));
    }
    if (loops.empty())
        return {};
    size_t outer = 0;
    for (size_t i = 1; i < loops.size(); ++i)
        if (std::abs(signedArea(loops[i])) > std::abs(signedArea(loops[outer])))
            outer = i;
    std::swap(loops[0], loops[outer]);
    for (size_t i = 0; i < loops.size(); ++i) {
        const bool ccw = signedArea(loops[i]) > 0;
        if (ccw != (i == 0))
            std::reverse(loops[i].begin(), loops[i].end());
    }
    // No edge may touch another except its neighbours in its own loop.
    const double teps = scale * 1e-10;
    for (size_t a = 0; a < loops.size(); ++a)
        for (size_t b = a; b < loops.size(); ++b) {
            const KwLoop& la = loops[a];
            const KwLoop& lb = loops[b];
            for (size_t i = 0; i < la.size(); ++i)
                for (size_t j = (a == b ? i + 1 : 0); j < lb.size(); ++j) {
                    if (a == b && (j == i + 1 || (i == 0 && j == la.size() - 1)))
                        continue;
                    if (segmentsTouch(la[i], la[(i + 1) % la.size()], lb[j],
                                      lb[(j + 1) % lb.size()], teps))
                        return {};
                }
        }
    // Holes lie inside the outer loop and outside each other.
    for (size_t h = 1; h < loops.size(); ++h) {
        if (!insideLoop(loops[0], loops[h][0]))
            return {};
        for (size_t g = 1; g < loops.size(); ++g)
            if (g != h && insideLoop(loops[g], loops[h][0]))
                return {};
    }
    return loops;
}

// ---- grid mesher for sections whose edges all run along the axes ----

bool isRectilinear(const std::vector<KwLoop>& loops, double eps)
{
    for (const KwLoop& l : loops)
        for (size_t i = 0; i < l.size(); ++i) {
            const Pt& a = l[i];
            const Pt& b = l[(i + 1) % l.size()];
            if (std::abs(a.x - b.x) > eps && std::abs(a.y - b.y) > eps)
                return false;
        }
    return true;
}

std::vector<double> gridLines(std::vector<double> v, double eps)
{
    std::sort(v.begin(), v.end());
    std::vector<double> out;
    for (double x : v)
        if (out.empty() || x - out.back() > eps)
            out.push_back(x);
    return out;
}

// Subdivides each interval, closer towards both ends (where corners are), at least twice.
void subdivide(const std::vector<double>& lines, double h, std::vector<double>& fine,
               std::vector<int>& coarseOf)
{
    fine.clear();
    coarseOf.clear();
    fine.push_back(lines[0]);
    for (size_t i = 0; i + 1 < lines.size(); ++i) {
        const double a = lines[i], b = lines[i + 1];
        const int n = std::clamp(static_cast<int>(std::ceil((b - a) / h)), 2, 400);
        for (int k = 1; k <= n; ++k) {
            const double t = (k == n) ? 1.0 : 0.5 * (1 - std::cos(M_PI * k / n));
            fine.push_back(a + (b - a) * t);
            coarseOf.push_back(static_cast<int>(i));
        }
    }
}

bool gridMesh(const std::vector<KwLoop>& loops, double area, int target, KwSectionMesh& mesh)
{
    const double scale = loopsScale(loops);
    std::vector<double> xs, ys;
    for (const KwLoop& l : loops)
        for (const Pt& p : l) {
            xs.push_back(p.x);
            ys.push_back(p.y);
        }
    xs = gridLines(xs, scale * 1e-9);
    ys = gridLines(ys, scale * 1e-9);
    const size_t cx = xs.size() - 1, cy = ys.size() - 1;
    std::vector<char> inside(cx * cy);
    for (size_t i = 0; i < cx; ++i)
        for (size_t j = 0; j < cy; ++j)
            inside[i * cy + j] =
                insideRegion(loops, Pt{(xs[i] + xs[i + 1]) / 2, (ys[j] + ys[j + 1]) / 2});
    const double h = std::sqrt(area / std::max(1, target / 2));
    std::vector<double> fx, fy;
    std::vector<int> ox, oy;
    subdivide(xs, h, fx, ox);
    subdivide(ys, h, fy, oy);
    const size_t nx = fx.size(), ny = fy.size();
    if (nx * ny > 4000000)
        return false;
    std::vector<int> id(nx * ny, -1);
    auto node = [&](size_t i, size_t j) {
        int& n = id[i * ny + j];
        if (n < 0) {
            n = static_cast<int>(mesh.nodes.size());
            mesh.nodes.push_back(Pt{fx[i], fy[j]});
        }
        return n;
    };
    for (size_t i = 0; i + 1 < nx; ++i)
        for (size_t j = 0; j + 1 < ny; ++j) {
            if (!inside[ox[i] * cy + oy[j]])
                continue;
            const int a = node(i, j), b = node(i + 1, j), c = node(i + 1, j + 1),
                      d = node(i, j + 1);
            mesh.triangles.push_back({a, b, c});
            mesh.triangles.push_back({a, c, d});
        }
    return !mesh.triangles.empty();
}

// ---- ear clipping with hole bridges, for any other section ----

bool segmentClear(const std::vector<KwLoop>& loops, const Pt& a, const Pt& b, double eps)
{
    for (const KwLoop& l : loops)
        for (size_t i = 0; i < l.size(); ++i) {
            const Pt& c = l[i];
            const Pt& d = l[(i + 1) % l.size()];
            auto same = [eps](const Pt& p, const Pt& q) {
                return std::abs(p.x - q.x) <= eps && std::abs(p.y - q.y) <= eps;
            };
            if (same(c, a) || same(d, a) || same(c, b) || same(d, b))
                continue;
            if (segmentsTouch(a, b, c, d, eps))
                return false;
        }
    return true;
}

bool earMesh(const std::vector<KwLoop>& loops, int target, KwSectionMesh& mesh)
{
    const double scale = loopsScale(loops);
    const double eps = scale * 1e-10;
    // Polygon as indices into mesh.nodes; bridged holes repeat two indices.
    for (const KwLoop& l : loops)
        for (const Pt& p : l)
            mesh.nodes.push_back(p);
    std::vector<int> poly;
    for (size_t i = 0; i < loops[0].size(); ++i)
        poly.push_back(static_cast<int>(i));
    std::vector<std::pair<double, size_t>> holes;
    std::vector<int> firstIndex(loops.size(), 0);
    for (size_t h = 1, base = loops[0].size(); h < loops.size(); base += loops[h].size(), ++h) {
        firstIndex[h] = static_cast<int>(base);
        double mx = -std::numeric_limits<double>::max();
        for (const Pt& p : loops[h])
            mx = std::max(mx, p.x);
        holes.push_back({mx, h});
    }
    std::sort(holes.begin(), holes.end(), [](auto& a, auto& b) { return a.first > b.first; });
    for (const auto& [mx, h] : holes) {
        const KwLoop& hole = loops[h];
        size_t m = 0;
        for (size_t i = 1; i < hole.size(); ++i)
            if (hole[i].x > hole[m].x)
                m = i;
        const Pt M = hole[m];
        int best = -1;
        double bestD = std::numeric_limits<double>::max();
        for (size_t k = 0; k < poly.size(); ++k) {
            const Pt& V = mesh.nodes[poly[k]];
            const double d = std::hypot(V.x - M.x, V.y - M.y);
            if (d >= bestD || d <= eps)
                continue;
            const Pt mid{(V.x + M.x) / 2, (V.y + M.y) / 2};
            if (!insideRegion(loops, mid) || !segmentClear(loops, M, V, eps))
                continue;
            best = static_cast<int>(k);
            bestD = d;
        }
        if (best < 0)
            return false;
        std::vector<int> merged(poly.begin(), poly.begin() + best + 1);
        for (size_t i = 0; i <= hole.size(); ++i)
            merged.push_back(firstIndex[h] + static_cast<int>((m + i) % hole.size()));
        merged.insert(merged.end(), poly.begin() + best, poly.end());
        poly = std::move(merged);
    }
    // Clip the best-shaped ear each time.
    auto quality = [&](int a, int b, int c) {
        const Pt &p = mesh.nodes[a], &q = mesh.nodes[b], &r = mesh.nodes[c];
        const double l2 = std::pow(q.x - p.x, 2) + std::pow(q.y - p.y, 2) +
                          std::pow(r.x - q.x, 2) + std::pow(r.y - q.y, 2) +
                          std::pow(p.x - r.x, 2) + std::pow(p.y - r.y, 2);
        return cross(p, q, r) / l2;
    };
    while (poly.size() > 3) {
        const size_t n = poly.size();
        int bestEar = -1;
        double bestQ = 0;
        for (size_t i = 0; i < n; ++i) {
            const int a = poly[(i + n - 1) % n], b = poly[i], c = poly[(i + 1) % n];
            const Pt &pa = mesh.nodes[a], &pb = mesh.nodes[b], &pc = mesh.nodes[c];
            if (cross(pa, pb, pc) <= eps * scale)
                continue;
            bool empty = true;
            for (size_t k = 0; k < n && empty; ++k) {
                const Pt& p = mesh.nodes[poly[k]];
                auto same = [eps](const Pt& u, const Pt& v) {
                    return std::abs(u.x - v.x) <= eps && std::abs(u.y - v.y) <= eps;
                };
                if (same(p, pa) || same(p, pb) || same(p, pc))
                    continue;
                if (cross(pa, pb, p) >= -eps * scale && cross(pb, pc, p) >= -eps * scale &&
                    cross(pc, pa, p) >= -eps * scale)
                    empty = false;
            }
            if (!empty)
                continue;
            const double q = quality(a, b, c);
            if (bestEar < 0 || q > bestQ) {
                bestEar = static_cast<int>(i);
                bestQ = q;
            }
        }
        if (bestEar < 0)
            return false;
        const size_t i = static_cast<size_t>(bestEar);
        mesh.triangles.push_back({poly[(i + n - 1) % n], poly[i], poly[(i + 1) % n]});
        poly.erase(poly.begin() + bestEar);
    }
    if (cross(mesh.nodes[poly[0]], mesh.nodes[poly[1]], mesh.nodes[poly[2]]) <= 0)
        return false;
    mesh.triangles.push_back({poly[0], poly[1], poly[2]});
    // Quarter every triangle until the mesh is fine enough.
    while (static_cast<int>(mesh.triangles.size()) * 2 < target) {
        std::map<std::pair<int, int>, int> mids;
        auto mid = [&](int a, int b) {
            const auto key = std::minmax(a, b);
            auto it = mids.find(key);
            if (it != mids.end())
                return it->second;
            const int id = static_cast<int>(mesh.nodes.size());
            mesh.nodes.push_back(Pt{(mesh.nodes[a].x + mesh.nodes[b].x) / 2,
                                    (mesh.nodes[a].y + mesh.nodes[b].y) / 2});
            mids.emplace(key, id);
            return id;
        };
        std::vector<std::array<int, 3>> next;
        next.reserve(mesh.triangles.size() * 4);
        for (const auto& t : mesh.triangles) {
            const int ab = mid(t[0], t[1]), bc = mid(t[1], t[2]), ca = mid(t[2], t[0]);
            next.push_back({t[0], ab, ca});
            next.push_back({ab, t[1], bc});
            next.push_back({ca, bc, t[2]});
            next.push_back({ab, bc, ca});
        }
        mesh.triangles = std::move(next);
    }
    return true;
}

// Six-point rule, exact for polynomials of degree four.
struct QPoint
{
    double l[3];
    double w;
};
constexpr QPoint kRule[6] = {
    {{0.108103018168070, 0.445948490915965, 0.445948490915965}, 0.223381589678011},
    {{0.445948490915965, 0.108103018168070, 0.445948490915965}, 0.223381589678011},
    {{0.445948490915965, 0.445948490915965, 0.108103018168070}, 0.223381589678011},
    {{0.816847572980459, 0.091576213509771, 0.091576213509771}, 0.109951743655322},
    {{0.091576213509771, 0.816847572980459, 0.091576213509771}, 0.109951743655322},
    {{0.091576213509771, 0.091576213509771, 0.816847572980459}, 0.109951743655322},
};

// Values and gradients of the six quadratic shape functions at one point of a triangle.
struct Shape
{
    double n[6];
    double dx[6];
    double dy[6];
};

Shape shapeAt(const double l[3], const double gx[3], const double gy[3])
{
    Shape s;
    for (int i = 0; i < 3; ++i) {
        s.n[i] = l[i] * (2 * l[i] - 1);
        s.dx[i] = (4 * l[i] - 1) * gx[i];
        s.dy[i] = (4 * l[i] - 1) * gy[i];
        const int j = (i + 1) % 3;
        s.n[3 + i] = 4 * l[i] * l[j];
        s.dx[3 + i] = 4 * (l[j] * gx[i] + l[i] * gx[j]);
        s.dy[3 + i] = 4 * (l[j] * gy[i] + l[i] * gy[j]);
    }
    return s;
}

} // namespace

bool KwCheckSectionLoops(const std::vector<KwLoop>& loops)
{
    return !normalised(loops).empty();
}

bool KwIntegratePolygons(const std::vector<KwLoop>& input, KwPolygonIntegrals& out)
{
    const std::vector<KwLoop> loops = normalised(input);
    if (loops.empty())
        return false;
    double a = 0, sx = 0, sy = 0, xx = 0, yy = 0, xy = 0;
    // Shift to the first point so large offsets do not eat the digits.
    const Pt o = loops[0][0];
    for (const KwLoop& l : loops)
        for (size_t i = 0, n = l.size(); i < n; ++i) {
            const double x0 = l[i].x - o.x, y0 = l[i].y - o.y;
            const double x1 = l[(i + 1) % n].x - o.x, y1 = l[(i + 1) % n].y - o.y;
            const double c = x0 * y1 - x1 * y0;
            a += c / 2;
            sx += (x0 + x1) * c / 6;
            sy += (y0 + y1) * c / 6;
            xx += (x0 * x0 + x0 * x1 + x1 * x1) * c / 12;
            yy += (y0 * y0 + y0 * y1 + y1 * y1) * c / 12;
            xy += (x0 * y1 + 2 * x0 * y0 + 2 * x1 * y1 + x1 * y0) * c / 24;
        }
    if (!(a > 0))
        return false;
    const double cx = sx / a, cy = sy / a;
    out.area = a;
    out.cx = cx + o.x;
    out.cy = cy + o.y;
    out.ixx = xx - a * cx * cx;
    out.iyy = yy - a * cy * cy;
    out.ixy = xy - a * cx * cy;
    return true;
}

bool KwMeshSection(const std::vector<KwLoop>& input, int target, KwSectionMesh& mesh)
{
    mesh = KwSectionMesh();
    const std::vector<KwLoop> loops = normalised(input);
    KwPolygonIntegrals ex;
    if (loops.empty() || !KwIntegratePolygons(loops, ex))
        return false;
    target = std::clamp(target, 8, 200000);
    const bool ok = isRectilinear(loops, loopsScale(loops) * 1e-12)
                        ? gridMesh(loops, ex.area, target, mesh)
                        : earMesh(loops, target, mesh);
    if (!ok)
        mesh = KwSectionMesh();
    return ok;
}

namespace {

// The solution on loops as given; the products of the shear factors reach the 16th power of
// the section's size, so the caller brings the section to unit size first.
bool solveAsGiven(const std::vector<KwLoop>& loops, KwSectionResult& out, int target)
{
    KwSectionResult r;
    KwSectionMesh mesh;
    if (!KwIntegratePolygons(loops, r.exact) || !KwMeshSection(loops, target, mesh))
        return false;
    const KwPolygonIntegrals& ex = r.exact;
    r.principalAngle = 0.5 * std::atan2(-2 * ex.ixy, ex.iyy - ex.ixx);

    // Centroidal coordinates, then a mid-side node on every edge.
    std::vector<Pt> nodes = mesh.nodes;
    for (Pt& p : nodes) {
        p.x -= ex.cx;
        p.y -= ex.cy;
    }
    std::map<std::pair<int, int>, int> mids;
    std::vector<std::array<int, 6>> elems;
    elems.reserve(mesh.triangles.size());
    for (const auto& t : mesh.triangles) {
        std::array<int, 6> e{t[0], t[1], t[2], 0, 0, 0};
        for (int i = 0; i < 3; ++i) {
            const auto key = std::minmax(t[i], t[(i + 1) % 3]);
            auto it = mids.find(key);
            if (it == mids.end()) {
                const int id = static_cast<int>(nodes.size());
                nodes.push_back(Pt{(nodes[key.first].x + nodes[key.second].x) / 2,
                                   (nodes[key.first].y + nodes[key.second].y) / 2});
                it = mids.emplace(key, id).first;
            }
            e[3 + i] = it->second;
        }
        elems.push_back(e);
    }
    const int n = static_cast<int>(nodes.size());
    r.nodes = n;
    r.elements = static_cast<int>(elems.size());

    // Laplacian; loads of the warping function (flux (y, -x) through the boundary) and of the
    // two shear functions (sources linear in x and y, no flux).
    std::vector<Eigen::Triplet<double>> trip;
    trip.reserve(elems.size() * 36);
    Eigen::MatrixXd rhs = Eigen::MatrixXd::Zero(n, 3);
    const double fpsi[2] = {2 * ex.ixy, -2 * ex.iyy}; // 2 (Ixy y - Ixx x), Ixx = int y^2
    const double fphi[2] = {-2 * ex.ixx, 2 * ex.ixy}; // 2 (Ixy x - Iyy y), Iyy = int x^2
    struct Geo
    {
        double area, gx[3], gy[3];
    };
    std::vector<Geo> geo(elems.size());
    for (size_t k = 0; k < elems.size(); ++k) {
        const auto& e = elems[k];
        const Pt &p1 = nodes[e[0]], &p2 = nodes[e[1]], &p3 = nodes[e[2]];
        const double twoA = cross(p1, p2, p3);
        if (!(twoA > 0))
            return false;
        Geo& g = geo[k];
        g.area = twoA / 2;
        g.gx[0] = (p2.y - p3.y) / twoA;
        g.gx[1] = (p3.y - p1.y) / twoA;
        g.gx[2] = (p1.y - p2.y) / twoA;
        g.gy[0] = (p3.x - p2.x) / twoA;
        g.gy[1] = (p1.x - p3.x) / twoA;
        g.gy[2] = (p2.x - p1.x) / twoA;
        double ke[6][6] = {};
        for (const QPoint& q : kRule) {
            const Shape s = shapeAt(q.l, g.gx, g.gy);
            const double x = q.l[0] * p1.x + q.l[1] * p2.x + q.l[2] * p3.x;
            const double y = q.l[0] * p1.y + q.l[1] * p2.y + q.l[2] * p3.y;
            const double w = q.w * g.area;
            for (int i = 0; i < 6; ++i) {
                for (int j = 0; j < 6; ++j)
                    ke[i][j] += w * (s.dx[i] * s.dx[j] + s.dy[i] * s.dy[j]);
                rhs(e[i], 0) += w * (y * s.dx[i] - x * s.dy[i]);
                rhs(e[i], 1) -= w * (fpsi[0] * y + fpsi[1] * x) * s.n[i];
                rhs(e[i], 2) -= w * (fphi[0] * y + fphi[1] * x) * s.n[i];
            }
        }
        for (int i = 0; i < 6; ++i)
            for (int j = 0; j < 6; ++j)
                if (e[i] != 0 && e[j] != 0)
                    trip.emplace_back(e[i], e[j], ke[i][j]);
    }
    // The functions are fixed up to a constant: hold node 0.
    trip.emplace_back(0, 0, 1.0);
    rhs.row(0).setZero();
    Eigen::SparseMatrix<double> K(n, n);
    K.setFromTriplets(trip.begin(), trip.end());
    Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>> solver(K);
    if (solver.info() != Eigen::Success)
        return false;
    const Eigen::MatrixXd u = solver.solve(rhs);
    if (solver.info() != Eigen::Success || !u.allFinite())
        return false;

    // Integrals of the solutions.
    double j = 0, iw = 0, iwx = 0, iwy = 0, kpsi = 0, kphi = 0;
    for (size_t k = 0; k < elems.size(); ++k) {
        const auto& e = elems[k];
        const Geo& g = geo[k];
        for (const QPoint& q : kRule) {
            const Shape s = shapeAt(q.l, g.gx, g.gy);
            double x = 0, y = 0, w0 = 0, wx = 0, wy = 0, px = 0, py = 0, fx = 0, fy = 0;
            for (int i = 0; i < 3; ++i) {
                x += q.l[i] * nodes[e[i]].x;
                y += q.l[i] * nodes[e[i]].y;
            }
            for (int i = 0; i < 6; ++i) {
                const double a = u(e[i], 0), b = u(e[i], 1), c = u(e[i], 2);
                w0 += s.n[i] * a;
                wx += s.dx[i] * a;
                wy += s.dy[i] * a;
                px += s.dx[i] * b;
                py += s.dy[i] * b;
                fx += s.dx[i] * c;
                fy += s.dy[i] * c;
            }
            const double w = q.w * g.area;
            j += w * (x * x + y * y + x * wy - y * wx);
            iw += w * w0;
            iwx += w * w0 * x;
            iwy += w * w0 * y;
            kpsi += w * (px * px + py * py);
            kphi += w * (fx * fx + fy * fy);
        }
    }
    const double det = ex.ixx * ex.iyy - ex.ixy * ex.ixy;
    if (!(det > 0) || !(kpsi > 0) || !(kphi > 0))
        return false;
    // Twist centre: the warping function about it is orthogonal to x and y.
    const double a = (ex.ixy * iwx - ex.ixx * iwy) / det;
    const double b = (ex.iyy * iwx - ex.ixy * iwy) / det;
    const double mean = iw / ex.area;
    double cw = 0;
    for (size_t k = 0; k < elems.size(); ++k) {
        const auto& e = elems[k];
        const Geo& g = geo[k];
        for (const QPoint& q : kRule) {
            const Shape s = shapeAt(q.l, g.gx, g.gy);
            double x = 0, y = 0, w0 = 0;
            for (int i = 0; i < 3; ++i) {
                x += q.l[i] * nodes[e[i]].x;
                y += q.l[i] * nodes[e[i]].y;
            }
            for (int i = 0; i < 6; ++i)
                w0 += s.n[i] * u(e[i], 0);
            const double ws = w0 - mean - b * x + a * y;
            cw += q.w * g.area * ws * ws;
        }
    }
    const double delta = 2 * det;
    r.torsion = j;
    r.shearFactorX = delta * delta / kpsi / ex.area;
    r.shearFactorY = delta * delta / kphi / ex.area;
    r.shearCenterX = ex.cx + a;
    r.shearCenterY = ex.cy + b;
    r.warping = cw;
    out = r;
    return true;
}

} // namespace

KwLoopBounds KwBoundsOfLoops(const std::vector<KwLoop>& loops)
{
    KwLoopBounds b;
    for (const KwLoop& l : loops)
        for (const Kw::Point& p : l) {
            b.x0 = std::min(b.x0, p.x);
            b.x1 = std::max(b.x1, p.x);
            b.y0 = std::min(b.y0, p.y);
            b.y1 = std::max(b.y1, p.y);
        }
    return b;
}

bool KwSolveSection(const std::vector<KwLoop>& loops, KwSectionResult& out, int target)
{
    // Solved at unit size and scaled back by the powers of length each value carries, so that
    // no intermediate over- or underflows; a section whose values cannot be represented has none.
    const KwLoopBounds box = KwBoundsOfLoops(loops);
    const double extent = box.Extent();
    if (!std::isfinite(extent) || !(extent > 0))
        return false;
    // A power of two: scaling is exact, so the mesh (and every tie the ear clipping breaks)
    // is the one of the section as given.
    const int e = std::ilogb(extent);
    const double down = std::ldexp(1.0, -e);
    std::vector<KwLoop> unit = loops;
    for (KwLoop& l : unit)
        for (Kw::Point& p : l)
            p = {p.x * down, p.y * down};
    KwSectionResult r;
    if (!solveAsGiven(unit, r, target))
        return false;
    const double size = std::ldexp(1.0, e), s2 = std::ldexp(1.0, 2 * e),
                 s4 = std::ldexp(1.0, 4 * e), s6 = std::ldexp(1.0, 6 * e);
    r.exact.area *= s2;
    r.exact.cx *= size;
    r.exact.cy *= size;
    r.exact.ixx *= s4;
    r.exact.iyy *= s4;
    r.exact.ixy *= s4;
    r.torsion *= s4;
    r.shearCenterX *= size;
    r.shearCenterY *= size;
    r.warping *= s6;
    const double all[] = {r.exact.area, r.exact.cx, r.exact.cy, r.exact.ixx, r.exact.iyy,
                          r.exact.ixy, r.principalAngle, r.torsion, r.shearFactorX,
                          r.shearFactorY, r.shearCenterX, r.shearCenterY, r.warping};
    for (double v : all)
        if (!std::isfinite(v))
            return false;
    if (!(r.exact.area > 0) || !(r.exact.ixx > 0) || !(r.exact.iyy > 0))
        return false;
    out = r;
    return true;
}
