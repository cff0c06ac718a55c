#pragma once
// Results of a solver run as the model keeps them: one set per solver step and increment (or
// per mode of a modal run), each with nodal fields in the model's units. Read from the solver's
// text result file; a file that ends early or holds damaged lines gives an error and no sets.
#include "KwiCADExport.h"

#include <QString>
#include <string_view>
#include <vector>

// One nodal field: `components` values per node, nodes in the order the file lists them.
struct KWICAD_EXPORT KwNodalField
{
    int components = 0;
    std::vector<int> nodeIds;
    std::vector<double> values;
    bool empty() const { return nodeIds.empty(); }
    // The values of a node, or nullptr when the field has none for it.
    const double* Find(int nodeId) const;
};

struct KwResultSet
{
    int step = 0;        // solver step, from 1
    int subcaseId = 0;   // the subcase the step solved
    int increment = 0;   // increment within the step, or the mode number
    bool modal = false;
    double value = 0;    // total time, or the frequency in Hz of a mode
    KwNodalField displacement; // ux uy uz (m); of a frequency response: the real part
    KwNodalField displacementImaginary; // of a frequency response: the imaginary part (m)
    KwNodalField reaction;     // fx fy fz (N): the reaction at constrained nodes, the load
                               // at loaded ones
    KwNodalField stress;       // sxx syy szz sxy syz szx (Pa)
    KwNodalField vonMises;     // one value (Pa)
    KwNodalField principal;    // s1 >= s2 >= s3 (Pa)
    KwNodalField strain;       // total strain exx eyy ezz exy eyz ezx (shear as tensor
                               // components: half the engineering shear strain)
};

struct KWICAD_EXPORT KwSolverResults
{
    std::vector<KwResultSet> sets;
    // The last set of a step (the converged end of it), or nullptr.
    const KwResultSet* LastOfStep(int step) const;
    // The modes in order, with their frequencies in Hz.
    std::vector<const KwResultSet*> Modes() const;
};

// The equivalent stress and the principal stresses of a tensor (sxx syy szz sxy syz szx).
KWICAD_EXPORT double KwVonMises(const double* s);
KWICAD_EXPORT void KwPrincipalStresses(const double* s, double* principal);

// Reads the solver's text result file. stepSubcases[i] is the subcase of step i + 1. Returns
// false with `error` set (and `results` emptied) for input that is not a complete result file.
KWICAD_EXPORT bool KwReadSolverResults(std::string_view text, const std::vector<int>& stepSubcases,
                                       KwSolverResults& results, QString& error);
