#pragma once
// The grids of the material editor that are not rows of its value table: a stiffness matrix
// (upper triangle by rows under the heads "%s(Gij)"; editable for Anisotropic 3D, shown only
// for the stiffness computed from Orthotropic 3D's constants) and the hyperelastic constants
// Aij (i down, j across). Made when a type first shows them.
#include "CKwMaterial.h"

#include <QString>
#include <array>

class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;

// The 21 cells into rows 1..6 of `grid`, ids cellIdBase + k, and the heads into row 0, ids
// headIdBase + column; returns the seventh label (headIdBase + 6), which takes the unit.
// Read-only cells are painted as shown values, not as fields to type in.
QLabel* KwAddStiffnessGrid(QWidget* parent, QGridLayout* grid, int cellIdBase, int headIdBase,
                           int minWidth, bool readOnly,
                           std::array<QLineEdit*, CKwMaterial::MatrixSize>* cells = nullptr);

// The hyperelastic constants A10 ... A03 as a grid: a title (titleId), the heads, a cell per
// constant at (i, j) from its symbol with the extra value's id (cellIdBase + extra) and one
// unit label (unitId) for all.
struct KwAijGrid
{
    QWidget* widget = nullptr;
    std::array<QLineEdit*, CKwMaterial::A03 + 1> cells{};
    QLabel* unit = nullptr;
};
KwAijGrid KwMakeAijGrid(QWidget* parent, int cellIdBase, int unitId, int titleId);
// The tool tip of a constant: its own text for A10 and A01, else its symbol.
QString KwAijToolTip(int extra);
// Enables the constants the hyperelastic model is built from (Ogden takes none of them).
void KwEnableAijCells(const KwAijGrid& grid, int model);
