#pragma once
// Logic of the plot editor: name and ID, the result set (subcase, increment or mode), the
// result and its component, and every setting of the plot's pages. Each change turns the edit
// copy's settings and the analysis's results into the view's result display at once; the
// plot is stored in the model (and kept displayed as the view's active plot) on submit.
#include "CKwFEUIBase.h"
#include "CKwPlot.h"
#include "KwResultMapping.h"

#include <QStringList>

struct KwResultSet;

class KWICAD_EXPORT CKwUIPlot : public CKwFEUIBase<CKwPlot>
{
public:
    enum Code {
        CodeName = 1,
        CodeID = 2,
        CodeResultSets = 3, // items
        CodeResults = 4,    // items
        CodeComponents = 5, // items
        CodeRangeMin = 6,   // fixed contour range, display unit of the result
        CodeRangeMax = 7,
        CodeScaleFactor = 8, // deformation factor
    };
    // Value interface: one field per setting (check states, combo rows, spin and slider
    // positions).
    enum Field {
        FieldResultSet = 10, FieldResult, FieldComponent,
        FieldContourOn, FieldContourStyle, FieldBands, FieldAutoRange, FieldColorMap,
        FieldAveraging,
        FieldDeformedOn, FieldScaleMode, FieldOutline,
        FieldSolids, FieldMembers,
        FieldSectionOn, FieldSectionAxis, FieldSectionPosition, FieldSectionCap,
        FieldVectorsOn, FieldVectorResult, FieldVectorSize, FieldVectorsByMagnitude,
        FieldAnimate, FieldFrames, FieldSpeed, FieldLoop,
        FieldMeshEdges, FieldLoads, FieldLegend,
        FieldEnd
    };

    CKwUIPlot();
    ~CKwUIPlot() override;

    // The analysis whose results a new plot shows (a stored plot brings its own).
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;
    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    void Display(int on) override;
    long OnSubmitUI() override;

    // The result set the edit copy shows, or null (no results, or an index they lack).
    const KwResultSet* CurrentSet() const;
    // What the view gets for the edit copy now. A fixed range or factor that cannot be used
    // yet (being typed) shows as automatic.
    KwResultDisplay BuildDisplay() const;
    // Puts BuildDisplay into the view; redraws once, unless an option page's guard holds the
    // redraw and does it itself.
    void ShowResult();
    // How many times ShowResult reached the view.
    int GetShowCount() const { return m_showCount; }

    // The names of the lists.
    QStringList ResultSetNames() const;
    // The names of an analysis's result sets, their times and frequencies in `units`.
    static QStringList ResultSetNamesOf(const CKwAnalysis* analysis, const KW_UOM* units);
    static QStringList ResultNames();
    static QStringList ComponentNames(int result);
    // The constants strains are computed with: the material of the first solid property, else
    // the model's first material.
    KwPlotMaterial GetPlotMaterial() const;
    static KwPlotMaterial PlotMaterialOf(const CKwFEModel* model);

protected:
    std::unique_ptr<CKwPlot> CreateNewObject() override;
    QList<CKwPlot*>* GetModelList() const override;

private:
    void loadComponents();
    void loadRangeTexts();
    // Reads a number field in the display unit of `unitKind`; MissingDouble when no number.
    double readNumber(int code, int unitKind) const;

    CKwAnalysis* m_analysis = nullptr;
    int m_showCount = 0;
};
