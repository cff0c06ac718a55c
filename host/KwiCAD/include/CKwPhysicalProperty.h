#pragma once
// An idealization: solid, shell (thickness) or beam (cross section), with its material.
// A beam or bar carries its cross section as one of twenty library shapes with up to six
// dimensions at each end; the geometry of the shapes and the section values live here too.
#include "CKwFEBase.h"
#include "KwSectionTypes.h"

#include <array>

class KWICAD_EXPORT CKwPhysicalProperty : public CKwFEBase
{
public:
    enum Idealization { Solid = 0, Shell = 1, Beam = 2 };
    // Element kinds of a line idealization.
    enum ElementKind { KindBar = 0, KindBeam = 1, KindPipe = 2 };
    enum SectionShape {
        ROD, TUBE, I, I1, CHAN, CHAN1, CHAN2, T, T1, T2, CROSS, BAR, BOX, BOX1, H, HEXA, Z, HAT,
        HAT1, L, ShapeCount
    };
    // Reference point offered in section mode 2.
    enum RefPoint { RefShearCenter = 0, RefCentroid = 1 };
    static constexpr int kMaxLoopPoints = 20;
    static constexpr int kMaxLoops = 4;
    // One rotation step turns the outline by this many degrees (positive: anticlockwise).
    static constexpr double kRotationStepDegrees = 90.0;

    CKwPhysicalProperty(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Physical Property"); }

    // A new property with everything of this one (the caller owns it).
    CKwPhysicalProperty* Clone() const;
    // Takes over the user's input of `other` (all fields but the identifier).
    void CloneInput(const CKwPhysicalProperty* other);

    // --- shapes ---
    static QString ShapeName(int code);        // "" outside 0..19
    static int ShapeFromName(const QString& name); // -1 when unknown
    static int ShapeDimensionCount(int code);  // 0 outside 0..19
    // The shapes an element kind takes: a pipe only TUBE, a bar all but L, a beam all.
    static bool ShapeFitsElementKind(int code, int elementKind);
    void GetSectionName(QString& name) const { name = ShapeName(m_sectionShape); }
    int GetSectionTypeFromName(const QString& name) const { return ShapeFromName(name); }

    // End 1 = End A, 0 = End B.
    const double* GetDimensions(int end) const { return end ? m_dimA.data() : m_dimB.data(); }
    double* GetDimensions(int end) { return end ? m_dimA.data() : m_dimB.data(); }

    // Outline of the section at one end as closed loops of at most 20 points: loop 0 is the
    // outer boundary (anticlockwise), the others are holes (clockwise). The rotation steps are
    // applied. loopCount is 0 when the dimensions give no valid outline (or for ROD and TUBE,
    // which are circles: see the Rod/Tube operations).
    void GetSectionLoopPoints(Kw::Point (*loops)[kMaxLoopPoints], int& loopCount,
                              int* pointCounts, int end) const;
    // The shape rules, the one check of dimensions on every path (dialog, file, profile library,
    // API): 0 valid, 1 nothing entered, 2 a dimension of magnitude below 1e-15, 3 a missing
    // dimension, a failed rule or an unknown shape. Only magnitudes are tested for zero.
    static int CheckShapeDimensions(int shape, const double* dims);
    // The rules pass and every dimension the shape uses is finite and positive: the only
    // dimensions the host builds an outline or computes values for.
    static bool IsValidShape(int shape, const double* dims);
    // The outline for a shape and dimensions (no rotation), as above. Returns the loop count.
    static int BuildShapeLoops(int shape, const double* dims, Kw::Point (*loops)[kMaxLoopPoints],
                               int* pointCounts);

    // The 22 section values of a polygonal section (see KwSectionValue). Returns false (and
    // leaves props untouched) when the loops do not form a section that can be meshed.
    // The rotation value (position 8) is this property's rotation steps.
    bool GetCrossSectionProperties(Kw::Point (*loops)[kMaxLoopPoints], int* pointCounts,
                                   int loopCount, double* props) const;
    bool GetRodSectionProperties(double radius, double* props) const;
    bool GetTubeSectionProperties(double outerRadius, double innerRadius, double* props) const;
    // All 22 values of one end of this property (shape, dimensions and rotation); false when
    // the end has no valid section.
    bool ComputeSectionProperties(int end, double* props) const;

    // The point the beam axis passes through, in section coordinates: the shear centre or the
    // centroid as m_refPoint says in section mode 2, else the centroid.
    void GetRefPoint(Kw::Point (*loops)[kMaxLoopPoints], int* pointCounts, int loopCount,
                     double* props, Kw::Point& point) const;
    static void GetRodRefPoint(double radius, Kw::Point& point);
    static void GetTubeRefPoint(double outerRadius, double innerRadius, Kw::Point& point);

    int m_idealization = Solid;
    int m_materialId = 0;
    double m_thickness;       // m, shells
    QString m_sectionName;    // beams: a name for the section (the model tree shows it)
    double m_sectionArea;     // m^2, beams

    int m_elementKind = KindBeam;
    int m_sectionMode = 0;
    int m_sectionShape = ROD;
    int m_tapered = 0;
    int m_rotationSteps = 0;
    int m_refPoint = RefCentroid;
    std::array<double, 6> m_dimA;
    std::array<double, 6> m_dimB;

    // Shells, advanced: offset of the reference surface from the mid-surface (m), and the
    // bending and transverse shear stiffness as ratios of those of a plain plate (12 I / t^3
    // and ts / t).
    double m_shellOffset = 0.0;
    double m_bendingRatio = 1.0;
    double m_shearRatio = 5.0 / 6.0;
};
