#pragma once
// The plot editor: name and ID, the result set (subcase, increment or mode), the result and
// its component, and the pages that set how the view draws it (contour, deformed shape, part
// view, section plane, vectors, animation, visibility), chosen from a list beside them. The
// pages report their changes as option changes; this editor applies each through its logic
// half, CKwUIPlot, which puts the new display into the view at once.
#include "CKwMFCUIBase.h"
#include "CKwUIPlot.h"
#include "KwMFCUIExport.h"

#include <array>
#include <memory>

class CKwPlotPage;
class KW_UOM;

namespace Ui {
class CKwMFCUIPlot;
}

class KWMFCUI_EXPORT CKwMFCUIPlot : public CKwMFCUIBase, public CKwUIPlot
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 358;
    static constexpr int kPageCount = 7;
    enum Page { PageContour, PageDeformed, PagePartView, PageSection, PageVectors,
                PageAnimation, PageVisibility };

    // A null plot makes a new one on `analysis`; a stored plot brings its own analysis.
    CKwMFCUIPlot(CKwPlot* plot, CKwAnalysis* analysis, CFMView* view, KW_UOM* units,
                 QWidget* parent = nullptr);
    ~CKwMFCUIPlot() override;

    CKwPlotPage* GetPage(int page) const;
    // Shows a page, as choosing it in the list does.
    void ShowPage(int page);
    int CurrentPage() const;

    void SetTextToCurrentLang() override;
    void OnObjectDataLoaded() override;
    // The logic's field change, then the range labels and the controls that follow switches.
    int SetValue(int field, int value) override;

protected:
    long OnOptionChanged(int ctrlId, int value) override;

private:
    void fillPages();
    void syncEnabled();
    void updateRangeLabels();

    std::unique_ptr<Ui::CKwMFCUIPlot> m_ui;
    std::array<CKwPlotPage*, kPageCount> m_pages{};
};
