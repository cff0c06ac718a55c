#pragma once
// Logic of the XY plot editor: curves of a result at picked nodes (or vertices) of an analysis
// with results, either one curve per node against time, frequency or step (the history), or
// one curve along the picked nodes against the distance along that path, for one result set.
// Submitting writes the curves into the XY plot (a new one joins the model's list).
#include "CKwFEUIBase.h"
#include "CKwXYPlot.h"

#include <QStringList>

class KWICAD_EXPORT CKwUIXYPlot : public CKwFEUIBase<CKwXYPlot>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeAnalyses = 3, CodeResults = 4, CodeComponents = 5,
                CodeResultSets = 6 };
    // Value interface: rows of the lists and the kind of curve (Axis).
    enum Field { FieldAnalysis = 10, FieldResult, FieldComponent, FieldAxis, FieldResultSet };
    // What the curves run over: the set's time or frequency (mode number for modes), the set's
    // number, or the distance along the picked nodes (one set).
    enum Axis { AxisTime = 0, AxisStep = 1, AxisPath = 2 };

    CKwUIXYPlot();
    ~CKwUIXYPlot() override;

    const KW_UOM* GetUnits() const;
    CKwAnalysis* GetAnalysis() const override;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    void SetPickedEntities(const QList<CKwUIEntity*>& entities) { m_entities = entities; }
    QList<CKwUIEntity*> GetSelectedEntities() const override { return m_entities; }
    // The mesh nodes of the picks, in pick order (each node once).
    std::vector<int> PickedNodes() const;
    // Fills the edit copy's series from the results; false when there is nothing to plot.
    bool BuildCurves();

protected:
    std::unique_ptr<CKwXYPlot> CreateNewObject() override;
    QList<CKwXYPlot*>* GetModelList() const override;

private:
    QList<CKwAnalysis*> analysesWithResults() const;
    void loadLists();

    int m_analysisRow = 0;
    int m_result = 0;
    int m_component = 0;
    int m_axis = AxisTime;
    int m_set = 0;
    QList<CKwUIEntity*> m_entities;
};
