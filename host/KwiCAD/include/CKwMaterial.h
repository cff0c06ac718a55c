#pragma once
// A material of the model. Every number is stored internally (SI, angles in radians) under its
// property key (KwMaterialKeys) or, for the few values outside the shared key table, under an
// extra key (hyperelastic constants, the viscoelastic shift, concrete and nitinol values).
// Unset values hold MissingDouble. The type decides which values the material uses.
#include "CKwFEBase.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"

#include <QMap>
#include <QString>
#include <array>
#include <vector>

// An X-Y table of a material: a stress-strain curve, experimental data, a temperature table.
struct KWICAD_EXPORT KwMaterialCurve
{
    std::vector<double> x;
    std::vector<double> y;
    bool IsEmpty() const { return x.empty(); }
    int Size() const { return static_cast<int>(x.size()); }
    bool operator==(const KwMaterialCurve&) const = default;
};

class KWICAD_EXPORT CKwMaterial : public CKwFEBase
{
public:
    // The type code is the row of the editor's type list.
    enum Type { Isotropic = 0, Orthotropic2D = 1, Orthotropic3D = 2, Anisotropic3D = 3,
                Hyperelastic = 4, Nitinol = 5, Viscoelastic = 6, CrushableFoam = 7, Rigid = 8,
                Concrete = 9, TypeCount = 10 };
    enum HyperelasticModel { NeoHookean = 0, MooneyRivlin = 1, Yeoh = 2, Ogden = 3,
                             Polynomial = 4, HyperelasticModelCount = 5 };
    enum FailureTheory { FailureNone = 0, VonMisesStress = 1, PrincipalStress = 2,
                         FailureTheoryCount = 3 };
    // Curves and tables kept with the material.
    enum Curve { StressStrain = 0, SimpleTension = 1, EquibiaxialTension = 2, SimpleShear = 3,
                 PureVolumetricCompression = 4, PureShear = 5,
                 ConductivityVsTemperature = 6, CurveCount = 7 };
    // Values outside the shared key table.
    enum Extra { A10 = 0, A01, A20, A11, A02, A30, A21, A12, A03, SHIFT, FPC, CYM,
                 SigmaStartAM, SigmaFinishAM, SigmaStartMA, SigmaFinishMA, EpsilonL, EM,
                 ExtraCount };
    // The anisotropic stiffness matrix is symmetric: 21 values, row by row, upper triangle.
    static constexpr int MatrixSize = 21;

    CKwMaterial(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Material"); }

    // --- values by key: a property key of KwMaterialKeys or an extra key ---
    // MissingDouble for an unset value or an unknown key.
    double GetValue(const QString& key) const;
    // False (nothing stored) for an unknown key.
    bool SetValue(const QString& key, double value);
    static bool IsKnownKey(const QString& key);
    double GetValue(int index) const;       // property key index 0..65
    void SetValue(int index, double value); // ignored out of range
    double GetExtra(int extra) const;
    void SetExtra(int extra, double value);
    static QString ExtraKey(int extra);
    static int ExtraIndexOf(const QString& key);
    static int ExtraUnitKind(int extra);
    // Clears every value, curve and matrix entry; keeps id, name and type.
    void ClearValues();

    // --- the type and the values each type uses ---
    int GetMaterialType() const { return m_type; }
    // False for a code outside 0..TypeCount-1.
    bool SetMaterialType(int type);
    static QString TypeName(int type);          // "Isotropic", ... (file spelling)
    static int TypeFromName(const QString& name); // -1 when unknown (case-insensitive)
    // Property key indices shown for a type, in panel order.
    static std::vector<int> KeysForType(int type);
    static std::vector<int> ExtrasForType(int type);
    // Types whose elastic behaviour is one modulus and one Poisson's ratio.
    static bool UsesIsotropicElasticity(int type);

    const KwMaterialCurve& GetCurve(int curve) const;
    void SetCurve(int curve, const KwMaterialCurve& data);
    double GetMatrix(int i) const;
    void SetMatrix(int i, double value);

    // --- physical checks shared by the editor's validation and the file readers ---
    enum Problem { NoProblem = 0, NotFinite, PoissonTooLarge, PoissonTooSmall, Negative,
                   NotPositive, OutOfRange, BadCurve };
    struct Check
    {
        Problem problem = NoProblem;
        QString key; // the property or extra key, or the curve name
    };
    // The first problem of the values the current type uses; NoProblem when all are sound.
    Check CheckValues() const;
    // The message of a problem in the current language (section "Materials").
    static QString ProblemText(Problem problem);

    bool operator==(const CKwMaterial& other) const;

    int m_hyperelasticModel = MooneyRivlin;
    int m_failureTheory = FailureNone;
    bool m_fatigueOn = false;
    bool m_ppfaOn = false;
    QString m_description; // free text, e.g. where the values come from
    QString m_category;    // database grouping: "Carbon steels", ...
    // The stress-strain curve holds true values (converted or typed so) rather than
    // engineering ones; the solver's plastic curve is made from it accordingly.
    bool m_stressStrainTrue = false;
    // Fatigue data: the S-N curve (x the cycles to failure, strictly increasing; y the stress
    // amplitude, internal), the endurance limit (the amplitude the material lasts for ever
    // below; MissingDouble when not known) and where the curve comes from (free text).
    KwMaterialCurve m_snCurve;
    double m_enduranceLimit = MissingDouble;
    QString m_snSource;

private:
    int m_type = Isotropic;
    std::array<double, KwMaterialKeys::Count> m_values;
    std::array<double, ExtraCount> m_extras;
    std::array<double, MatrixSize> m_matrix;
    std::array<KwMaterialCurve, CurveCount> m_curves;
};
