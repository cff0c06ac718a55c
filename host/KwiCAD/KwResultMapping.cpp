#include "KwResultMapping.h"

#include "CKwMeshModel.h"
#include "KW_UOM.h"
#include "KwSolverResults.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
using R = KwPlotResult::Result;

const KwNodalField* fieldOf(const KwResultSet& set, int result)
{
    switch (result) {
    case R::Displacement: return &set.displacement;
    case R::Reaction: return &set.reaction;
    case R::VonMises: return set.vonMises.empty() ? &set.stress : &set.vonMises;
    case R::Principal: return set.principal.empty() ? &set.stress : &set.principal;
    case R::Components:
    case R::Strain: return &set.stress;
    default: return nullptr;
    }
}

double magnitude(const double* v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

// A component of a node's values in the field fieldOf chose.
double component(const KwNodalField& f, const double* v, int result, int c,
                 const KwPlotMaterial& m)
{
    switch (result) {
    case R::Displacement:
    case R::Reaction:
        if (f.components < 3)
            return kNaN;
        return c == 0 ? magnitude(v) : (c <= 3 ? v[c - 1] : kNaN);
    case R::VonMises:
        if (f.components == 1)
            return c == 0 ? v[0] : kNaN;
        return f.components >= 6 && c == 0 ? KwVonMises(v) : kNaN;
    case R::Principal: {
        if (c < 0 || c > 2)
            return kNaN;
        if (f.components == 3)
            return v[c];
        if (f.components < 6)
            return kNaN;
        double p[3];
        KwPrincipalStresses(v, p);
        return p[c];
    }
    case R::Components: return f.components >= 6 && c >= 0 && c < 6 ? v[c] : kNaN;
    case R::Strain: {
        if (f.components < 6 || !(m.youngs > 0) || !std::isfinite(m.poisson))
            return kNaN;
        const double e = m.youngs, nu = m.poisson;
        const double g = e / (2.0 * (1.0 + nu));
        if (c == 0) // equivalent strain of the elastic deviator: von Mises / 3G
            return KwVonMises(v) / (3.0 * g);
        if (c >= 1 && c <= 3) {
            const int i = c - 1;
            return (v[i] - nu * (v[(i + 1) % 3] + v[(i + 2) % 3])) / e;
        }
        return c >= 4 && c <= 6 ? v[c - 1] / g : kNaN;
    }
    default: return kNaN;
    }
}

// A display value is the internal one times a factor: none of a plot's units has an offset.
double displayFactor(const KW_UOM* units, int kind)
{
    return units ? units->GetDisplayValue(1.0, kind) - units->GetDisplayValue(0.0, kind) : 1.0;
}

// For each mesh node the index of its values in the field, -1 where it has none. Result files
// list nodes in the mesh's ascending order; the walk uses that and searches only otherwise.
std::vector<int> fieldRows(const KwNodalField& f, const CKwMeshModel& mesh)
{
    const auto& nodes = mesh.Nodes();
    std::vector<int> rows(nodes.size(), -1);
    std::size_t j = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const int id = nodes[i].id;
        if (j < f.nodeIds.size() && f.nodeIds[j] == id) {
            rows[i] = int(j++);
            continue;
        }
        auto it = std::lower_bound(f.nodeIds.begin(), f.nodeIds.end(), id);
        if (it == f.nodeIds.end() || *it != id)
            it = std::find(f.nodeIds.begin(), f.nodeIds.end(), id);
        if (it != f.nodeIds.end()) {
            rows[i] = int(it - f.nodeIds.begin());
            j = std::size_t(rows[i]) + 1;
        }
    }
    return rows;
}

void bounds(const CKwMeshModel& mesh, double lo[3], double hi[3])
{
    lo[0] = lo[1] = lo[2] = 0;
    hi[0] = hi[1] = hi[2] = 0;
    bool first = true;
    for (const CKwMeshModel::Node& n : mesh.Nodes()) {
        const double p[3] = {n.x, n.y, n.z};
        for (int k = 0; k < 3; ++k) {
            lo[k] = first ? p[k] : std::min(lo[k], p[k]);
            hi[k] = first ? p[k] : std::max(hi[k], p[k]);
        }
        first = false;
    }
}

// Three floats per mesh node from a vector field (zeros where it has none).
std::vector<float> vectorsOf(const KwNodalField& f, const CKwMeshModel& mesh)
{
    std::vector<float> out(mesh.Nodes().size() * 3, 0.0f);
    if (f.components < 3)
        return out;
    const std::vector<int> rows = fieldRows(f, mesh);
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] >= 0)
            for (int k = 0; k < 3; ++k)
                out[i * 3 + k] = float(f.values[std::size_t(rows[i]) * f.components + k]);
    return out;
}

} // namespace

int KwResultMapping::ComponentCount(int result)
{
    switch (result) {
    case R::Displacement:
    case R::Reaction: return 4;
    case R::VonMises: return 1;
    case R::Principal: return 3;
    case R::Components: return 6;
    case R::Strain: return 7;
    default: return 0;
    }
}

int KwResultMapping::UnitKind(int result)
{
    switch (result) {
    case R::Displacement: return KwUnitKind::Length;
    case R::Reaction: return KwUnitKind::Force;
    case R::Strain: return KwUnitKind::Dimensionless;
    default: return KwUnitKind::Stress;
    }
}

double KwResultMapping::NodeValue(const KwResultSet& set, int result, int c, int nodeId,
                                  const KwPlotMaterial& material)
{
    const KwNodalField* f = fieldOf(set, result);
    const double* v = f ? f->Find(nodeId) : nullptr;
    return v ? component(*f, v, result, c, material) : kNaN;
}

std::vector<float> KwResultMapping::NodalValues(const KwResultSet& set, int result, int c,
                                                const CKwMeshModel& mesh, const KW_UOM* units,
                                                const KwPlotMaterial& material)
{
    std::vector<float> out(mesh.Nodes().size(), std::numeric_limits<float>::quiet_NaN());
    const KwNodalField* f = fieldOf(set, result);
    if (!f || f->empty() || f->components <= 0)
        return out;
    const double factor = displayFactor(units, UnitKind(result));
    const std::vector<int> rows = fieldRows(*f, mesh);
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i] >= 0) {
            const double v = component(
                *f, f->values.data() + std::size_t(rows[i]) * f->components, result, c, material);
            out[i] = std::isfinite(v) ? float(v * factor) : std::numeric_limits<float>::quiet_NaN();
        }
    return out;
}

double KwResultMapping::AutomaticScale(const std::vector<float>& d, const CKwMeshModel& mesh)
{
    double lo[3], hi[3];
    bounds(mesh, lo, hi);
    const double extent = std::max({hi[0] - lo[0], hi[1] - lo[1], hi[2] - lo[2]});
    double largest = 0;
    for (std::size_t i = 0; i + 2 < d.size(); i += 3)
        largest = std::max(largest, std::sqrt(double(d[i]) * d[i] + double(d[i + 1]) * d[i + 1] +
                                              double(d[i + 2]) * d[i + 2]));
    return largest > 0 && extent > 0 ? extent / 20.0 / largest : 1.0;
}

KwResultDisplay KwResultMapping::BuildDisplay(const KwPlotSettings& s, const KwResultSet* set,
                                              const CKwMeshModel& mesh, const KW_UOM* units,
                                              const KwPlotMaterial& material,
                                              const QString& title)
{
    KwResultDisplay d;
    if (!set)
        return d;
    d.active = true;
    d.title = title;
    d.unitLabel = units ? units->GetUnits(UnitKind(s.result)) : QString();

    if (s.contourOn) {
        d.contour = s.contourStyle == 1 ? KwResultDisplay::ContourSmooth
                                        : KwResultDisplay::ContourBanded;
        d.nodalValues = NodalValues(*set, s.result, s.component, mesh, units, material);
        if (s.averaging == KwPlotSettings::PerElement) {
            // Each element in the mean of its nodes' values (unknown ones left out).
            d.elementValues.assign(mesh.ElementCount(), std::numeric_limits<float>::quiet_NaN());
            for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
                double sum = 0;
                int n = 0;
                for (int node : mesh.ElementNodes(e))
                    if (std::isfinite(d.nodalValues[std::size_t(node)])) {
                        sum += d.nodalValues[std::size_t(node)];
                        ++n;
                    }
                if (n > 0)
                    d.elementValues[e] = float(sum / n);
            }
            d.nodalValues.clear();
        }
        d.bands = std::clamp(s.bands, 2, 24);
        d.colorMap = static_cast<KwResultDisplay::ColorMap>(std::clamp(s.colorMap, 0, 2));
        d.fixedRange = !s.autoRange;
        if (d.fixedRange) {
            const double factor = displayFactor(units, UnitKind(s.result));
            d.rangeMin = s.rangeMin * factor;
            d.rangeMax = s.rangeMax * factor;
        } else {
            const std::vector<float>& v = d.nodalValues.empty() ? d.elementValues : d.nodalValues;
            bool any = false;
            for (float x : v)
                if (std::isfinite(x)) {
                    d.rangeMin = any ? std::min(d.rangeMin, double(x)) : x;
                    d.rangeMax = any ? std::max(d.rangeMax, double(x)) : x;
                    any = true;
                }
        }
    }
    d.showLegend = s.legend && s.contourOn;

    if (s.deformedOn && !set->displacement.empty()) {
        d.displacement = vectorsOf(set->displacement, mesh);
        d.deformScale = s.scaleMode == KwPlotSettings::ScaleActual      ? 1.0
                        : s.scaleMode == KwPlotSettings::ScaleAutomatic ? AutomaticScale(d.displacement, mesh)
                                                                        : s.scaleFactor;
        d.showUndeformedOutline = s.undeformedOutline;
    }

    if (s.vectorsOn) {
        const KwNodalField& f = s.vectorResult == KwPlotResult::VectorReaction ? set->reaction
                                                                               : set->displacement;
        d.vectors = vectorsOf(f, mesh);
        d.vectorSize = std::clamp(s.vectorSize, 1, 40) / 10.0;
        d.vectorsByMagnitude = s.vectorsByMagnitude;
    }

    d.sectionOn = s.sectionOn;
    if (s.sectionOn) {
        double lo[3], hi[3];
        bounds(mesh, lo, hi);
        const int axis = std::clamp(s.sectionAxis, 0, 2);
        for (int k = 0; k < 3; ++k) {
            d.sectionPoint[k] = (lo[k] + hi[k]) / 2.0;
            d.sectionNormal[k] = k == axis ? 1.0 : 0.0;
        }
        d.sectionPoint[axis] = lo[axis] + (hi[axis] - lo[axis]) * std::clamp(s.sectionPosition, 0, 100) / 100.0;
        d.sectionCap = s.sectionCap;
    }

    d.showMeshEdges = s.meshEdges;
    d.showLoadsAndConstraints = s.loadsAndConstraints;
    d.animate = s.animate;
    d.frameCount = std::clamp(s.frames, 2, 100);
    d.framesPerSecond = std::clamp(s.framesPerSecond, 1, 60);
    d.loop = s.loop;
    return d;
}
