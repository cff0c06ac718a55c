#pragma once
// The fatigue setup of a fatigue analysis: how often the load acts and how it varies, which
// stress enters the damage sum and how its mean part is corrected. Each material's curve comes
// from the material itself (its fatigue switch). Values are internal.
#include "CKwFEBase.h"

#include <QList>

class KWICAD_EXPORT CKwFatigueSetup : public CKwFEBase
{
public:
    enum Loading { FullyReversed = 0, ZeroBased = 1, CustomRatio = 2, LoadHistory = 3 };
    enum MeanStress { MeanNone = 0, Goodman = 1, Gerber = 2, Soderberg = 3 };
    enum StressMeasure { VonMises = 0, SignedVonMises = 1, MaxPrincipal = 2, MaxShear = 3 };

    // One block of a load history: so many cycles between two factors of the applied load.
    struct Block
    {
        double cycles = 1.0;
        double minFactor = -1.0;
        double maxFactor = 1.0;
        bool operator==(const Block&) const = default;
    };

    CKwFatigueSetup(int id = 1, const QString& name = QString());
    ~CKwFatigueSetup() override;
    QString GetTypeName() const override { return QStringLiteral("Fatigue Setup"); }
    bool operator==(const CKwFatigueSetup& o) const;

    // The stress ratio (minimum over maximum) of a constant-amplitude loading: -1 fully
    // reversed, 0 zero-based, the custom ratio otherwise.
    double StressRatio() const;

    double m_cycles = 1e6;
    int m_loading = FullyReversed;
    double m_ratio = -1.0; // CustomRatio
    QList<Block> m_history;
    int m_meanStress = MeanNone;
    int m_stressMeasure = VonMises;
    double m_scale = 1.0;
};
