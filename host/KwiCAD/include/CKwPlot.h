#pragma once
// A result plot shown in the view: displayed or not, animated or not.
#include "CKwFEBase.h"
#include "KwPlotSettings.h"

class CKwAnalysis;

class KWICAD_EXPORT CKwPlot : public CKwFEBase
{
public:
    CKwPlot(int id = 0, const QString& name = QString(), CKwAnalysis* analysis = nullptr);
    QString GetTypeName() const override { return QStringLiteral("Plot"); }
    CKwAnalysis* GetAnalysis() const { return m_analysis; }
    bool IsDisplayed() const { return m_displayed; }
    bool IsAnimating() const { return m_animating; }
    void TurnPlotDisplayOn() { m_displayed = true; }
    void TurnPlotDisplayOff();
    void TurnPlotAnimateOn() { m_animating = true; }
    void TurnPlotAnimateOff();
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }

    // What the plot shows and how (the plot editor and its pages set it).
    KwPlotSettings m_settings;

private:
    CKwAnalysis* m_analysis;
    bool m_displayed = false;
    bool m_animating = false;
};
