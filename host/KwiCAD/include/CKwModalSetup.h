#pragma once
// How a modal analysis looks for its modes: how many, optionally only those inside a
// frequency band, and how the mode shapes are scaled.
#include "CKwFEBase.h"
#include "KwNumbers.h"

class KWICAD_EXPORT CKwModalSetup : public CKwFEBase
{
public:
    enum Normalization { NormalizeMass = 0, NormalizeMaxDisplacement = 1 };

    CKwModalSetup(int id = 1, const QString& name = QStringLiteral("Modal Setup"))
        : CKwFEBase(id, name)
    {
    }
    QString GetTypeName() const override { return QStringLiteral("Modal Setup"); }

    int m_modeCount = 10;
    // The band limits in Hz (missing until given); used only while m_useBand is set.
    bool m_useBand = false;
    double m_lowerFrequency = MissingDouble;
    double m_upperFrequency = MissingDouble;
    int m_normalization = NormalizeMass;
};
