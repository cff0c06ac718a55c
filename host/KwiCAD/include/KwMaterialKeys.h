#pragma once
// The material property keys shared by the material logic, its editor and the material files:
// the field name under which a value is stored, the label shown beside it (default text and
// language key, section "Materials"), the SI unit label and the unit kind used to convert the
// value for display. The table is built once when the host library loads; rows never move, so
// an index is as good as a key.
#include "KwiCADExport.h"

#include <QString>
#include <QStringList>

class KW_UOM;

namespace KwMaterialKeys {

// The 66 material property keys. "UVar", "IVar", "DVar" and "EVar" stand before them in the
// start-up list; they name the four kinds of user variable and are not properties.
inline constexpr int Count = 66;
inline constexpr int UserVariableCount = 4;

enum Index : int {
    EX = 0, NUXY, GXY, DENS, SIGXT, SIGXC, SIGYLD, ALPX, KX, C, REFT, ET, YLDPNT, E1, E2, G12,
    G1Z, G2Z, XT, YT, XC, YC, S, ALP1, ALP2, COHS, FANG, GE, K11, K22, K33, K12, K13, K23, D1,
    D2, D3, D4, D5, NA, ND, MU1, MU2, MU3, ALPHA1, ALPHA2, ALPHA3, A1, A2, A3, A4, A5, A6, E3,
    NUYZ, NUXZ, ALP3, ZT, ZC, S12, S23, S13, F12, F23, F13, SIGXY
};

// The whole start-up list: the four user-variable names, then the 66 keys (70 entries).
KWICAD_EXPORT const QStringList& StartupKeys();

// Row `index` (0..65); out-of-range rows give empty strings and unit kind Dimensionless.
KWICAD_EXPORT QString Key(int index);
KWICAD_EXPORT QString DefaultLabel(int index);
KWICAD_EXPORT QString LabelKey(int index);
KWICAD_EXPORT QString SIUnit(int index);
KWICAD_EXPORT int UnitKind(int index);
// The row of a key (exact spelling), -1 when it is not a property key.
KWICAD_EXPORT int IndexOf(const QString& key);

// The label in the current language: section "Materials", the row's label key and default.
KWICAD_EXPORT QString Label(int index);
// The unit label to show: the unit system's label for the row's kind, the SI label from the
// table without a unit system (or for a kind the system does not convert).
KWICAD_EXPORT QString UnitLabel(int index, const KW_UOM* units);

// How a property value is shown: "%.10g" after conversion to display units, as every editable
// number; a missing value is an empty text.
KWICAD_EXPORT QString FormatValue(double internalValue, int unitKind, const KW_UOM* units);
inline constexpr const char* ValueFormat = "%.10g";

} // namespace KwMaterialKeys
