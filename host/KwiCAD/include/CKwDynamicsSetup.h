#pragma once
// What a dynamic analysis holds besides its subcases: its damping, the response spectrum of a
// response-spectrum analysis and the solution frequencies of a frequency response. Each belongs
// to one analysis (by the analysis's id) and keeps its values in internal units (hertz,
// seconds, ratios as fractions: 0.05 is 5 %), so that a solver input can be written from it as
// it stands.
#include "CKwFEBase.h"

#include <QList>

class KWICAD_EXPORT CKwDamping : public CKwFEBase
{
public:
    CKwDamping(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Damping"); }

    int m_analysisId = 0;
    // Global structural damping coefficient G as a fraction; missing: none.
    double m_structuralG = 0.0;
    // Rayleigh damping: ALPHA times the mass (1/s) plus BETA times the stiffness (s).
    double m_alpha = 0.0;
    double m_beta = 0.0;
    // Modal damping: the critical damping ratio over frequency from a frequency table.
    bool m_modal = false;
    int m_modalTableId = 0;
};

class KWICAD_EXPORT CKwSpectrumSetup : public CKwFEBase
{
public:
    enum Kind { Acceleration = 0, Velocity = 1, Displacement = 2 };
    enum Direction { X = 0, Y = 1, Z = 2 };
    // How the modal responses are summed.
    enum Combination { SRSS = 0, CQC = 1, ABS = 2, NRL = 3 };

    CKwSpectrumSetup(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Spectrum Setup"); }

    int m_analysisId = 0;
    // The frequency table that holds the spectrum (frequency -> response of m_kind).
    int m_tableId = 0;
    int m_kind = Acceleration;
    int m_direction = Z;
    int m_combination = SRSS;
    // The critical damping ratio the spectrum was drawn for (also CQC's ratio).
    double m_dampingRatio = 0.05;
    double m_scaleFactor = 1.0;
};

class KWICAD_EXPORT CKwSolutionFrequency : public CKwFEBase
{
public:
    enum Method { Discrete = 0, Range = 1, ClusterModes = 2, SpreadAround = 3, MethodCount = 4 };
    enum Spacing { Linear = 0, Logarithmic = 1 };

    CKwSolutionFrequency(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Solution Frequencies"); }

    // The frequencies the solver is asked for, ascending and each once, from the chosen
    // method and, for the methods that follow the modes, the natural frequencies `modes`.
    QList<double> Frequencies(const QList<double>& modes = {}) const;

    int m_analysisId = 0;
    int m_method = Range;
    // Discrete: the frequencies as listed.
    QList<double> m_discrete;
    // Range: start to end in a number of increments, evenly or logarithmically spaced.
    double m_rangeStart = 1.0;
    double m_rangeEnd = 100.0;
    int m_rangeIncrements = 20;
    int m_rangeSpacing = Linear;
    // Cluster: between neighbouring modes of the band, points crowded towards the modes (a
    // bias above 1 crowds them closer).
    double m_clusterLow = 0.0;
    double m_clusterHigh = 1000.0;
    int m_clusterPoints = 5;
    double m_clusterBias = 2.0;
    // Spread: around each mode of the band, points evenly over +/- a fraction of the mode.
    double m_spreadLow = 0.0;
    double m_spreadHigh = 1000.0;
    double m_spreadFraction = 0.1;
    int m_spreadPoints = 5;
};
