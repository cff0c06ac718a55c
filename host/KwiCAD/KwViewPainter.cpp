#include "KwViewPainter.h"

#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMeshModel.h"
#include "CKwRestraint.h"
#include "CKwUIEntity.h"
#include "KwMeshTopology.h"
#include "KwSolverDeck.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const QRgb kBackTop = qRgb(0xee, 0xf2, 0xf7);
const QRgb kBackBottom = qRgb(0xb9, 0xc7, 0xd6);
const QRgb kSolid = qRgb(0xb8, 0xc4, 0xcf);
const QRgb kShellFront = qRgb(0x8c, 0xb8, 0xd8);
const QRgb kShellBack = qRgb(0xc9, 0xa2, 0x7c);
const QRgb kCap = qRgb(0xc0, 0x6a, 0x5a);
const QRgb kMeshEdge = qRgb(0x3a, 0x44, 0x50);
const QRgb kFeatureEdge = qRgb(0x10, 0x16, 0x1e);
const QRgb kBeam = qRgb(0x6c, 0x34, 0x83);
const QRgb kPicked = qRgb(0xff, 0x8a, 0x00);
const QRgb kMarked = qRgb(0xe0, 0x3c, 0x28);
const QRgb kOutline = qRgb(0x8a, 0x96, 0xa3);

QColor fromBgr(unsigned bgr)
{
    return QColor(int(bgr & 0xff), int((bgr >> 8) & 0xff), int((bgr >> 16) & 0xff));
}

QRgb shade(QRgb c, float light)
{
    return qRgb(std::min(255, int(float(qRed(c)) * light)),
                std::min(255, int(float(qGreen(c)) * light)),
                std::min(255, int(float(qBlue(c)) * light)));
}

// Light from over the viewer's left shoulder; ambient keeps faces turned away readable.
float lightOf(const KwViewCamera& cam, double nx, double ny, double nz)
{
    const KwVec3 v = cam.ToView({nx, ny, nz});
    const double l = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    if (!(l > 0))
        return 0.8f;
    static const double L[3] = {-0.2 / 0.99745, 0.3 / 0.99745, 0.93 / 0.99745};
    const double d = std::fabs(v.x * L[0] + v.y * L[1] + v.z * L[2]) / l;
    return float(0.45 + 0.55 * d);
}

QRgb mapColour(KwResultDisplay::ColorMap map, double t)
{
    t = std::clamp(t, 0.0, 1.0);
    switch (map) {
    case KwResultDisplay::Grayscale: {
        const int g = int(40 + 200 * t);
        return qRgb(g, g, g);
    }
    case KwResultDisplay::Thermal: {
        const double r = std::clamp(3 * t, 0.0, 1.0), g = std::clamp(3 * t - 1, 0.0, 1.0),
                     b = std::clamp(3 * t - 2, 0.0, 1.0);
        return qRgb(int(255 * r), int(255 * g), int(255 * b));
    }
    case KwResultDisplay::Rainbow:
    default: {
        // Blue through cyan, green and yellow to red.
        const double h = (1.0 - t) * 240.0;
        return QColor::fromHsvF(float(h / 360.0), 0.85f, 0.95f).rgb();
    }
    }
}

} // namespace

bool KwResultRange(const KwResultDisplay& d, double* lo, double* hi)
{
    if (d.fixedRange && std::isfinite(d.rangeMin) && std::isfinite(d.rangeMax) &&
        d.rangeMax >= d.rangeMin) {
        *lo = d.rangeMin;
        *hi = d.rangeMax;
        return true;
    }
    const auto& v = d.nodalValues.empty() ? d.elementValues : d.nodalValues;
    double a = std::numeric_limits<double>::infinity(), b = -a;
    for (float x : v)
        if (std::isfinite(x)) {
            a = std::min(a, double(x));
            b = std::max(b, double(x));
        }
    if (a > b)
        return false;
    *lo = a;
    *hi = b;
    return true;
}

std::vector<QRgb> KwResultColours(const KwResultDisplay& d)
{
    const int n = d.contour == KwResultDisplay::ContourSmooth ? 256 : std::clamp(d.bands, 2, 64);
    std::vector<QRgb> out(std::size_t(n), 0);
    for (int i = 0; i < n; ++i)
        out[std::size_t(i)] = mapColour(d.colorMap, n == 1 ? 0.5 : double(i) / double(n - 1));
    return out;
}

double KwViewPainter::LineBias(const KwViewCamera& camera) const
{
    const double diag = std::sqrt((scene.hi.x - scene.lo.x) * (scene.hi.x - scene.lo.x) +
                                  (scene.hi.y - scene.lo.y) * (scene.hi.y - scene.lo.y) +
                                  (scene.hi.z - scene.lo.z) * (scene.hi.z - scene.lo.z));
    return 3.0 / camera.Scale() + 1e-3 * diag;
}

void KwViewPainter::positions(const KwViewFrame& f)
{
    const auto& nodes = scene.mesh->Nodes();
    wx.resize(nodes.size());
    wy.resize(nodes.size());
    wz.resize(nodes.size());
    const std::vector<float>* disp = nullptr;
    if (f.result && f.result->active && f.deformFactor != 0 &&
        f.result->displacement.size() >= 3 * nodes.size())
        disp = &f.result->displacement;
    for (int n : scene.surfaceNodes) {
        const auto& p = nodes[std::size_t(n)];
        double x = p.x, y = p.y, z = p.z;
        if (disp) {
            const float* d = &(*disp)[3 * std::size_t(n)];
            if (std::isfinite(d[0]) && std::isfinite(d[1]) && std::isfinite(d[2])) {
                x += f.deformFactor * d[0];
                y += f.deformFactor * d[1];
                z += f.deformFactor * d[2];
            }
        }
        wx[std::size_t(n)] = x;
        wy[std::size_t(n)] = y;
        wz[std::size_t(n)] = z;
    }
}

void KwViewPainter::project(const KwViewFrame& f, const KwViewCamera& cam)
{
    const std::size_t count = scene.mesh->Nodes().size();
    sx.resize(count);
    sy.resize(count);
    sz.resize(count);
    clip.resize(count);
    bool section = f.result && f.result->active && f.result->sectionOn;
    double nrm[3] = {0, 0, 0}, p0[3] = {0, 0, 0};
    if (section) {
        const double* n = f.result->sectionNormal;
        const double l = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        // A plane without a direction cuts nothing.
        section = l > 0 && std::isfinite(l);
        for (int k = 0; k < 3 && section; ++k) {
            nrm[k] = n[k] / l;
            p0[k] = std::isfinite(f.result->sectionPoint[k]) ? f.result->sectionPoint[k] : 0.0;
        }
    }
    for (int n : scene.surfaceNodes) {
        const std::size_t i = std::size_t(n);
        const auto q = cam.Project(wx[i], wy[i], wz[i]);
        sx[i] = q.x;
        sy[i] = q.y;
        sz[i] = q.depth;
        clip[i] = section ? float((wx[i] - p0[0]) * nrm[0] + (wy[i] - p0[1]) * nrm[1] +
                                  (wz[i] - p0[2]) * nrm[2])
                          : -1.f;
    }
}

KwRasterVertex KwViewPainter::vertex(int n) const
{
    KwRasterVertex v;
    const std::size_t i = std::size_t(n);
    v.x = sx[i];
    v.y = sy[i];
    v.z = sz[i];
    v.clip = clip[i];
    return v;
}

void KwViewPainter::drawSurfaces(const KwViewFrame& f, const KwViewCamera& cam, KwRaster& r,
                                 bool forPick, float ss)
{
    const KwResultDisplay* res = f.result && f.result->active ? f.result : nullptr;
    const bool section = res && res->sectionOn;
    r.SetClipping(section);
    // Contour: values to a 0..1 position in the colour table.
    bool contour = false;
    double lo = 0, hi = 1;
    const bool nodal = res && !res->nodalValues.empty();
    if (!forPick && res && res->contour != KwResultDisplay::ContourNone &&
        KwResultRange(*res, &lo, &hi)) {
        contour = nodal ? res->nodalValues.size() >= scene.mesh->Nodes().size()
                        : res->elementValues.size() >= scene.mesh->ElementCount();
    }
    const double span = hi > lo ? hi - lo : 1.0;
    auto position = [&](float v) {
        if (!std::isfinite(v))
            return -1.f;
        return hi > lo ? float(std::clamp((double(v) - lo) / span, 0.0, 1.0)) : 0.5f;
    };
    if (contour) {
        r.SetShading(KwRaster::ShadeTable);
        r.SetColourTable(KwResultColours(*res));
    }
    const float shellLift = float(0.3 * (LineBias(cam) + 3.0 * (ss - 1) / cam.Scale()));
    const bool showNormals = f.direction && f.direction->showNormals;
    const QRgb front = showNormals ? f.direction->frontColor.rgb() : kShellFront;
    const QRgb back = showNormals ? f.direction->backColor.rgb() : kShellBack;
    for (std::size_t t = 0; t < scene.tris.size(); ++t) {
        const KwViewScene::Tri& tri = scene.tris[t];
        if (tri.solid && f.solidsHidden)
            continue;
        KwRasterVertex v[3] = {vertex(tri.n[0]), vertex(tri.n[1]), vertex(tri.n[2])};
        // Shells lying on a solid's face are drawn on it, a little nearer than the skin.
        if (!tri.solid)
            for (auto& vv : v)
                vv.z -= shellLift;
        const float area = KwRaster::SignedArea(v[0], v[1], v[2]);
        const bool facing = area > 0;
        // The skin of a solid is closed: its back faces only show through a section, as the cut.
        if (tri.solid && !facing && !section)
            continue;
        if (forPick) {
            if (tri.solid && !facing)
                continue;
            r.FillTriangle(v[0], v[1], v[2], uint32_t(t) + 1);
            continue;
        }
        // Flat light from the drawn (possibly deformed) triangle.
        const std::size_t a = std::size_t(tri.n[0]), b = std::size_t(tri.n[1]),
                          c = std::size_t(tri.n[2]);
        const double ux = wx[b] - wx[a], uy = wy[b] - wy[a], uz = wz[b] - wz[a];
        const double vx = wx[c] - wx[a], vy = wy[c] - wy[a], vz = wz[c] - wz[a];
        const float flat = lightOf(cam, uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx);
        float light[3] = {flat, flat, flat};
        if (f.smooth && f.deformFactor == 0)
            for (int k = 0; k < 3; ++k) {
                const float* nn = &scene.nodeNormal[3 * std::size_t(tri.n[k])];
                light[k] = lightOf(cam, nn[0], nn[1], nn[2]);
            }
        const bool picked = (tri.face >= 0 && !f.pickedFaces.empty() &&
                             f.pickedFaces[std::size_t(tri.face)]) ||
                            (!f.pickedElements.empty() && f.pickedElements[std::size_t(tri.element)]) ||
                            (tri.solid && f.pickedBody);
        const bool marked = !f.markedElements.empty() && f.markedElements[std::size_t(tri.element)];
        if (tri.solid && !facing) { // looking into the cut
            r.SetShading(KwRaster::ShadeColour);
            for (auto& vv : v) {
                vv.a[0] = float(qRed(kCap));
                vv.a[1] = float(qGreen(kCap));
                vv.a[2] = float(qBlue(kCap));
            }
            r.FillTriangle(v[0], v[1], v[2]);
            if (contour)
                r.SetShading(KwRaster::ShadeTable);
            continue;
        }
        if (contour && !picked && !marked) {
            for (int k = 0; k < 3; ++k) {
                v[k].a[0] = nodal ? position(res->nodalValues[std::size_t(tri.n[k])])
                                  : position(res->elementValues[std::size_t(tri.element)]);
                v[k].a[1] = light[k];
            }
            r.FillTriangle(v[0], v[1], v[2]);
            continue;
        }
        QRgb base = tri.solid ? kSolid : (facing ? front : back);
        if (marked)
            base = kMarked;
        if (picked)
            base = kPicked;
        r.SetShading(KwRaster::ShadeColour);
        for (int k = 0; k < 3; ++k) {
            const QRgb c2 = shade(base, light[k]);
            v[k].a[0] = float(qRed(c2));
            v[k].a[1] = float(qGreen(c2));
            v[k].a[2] = float(qBlue(c2));
        }
        r.FillTriangle(v[0], v[1], v[2]);
        if (contour)
            r.SetShading(KwRaster::ShadeTable);
    }
    r.SetShading(KwRaster::ShadeColour);
}

void KwViewPainter::drawLinesAndMarks(const KwViewFrame& f, const KwViewCamera& cam,
                                      KwRaster& r, float ss)
{
    const CKwMeshModel& mesh = *scene.mesh;
    // The camera is scaled by ss: three of the view's pixels are 3 ss of its own.
    const double bias = LineBias(cam) + 3.0 * (ss - 1) / cam.Scale();
    const KwResultDisplay* res = f.result && f.result->active ? f.result : nullptr;
    const bool meshEdges = f.showMeshEdges && (!res || res->showMeshEdges);
    auto line = [&](int a, int b, QRgb c, float w) {
        r.DrawLine(vertex(a), vertex(b), c, w, float(bias));
    };
    if (meshEdges && !f.solidsHidden)
        for (const auto& e : scene.meshEdges)
            line(e[0], e[1], kMeshEdge, ss);
    // Feature edges of the solids come first in the list; while the solids are hidden their
    // outline stays, dimmed.
    const std::size_t solidFeatures = scene.solidFeatureEdges.size();
    for (std::size_t i = 0; i < scene.featureEdges.size(); ++i) {
        const auto& e = scene.featureEdges[i];
        const bool ofSolid = i < solidFeatures;
        r.DrawLine(vertex(e[0]), vertex(e[1]), ofSolid && f.solidsHidden ? kOutline : kFeatureEdge,
                   1.5f * ss, float(bias));
    }
    if (!f.membersHidden)
        for (std::size_t i = 0; i < scene.beams.size(); ++i) {
            const auto& b = scene.beams[i];
            QRgb c = kBeam;
            if (!f.markedElements.empty() && f.markedElements[std::size_t(b.element)])
                c = kMarked;
            if (!f.pickedElements.empty() && f.pickedElements[std::size_t(b.element)])
                c = kPicked;
            line(b.n[0], b.n[1], c, 3.5f * ss);
        }
    // The picked geometry edges and vertices.
    if (!f.pickedEdges.empty())
        for (const auto& s : scene.segments)
            if (f.pickedEdges[std::size_t(s.edge)])
                line(s.n[0], s.n[1], kPicked, 4 * ss);
    if (!f.pickedVertices.empty())
        for (std::size_t i = 0; i < scene.vertices.size(); ++i)
            if (f.pickedVertices[i]) {
                const int n = scene.vertices[i].node;
                r.DrawDot(sx[std::size_t(n)], sy[std::size_t(n)], sz[std::size_t(n)], 5 * ss,
                          kPicked, float(bias));
            }
    // Marked elements that lie inside: their edges show through the skin.
    if (!f.markedElements.empty()) {
        r.SetDepthTest(false);
        for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
            if (!f.markedElements[e])
                continue;
            const auto conn = mesh.ElementNodes(e);
            const int type = mesh.ElementType(e);
            auto drawn = [&](int n) { return sx.size() > std::size_t(n) && std::binary_search(scene.surfaceNodes.begin(), scene.surfaceNodes.end(), n); };
            for (const auto& face : KwSolidFaceCorners(type))
                for (std::size_t k = 0; k < face.size(); ++k) {
                    const int a = conn[std::size_t(face[k])], b = conn[std::size_t(face[(k + 1) % face.size()])];
                    if (drawn(a) && drawn(b))
                        line(a, b, kMarked, 1.5f * ss);
                }
        }
        r.SetDepthTest(true);
    }
    // Nodes: while nodes are picked, the marked ones and the picked ones.
    const float dot = 1.6f * ss;
    if (f.showNodes)
        for (int n : scene.surfaceNodes)
            r.DrawDot(sx[std::size_t(n)], sy[std::size_t(n)], sz[std::size_t(n)], dot,
                      kFeatureEdge, float(bias));
    auto dots = [&](const std::vector<char>& set, QRgb c, float radius) {
        if (set.empty())
            return;
        for (int n : scene.surfaceNodes)
            if (set[std::size_t(n)])
                r.DrawDot(sx[std::size_t(n)], sy[std::size_t(n)], sz[std::size_t(n)], radius, c,
                          float(bias));
    };
    dots(f.markedNodes, kMarked, 3.5f * ss);
    dots(f.pickedNodes, kPicked, 4 * ss);

    if (!res)
        return;
    // The undeformed outline under a deformed shape.
    if (f.deformFactor != 0 && res->showUndeformedOutline) {
        r.SetDepthTest(false);
        r.SetDepthWrite(false);
        const auto& nodes = mesh.Nodes();
        for (const auto& e : scene.featureEdges) {
            const auto& a = nodes[std::size_t(e[0])];
            const auto& b = nodes[std::size_t(e[1])];
            const auto pa = cam.Project(a.x, a.y, a.z), pb = cam.Project(b.x, b.y, b.z);
            KwRasterVertex va, vb;
            va.x = pa.x;
            va.y = pa.y;
            vb.x = pb.x;
            vb.y = pb.y;
            r.DrawLine(va, vb, kOutline, ss, 0);
        }
        r.SetDepthWrite(true);
        r.SetDepthTest(true);
    }
    // Vectors from the drawn nodes, at most a few thousand.
    if (res->vectors.size() >= 3 * mesh.Nodes().size() && !scene.surfaceNodes.empty()) {
        double maxLen = 0;
        for (int n : scene.surfaceNodes) {
            const float* v = &res->vectors[3 * std::size_t(n)];
            const double l = std::sqrt(double(v[0]) * v[0] + double(v[1]) * v[1] + double(v[2]) * v[2]);
            if (std::isfinite(l))
                maxLen = std::max(maxLen, l);
        }
        const double diag = std::sqrt((scene.hi.x - scene.lo.x) * (scene.hi.x - scene.lo.x) +
                                      (scene.hi.y - scene.lo.y) * (scene.hi.y - scene.lo.y) +
                                      (scene.hi.z - scene.lo.z) * (scene.hi.z - scene.lo.z));
        const double longest = 0.1 * diag * res->vectorSize;
        const std::size_t stride = std::max<std::size_t>(1, scene.surfaceNodes.size() / 3000);
        KwResultDisplay colours = *res;
        colours.contour = KwResultDisplay::ContourSmooth;
        const auto table = KwResultColours(colours);
        for (std::size_t k = 0; k < scene.surfaceNodes.size() && maxLen > 0; k += stride) {
            const int n = scene.surfaceNodes[k];
            const std::size_t i = std::size_t(n);
            const float* v = &res->vectors[3 * i];
            const double l = std::sqrt(double(v[0]) * v[0] + double(v[1]) * v[1] + double(v[2]) * v[2]);
            if (!(l > 0) || !std::isfinite(l))
                continue;
            const double len = res->vectorsByMagnitude ? longest * l / maxLen : longest;
            const auto tip = cam.Project(wx[i] + v[0] / l * len, wy[i] + v[1] / l * len,
                                         wz[i] + v[2] / l * len);
            KwRasterVertex a = vertex(n), b;
            b.x = tip.x;
            b.y = tip.y;
            b.z = tip.depth;
            b.clip = a.clip;
            const QRgb c = table[std::size_t(std::clamp(int(255 * l / maxLen), 0, 255))];
            r.DrawLine(a, b, c, 1.5f * ss, float(bias));
            // Head: two short strokes back from the tip.
            const float dx = b.x - a.x, dy = b.y - a.y;
            const float sl = std::sqrt(dx * dx + dy * dy);
            if (sl > 4 * ss) {
                const float hx = dx / sl * 5 * ss, hy = dy / sl * 5 * ss;
                for (int side : {-1, 1}) {
                    KwRasterVertex h = b;
                    h.x = b.x - hx - float(side) * hy * 0.6f;
                    h.y = b.y - hy + float(side) * hx * 0.6f;
                    r.DrawLine(b, h, c, 1.5f * ss, float(bias));
                }
            }
        }
    }
    // The outline of the cut: where the skin crosses the section plane.
    if (res->sectionOn && res->sectionCap) {
        r.SetClipping(false);
        for (const auto& tri : scene.tris) {
            if (!tri.solid)
                continue;
            KwRasterVertex pts[2];
            int found = 0;
            for (int k = 0; k < 3 && found < 2; ++k) {
                const KwRasterVertex a = vertex(tri.n[k]), b = vertex(tri.n[(k + 1) % 3]);
                if ((a.clip > 0) == (b.clip > 0))
                    continue;
                const float t = a.clip / (a.clip - b.clip);
                KwRasterVertex p;
                p.x = a.x + t * (b.x - a.x);
                p.y = a.y + t * (b.y - a.y);
                p.z = a.z + t * (b.z - a.z);
                pts[found++] = p;
            }
            if (found == 2)
                r.DrawLine(pts[0], pts[1], kFeatureEdge, 1.5f * ss, float(bias));
        }
    }
}

void KwViewPainter::paintSymbols(const KwViewFrame& f, const KwViewCamera& cam, QPainter& p,
                                 int ss)
{
    if (!f.model || !f.showSymbols)
        return;
    const CKwMeshModel& mesh = *scene.mesh;
    // Symbols stand where their nodes are in sight: the picture's depth decides.
    const float bias = float(LineBias(cam));
    auto visible = [&](int n) {
        const std::size_t i = std::size_t(n);
        const int px = int(std::floor(sx[i])), py = int(std::floor(sy[i]));
        float deepest = -std::numeric_limits<float>::infinity();
        for (int dy = -ss; dy <= ss; ++dy)
            for (int dx = -ss; dx <= ss; ++dx)
                if (picture.Inside(px + dx, py + dy))
                    deepest = std::max(deepest, picture.DepthAt(px + dx, py + dy));
        return sz[i] - bias <= deepest;
    };
    auto nodesOf = [&](const QList<CKwUIEntity*>& entities, int density) {
        std::vector<int> out;
        for (const CKwUIEntity* e : entities) {
            if (!e)
                continue;
            std::vector<int> ids = KwGeometryNodes(mesh, *e);
            // Symbols thin out on large faces: `density` is about how many an entity shows.
            const std::size_t most = std::size_t(std::max(1, density));
            const std::size_t stride = std::max<std::size_t>(1, (ids.size() + most - 1) / most);
            for (std::size_t k = 0; k < ids.size(); k += stride) {
                const int n = mesh.NodeIndex(ids[k]);
                if (n >= 0 && std::size_t(n) < sx.size() &&
                    std::binary_search(scene.surfaceNodes.begin(), scene.surfaceNodes.end(), n) &&
                    visible(n))
                    out.push_back(n);
            }
        }
        return out;
    };
    auto screenDir = [&](double x, double y, double z) {
        const KwVec3 v = cam.ToView({x, y, z});
        QPointF d(v.x, -v.y);
        const double l = std::hypot(d.x(), d.y());
        return l > 1e-9 ? d / l : QPointF(0, 1);
    };
    p.setRenderHint(QPainter::Antialiasing);
    for (const CKwRestraint* rs : f.model->m_restraints) {
        const QColor c = fromBgr(rs->m_color);
        const double size = 2.2 * std::clamp(rs->m_size, 1, 20);
        p.setPen(QPen(c.darker(140), 1));
        p.setBrush(c);
        for (int n : nodesOf(rs->m_entities, rs->m_density)) {
            const float* nn = &scene.nodeNormal[3 * std::size_t(n)];
            const QPointF at(sx[std::size_t(n)] / ss, sy[std::size_t(n)] / ss);
            QPointF d = screenDir(nn[0], nn[1], nn[2]);
            const QPointF side(-d.y(), d.x());
            QPolygonF tri;
            tri << at << at + d * size + side * size * 0.55 << at + d * size - side * size * 0.55;
            p.drawPolygon(tri);
        }
    }
    for (const CKwLoad* ld : f.model->m_loads) {
        const QColor c = fromBgr(ld->m_color);
        const double size = 4.0 * std::clamp(ld->m_size, 1, 20);
        p.setPen(QPen(c, 1.6));
        p.setBrush(c);
        const bool normal = ld->m_type == CKwLoad::Pressure || ld->m_type == CKwLoad::HeatFlux ||
                            ld->m_type == CKwLoad::Convection;
        for (int n : nodesOf(ld->m_entities, ld->m_density)) {
            const float* nn = &scene.nodeNormal[3 * std::size_t(n)];
            const QPointF d = normal ? -screenDir(nn[0], nn[1], nn[2])
                                     : screenDir(ld->m_direction[0], ld->m_direction[1],
                                                 ld->m_direction[2]);
            const QPointF tip(sx[std::size_t(n)] / ss, sy[std::size_t(n)] / ss);
            const QPointF tail = tip - d * size;
            p.drawLine(tail, tip - d * 4);
            const QPointF side(-d.y(), d.x());
            QPolygonF head;
            head << tip << tip - d * 7 + side * 3.2 << tip - d * 7 - side * 3.2;
            p.drawPolygon(head);
        }
    }
}

void KwViewPainter::paintOverlay(const KwViewFrame& f, const KwViewCamera& cam, QPainter& p)
{
    p.setRenderHint(QPainter::Antialiasing);
    // Direction marks of the mesh tools.
    const CKwMeshModel& mesh = *scene.mesh;
    if (f.direction && ((f.direction->showNormals && f.direction->showNormalVectors) ||
                        f.direction->showBeamDirections)) {
        auto arrow = [&](QPointF a, QPointF b, const QColor& c) {
            p.setPen(QPen(c, 1.6));
            p.drawLine(a, b);
            const QPointF d = b - a;
            const double l = std::hypot(d.x(), d.y());
            if (l < 3)
                return;
            const QPointF u = d / l, s(-u.y(), u.x());
            QPolygonF head;
            head << b << b - u * 7 + s * 3 << b - u * 7 - s * 3;
            p.setBrush(c);
            p.drawPolygon(head);
        };
        if (f.direction->showNormals && f.direction->showNormalVectors) {
            const double len = std::max(1e-12, f.direction->normalSize * scene.elementSize / 3.0);
            for (const auto& tri : scene.tris) {
                if (tri.solid)
                    continue;
                // One arrow per shell element: at its first triangle.
                const auto conn = mesh.ElementNodes(std::size_t(tri.element));
                if (tri.n[0] != conn[0] || tri.n[1] != conn[1])
                    continue;
                double c[3] = {0, 0, 0};
                const int corners = CKwMeshModel::CornerCount(mesh.ElementType(std::size_t(tri.element)));
                for (int k = 0; k < corners; ++k) {
                    const std::size_t i = std::size_t(conn[std::size_t(k)]);
                    c[0] += wx[i] / corners;
                    c[1] += wy[i] / corners;
                    c[2] += wz[i] / corners;
                }
                const std::size_t a = std::size_t(tri.n[0]), b = std::size_t(tri.n[1]),
                                  d = std::size_t(tri.n[2]);
                double n[3] = {(wy[b] - wy[a]) * (wz[d] - wz[a]) - (wz[b] - wz[a]) * (wy[d] - wy[a]),
                               (wz[b] - wz[a]) * (wx[d] - wx[a]) - (wx[b] - wx[a]) * (wz[d] - wz[a]),
                               (wx[b] - wx[a]) * (wy[d] - wy[a]) - (wy[b] - wy[a]) * (wx[d] - wx[a])};
                const double l = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
                if (!(l > 0))
                    continue;
                const auto p0 = cam.Project(c[0], c[1], c[2]);
                const auto p1 = cam.Project(c[0] + n[0] / l * len, c[1] + n[1] / l * len,
                                            c[2] + n[2] / l * len);
                QPointF tip(p1.x, p1.y);
                // Never shorter than a readable arrow.
                const QPointF d0 = tip - QPointF(p0.x, p0.y);
                const double sl = std::hypot(d0.x(), d0.y());
                if (sl < 10 && sl > 1e-9)
                    tip = QPointF(p0.x, p0.y) + d0 * (10 / sl);
                arrow(QPointF(p0.x, p0.y), tip, f.direction->normalColor);
            }
        }
        if (f.direction->showBeamDirections && !f.membersHidden)
            for (const auto& b : scene.beams) {
                const std::size_t i = std::size_t(b.n[0]), j = std::size_t(b.n[1]);
                const QPointF a(sx[i], sy[i]), c(sx[j], sy[j]);
                const QPointF mid = (a + c) / 2;
                const QPointF d = c - a;
                const double l = std::hypot(d.x(), d.y());
                if (l < 1e-9)
                    continue;
                const double len = std::max(12.0, 0.35 * l * f.direction->arrowSize);
                arrow(mid - d / l * len / 2, mid + d / l * len / 2, f.direction->arrowColor);
            }
    }

    // Axis triad in the lower left corner.
    const QPointF origin(42, cam.Height() - 42);
    const struct
    {
        KwVec3 axis;
        QColor colour;
        const char* name;
    } axes[] = {{{1, 0, 0}, QColor(0xc0, 0x39, 0x2b), "X"},
                {{0, 1, 0}, QColor(0x27, 0xae, 0x60), "Y"},
                {{0, 0, 1}, QColor(0x29, 0x6f, 0xc8), "Z"}};
    QFont small = p.font();
    small.setBold(true);
    p.setFont(small);
    for (const auto& a : axes) {
        const KwVec3 v = cam.ToView(a.axis);
        const QPointF tip = origin + QPointF(v.x, -v.y) * 30;
        p.setPen(QPen(a.colour, 2.2, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(origin, tip);
        const QPointF label = origin + QPointF(v.x, -v.y) * 40;
        p.drawText(QRectF(label.x() - 8, label.y() - 8, 16, 16), Qt::AlignCenter,
                   QString::fromLatin1(a.name));
    }

    // The legend of a contour: title with unit, bands from the maximum down, their limits.
    const KwResultDisplay* res = f.result && f.result->active ? f.result : nullptr;
    double lo = 0, hi = 0;
    if (res && res->contour != KwResultDisplay::ContourNone && res->showLegend &&
        KwResultRange(*res, &lo, &hi)) {
        const auto colours = KwResultColours(*res);
        const bool banded = res->contour == KwResultDisplay::ContourBanded;
        const int bands = banded ? int(colours.size()) : 10;
        const int barW = 22, bandH = std::clamp(240 / bands, 12, 24);
        QFont font = p.font();
        font.setBold(false);
        p.setFont(font);
        const QFontMetrics fm(font);
        const int left = 14;
        int top = 14;
        QString title = res->title;
        if (!res->unitLabel.isEmpty())
            title += QStringLiteral(" (%1)").arg(res->unitLabel);
        QFont bold = font;
        bold.setBold(true);
        p.setFont(bold);
        p.setPen(QColor(0x1b, 0x26, 0x31));
        if (!title.isEmpty()) {
            p.drawText(QPointF(left, top + fm.ascent()), title);
            top += fm.height() + 6;
        }
        p.setFont(font);
        const int h = bandH * bands;
        if (banded) {
            for (int b = 0; b < bands; ++b)
                p.fillRect(QRect(left, top + h - (b + 1) * bandH, barW, bandH),
                           QColor(colours[std::size_t(b)]));
        } else {
            for (int y = 0; y < h; ++y) {
                const int k = std::clamp(int(255.0 * (h - 1 - y) / std::max(1, h - 1)), 0, 255);
                p.fillRect(QRect(left, top + y, barW, 1), QColor(colours[std::size_t(k)]));
            }
        }
        p.setPen(QColor(0x2c, 0x3e, 0x50));
        p.setBrush(Qt::NoBrush);
        p.drawRect(QRect(left, top, barW, h));
        for (int b = 0; b <= bands; ++b) {
            const double v = lo + (hi - lo) * double(b) / double(bands);
            const int y = top + h - b * bandH;
            p.drawLine(left + barW, y, left + barW + 4, y);
            p.drawText(QPointF(left + barW + 7, y + fm.ascent() / 2 - 1),
                       QString::number(v, 'g', 4));
        }
    }
}

void KwViewPainter::RenderPick(const KwViewFrame& f, const KwViewCamera& cam)
{
    positions(f);
    project(f, cam);
    pick.Resize(cam.Width(), cam.Height(), false);
    pick.SetWriteIds(true);
    pick.Clear(0, 0);
    drawSurfaces(f, cam, pick, true, 1);
    const float bias = float(LineBias(cam));
    if (!f.membersHidden)
        for (std::size_t i = 0; i < scene.beams.size(); ++i)
            pick.DrawLine(vertex(scene.beams[i].n[0]), vertex(scene.beams[i].n[1]), 0, 5, bias,
                          BeamTag | uint32_t(i));
    // Geometry edges over the same depth, without changing it.
    pickBias = bias;
    pickEdges = pick;
    pickEdges.ClearIds();
    pickEdges.SetWriteIds(true);
    pickEdges.SetDepthWrite(false);
    for (const auto& s : scene.segments)
        pickEdges.DrawLine(vertex(s.n[0]), vertex(s.n[1]), 0, 1, bias, uint32_t(s.edge) + 1);
}

bool KwViewPainter::NodeVisible(int n) const
{
    const std::size_t i = std::size_t(n);
    if (i >= sx.size() || pick.Width() <= 0)
        return false;
    if (clip[i] > 0)
        return false;
    const int px = int(std::floor(sx[i])), py = int(std::floor(sy[i]));
    float deepest = -std::numeric_limits<float>::infinity();
    bool any = false;
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if (pick.Inside(px + dx, py + dy)) {
                deepest = std::max(deepest, pick.DepthAt(px + dx, py + dy));
                any = true;
            }
    return any && sz[i] - pickBias <= deepest;
}

QImage KwViewPainter::Render(const KwViewFrame& f, const KwViewCamera& camera, int ss)
{
    const KwViewCamera scaled = camera.Scaled(ss);
    positions(f);
    project(f, scaled);
    picture.Resize(scaled.Width(), scaled.Height(), true);
    picture.SetWriteIds(false);
    picture.Clear(kBackTop, kBackBottom);
    drawSurfaces(f, scaled, picture, false, float(ss));
    drawLinesAndMarks(f, scaled, picture, float(ss));
    QImage image = ss == 2 ? picture.Halved()
                 : ss == 1 ? picture.Image().copy()
                           : picture.Image().scaled(camera.Width(), camera.Height(),
                                                    Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter p(&image);
    paintSymbols(f, camera, p, ss);
    // Overlays work in view pixels: project once more at the view's own scale.
    positions(f);
    project(f, camera);
    paintOverlay(f, camera, p);
    return image;
}
