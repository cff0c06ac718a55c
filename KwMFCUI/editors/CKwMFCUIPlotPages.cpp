#include "CKwMFCUIPlotPages.h"

#include "KwControls.h"
#include "KwOptionPage.h"
#include "ui_CKwMFCUIPlotAnimationOptions.h"
#include "ui_CKwMFCUIPlotContour.h"
#include "ui_CKwMFCUIPlotDeformed.h"
#include "ui_CKwMFCUIPlotPartView.h"
#include "ui_CKwMFCUIPlotSectionView.h"
#include "ui_CKwMFCUIPlotVector.h"
#include "ui_CKwMFCUIPlotVisibilityOptions.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>

namespace {

using T = KwTextTarget;
constexpr const char* kSec = "PlotTemplate";

constexpr KwTextRow kContourTexts[] = {
    {12050, kSec, "GroupContour", "Contour"},
    {12051, kSec, "CheckShowContour", "Show Contour"},
    {12052, kSec, "LabelStyle", "Style", true},
    {12053, kSec, "DropDownBanded", "Banded", T::Item},
    {12053, kSec, "DropDownSmooth", "Smooth", T::Item},
    {12054, kSec, "LabelBands", "Number of Bands", true},
    {12056, kSec, "CheckAutomaticRange", "Automatic Range"},
    {12056, kSec, "ToolTipAutomaticRange",
     "The legend spans the smallest and the largest value of the result", T::ToolTip},
    {12061, kSec, "LabelColors", "Colors", true},
    {12062, kSec, "DropDownRainbow", "Rainbow", T::Item},
    {12062, kSec, "DropDownGrayscale", "Grayscale", T::Item},
    {12062, kSec, "DropDownThermal", "Thermal", T::Item},
    {12063, kSec, "LabelValues", "Values", true},
    {12064, kSec, "DropDownAveraged", "Averaged at Nodes", T::Item},
    {12064, kSec, "DropDownPerElement", "Mean per Element", T::Item},
};

constexpr KwTextRow kDeformedTexts[] = {
    {72220, kSec, "GroupDeformed", "Deformed Shape"},
    {72221, kSec, "CheckShowDeformed", "Show Deformed Shape"},
    {72222, kSec, "LabelScale", "Scale", true},
    {72223, kSec, "DropDownActual", "Actual", T::Item},
    {72223, kSec, "DropDownAutomatic", "Automatic", T::Item},
    {72223, kSec, "DropDownFactor", "Factor", T::Item},
    {72224, kSec, "LabelScaleFactor", "Factor", true},
    {72226, kSec, "CheckUndeformedOutline", "Show Undeformed Outline"},
};

constexpr KwTextRow kPartViewTexts[] = {
    {72230, kSec, "GroupBodies", "Bodies Shown"},
    {72232, kSec, "CheckShowSolids", "Show Solids"},
    {72233, kSec, "CheckShowMembers", "Show Structural Members"},
};

constexpr KwTextRow kSectionTexts[] = {
    {3630, kSec, "GroupSection", "Section Plane"},
    {3631, kSec, "CheckSection", "Cut with Section Plane"},
    {3632, kSec, "LabelNormal", "Normal", true},
    {3633, "General", "LabelAxisX", "X", T::Item},
    {3633, "General", "LabelAxisY", "Y", T::Item},
    {3633, "General", "LabelAxisZ", "Z", T::Item},
    {3634, kSec, "LabelPosition", "Position (%)", true},
    {3635, kSec, "ToolTipPosition",
     "Where the plane cuts the model along its normal, from its lowest to its highest point",
     T::ToolTip},
    {3637, kSec, "CheckCap", "Cap the Cut"},
};

constexpr KwTextRow kVectorTexts[] = {
    {3620, kSec, "GroupVectors", "Vectors"},
    {3621, kSec, "CheckShowVectors", "Show Vectors"},
    {3622, kSec, "LabelVector", "Vector", true},
    {3623, kSec, "DropDownDisplacement", "Displacement", T::Item},
    {3623, kSec, "DropDownReaction", "Reaction Force", T::Item},
    {3624, "General", "LabelSize", "Size", true},
    {3626, kSec, "CheckColorByMagnitude", "Color by Magnitude"},
};

constexpr KwTextRow kAnimationTexts[] = {
    {72240, kSec, "GroupAnimation", "Animation"},
    {72241, kSec, "CheckAnimate", "Animate"},
    {72242, kSec, "LabelFrames", "Frames per Cycle", true},
    {72244, kSec, "LabelSpeed", "Frames per Second", true},
    {72246, kSec, "CheckLoop", "Repeat Continuously"},
};

constexpr KwTextRow kVisibilityTexts[] = {
    {72260, kSec, "GroupVisibility", "Visibility"},
    {72261, kSec, "CheckMeshEdges", "Show Mesh Edges"},
    {72262, kSec, "CheckLoadsConstraints", "Show Loads and Constraints"},
    {72263, kSec, "CheckLegend", "Show Legend"},
};

} // namespace

CKwPlotPage::CKwPlotPage(unsigned templateId, CFMView* view, QWidget* parent)
    : CKwMFCDialog(templateId, view, parent)
{
    // A page is part of its editor's window, not a window of its own.
    setWindowFlags(Qt::Widget);
    KwSetControlId(this, int(templateId));
}

void CKwPlotPage::SetTextToCurrentLang() { KwApplyTextTable(this, m_texts); }

long CKwPlotPage::Notify(int ctrlId, int value)
{
    return KwNotifyOptionChanged(this, GetFMView(), ctrlId, value);
}

void CKwPlotPage::ReportChanges()
{
    const auto idOf = [](const QWidget* w) { return w->property(kKwCtrlIdProperty).toInt(); };
    for (QAbstractButton* b : findChildren<QAbstractButton*>()) {
        const int id = idOf(b);
        connect(b, &QAbstractButton::clicked, this,
                [this, id](bool on) { Notify(id, on ? 1 : 0); });
    }
    for (QComboBox* c : findChildren<QComboBox*>()) {
        const int id = idOf(c);
        connect(c, &QComboBox::activated, this, [this, id](int row) { Notify(id, row); });
    }
    for (QSpinBox* s : findChildren<QSpinBox*>()) {
        const int id = idOf(s);
        connect(s, &QSpinBox::valueChanged, this, [this, id](int v) { Notify(id, v); });
    }
    for (QSlider* s : findChildren<QSlider*>()) {
        const int id = idOf(s);
        connect(s, &QSlider::valueChanged, this, [this, id](int v) { Notify(id, v); });
    }
    for (QLineEdit* e : findChildren<QLineEdit*>()) {
        // A spin box's own line edit reports through its spin box.
        if (qobject_cast<QSpinBox*>(e->parentWidget()))
            continue;
        const int id = idOf(e);
        connect(e, &QLineEdit::editingFinished, this, [this, e, id] {
            if (e->isModified()) {
                e->setModified(false);
                Notify(id, 0);
            }
        });
    }
}

#define KW_PLOT_PAGE_IMPL(Name, texts)                                                           \
    Name::Name(CFMView* view, QWidget* parent)                                                   \
        : CKwPlotPage(kTemplateId, view, parent), m_ui(std::make_unique<Ui::Name>())            \
    {                                                                                            \
        m_ui->setupUi(this);                                                                     \
        SetPageTexts(texts);                                                                     \
        ReportChanges();                                                                         \
    }                                                                                            \
    Name::~Name() = default;

KW_PLOT_PAGE_IMPL(CKwMFCUIPlotContour, kContourTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotDeformed, kDeformedTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotPartView, kPartViewTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotSectionView, kSectionTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotVector, kVectorTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotAnimationOptions, kAnimationTexts)
KW_PLOT_PAGE_IMPL(CKwMFCUIPlotVisibilityOptions, kVisibilityTexts)

#undef KW_PLOT_PAGE_IMPL
