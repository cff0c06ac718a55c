#pragma once
// The numbers behind a result plot: one result of a result set as one value per mesh node in
// the display unit, and the whole display (contour, deformed shape, section, vectors,
// animation, visibility) the view draws for a plot's settings.
#include "KwPlotSettings.h"
#include "KwViewDisplay.h"
#include "KwiCADExport.h"

#include <limits>
#include <vector>

class CKwMeshModel;
class KW_UOM;
struct KwResultSet;

// The isotropic constants strains are computed with (from the stresses, by Hooke's law);
// NaN when the model has none, and strains are then unknown.
struct KwPlotMaterial
{
    double youngs = std::numeric_limits<double>::quiet_NaN();
    double poisson = std::numeric_limits<double>::quiet_NaN();
};

namespace KwResultMapping {

// How many components a result offers (rows of the component list).
KWICAD_EXPORT int ComponentCount(int result);
// The unit kind (KwUnitKind) of a result's values.
KWICAD_EXPORT int UnitKind(int result);

// A result component at one node, internal unit; NaN when the set has no value there.
// Displacement and reaction: magnitude, x, y, z. Von Mises: one. Principal: s1 >= s2 >= s3.
// Components: xx yy zz xy yz zx. Strain: equivalent (von Mises) strain, then xx yy zz and the
// engineering shears xy yz zx.
KWICAD_EXPORT double NodeValue(const KwResultSet& set, int result, int component, int nodeId,
                               const KwPlotMaterial& material);

// The component at every node of the mesh, in mesh order, in the display unit of `units`
// (internal without units).
KWICAD_EXPORT std::vector<float> NodalValues(const KwResultSet& set, int result, int component,
                                             const CKwMeshModel& mesh, const KW_UOM* units,
                                             const KwPlotMaterial& material);

// The factor that draws the largest displacement as a twentieth of the model's largest
// extent; 1 when nothing moves.
KWICAD_EXPORT double AutomaticScale(const std::vector<float>& displacement,
                                    const CKwMeshModel& mesh);

// The display of a plot: nothing active without a set. `title` goes above the legend.
KWICAD_EXPORT KwResultDisplay BuildDisplay(const KwPlotSettings& settings,
                                           const KwResultSet* set, const CKwMeshModel& mesh,
                                           const KW_UOM* units, const KwPlotMaterial& material,
                                           const QString& title);

} // namespace KwResultMapping
