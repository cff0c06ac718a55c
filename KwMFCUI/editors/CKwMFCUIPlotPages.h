#pragma once
// The pages of the plot editor: contour, deformed shape, part view, section plane, vectors,
// animation and visibility. A page never touches the plot: each change of one of its controls
// goes to the editor that holds it as an option change (control id and value: a check state,
// a combo row, a spin or slider position, 0 for an edit), inside a redraw guard, and the
// editor applies it through its logic half.
#include "CKwMFCDialog.h"
#include "KwLangText.h"
#include "KwMFCUIExport.h"

#include <memory>
#include <span>

namespace Ui {
class CKwMFCUIPlotContour;
class CKwMFCUIPlotDeformed;
class CKwMFCUIPlotPartView;
class CKwMFCUIPlotSectionView;
class CKwMFCUIPlotVector;
class CKwMFCUIPlotAnimationOptions;
class CKwMFCUIPlotVisibilityOptions;
}

// What the pages share: embedding in the editor, their texts, and the option changes.
class KWMFCUI_EXPORT CKwPlotPage : public CKwMFCDialog
{
    Q_OBJECT
public:
    CKwPlotPage(unsigned templateId, CFMView* view, QWidget* parent);
    void SetTextToCurrentLang() override;

protected:
    void SetPageTexts(std::span<const KwTextRow> texts) { m_texts = texts; }
    // Every control reports the user's changes: check boxes their state, combo boxes their
    // row, spin boxes and sliders their position, edits 0 once their text was changed.
    void ReportChanges();
    long Notify(int ctrlId, int value);

private:
    std::span<const KwTextRow> m_texts;
};

// One class per page template; each is its template and its texts (no signals of its own).
#define KW_PLOT_PAGE(Name, Id)                                                                   \
    class KWMFCUI_EXPORT Name : public CKwPlotPage                                              \
    {                                                                                            \
    public:                                                                                      \
        static constexpr unsigned kTemplateId = Id;                                              \
        Name(CFMView* view, QWidget* parent);                                                    \
        ~Name() override;                                                                        \
                                                                                                 \
    private:                                                                                     \
        std::unique_ptr<Ui::Name> m_ui;                                                          \
    };

KW_PLOT_PAGE(CKwMFCUIPlotContour, 1205)
KW_PLOT_PAGE(CKwMFCUIPlotDeformed, 7222)
KW_PLOT_PAGE(CKwMFCUIPlotPartView, 7223)
KW_PLOT_PAGE(CKwMFCUIPlotSectionView, 363)
KW_PLOT_PAGE(CKwMFCUIPlotVector, 362)
KW_PLOT_PAGE(CKwMFCUIPlotAnimationOptions, 7224)
KW_PLOT_PAGE(CKwMFCUIPlotVisibilityOptions, 7226)

#undef KW_PLOT_PAGE
