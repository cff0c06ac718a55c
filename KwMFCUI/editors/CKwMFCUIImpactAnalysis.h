#pragma once
// The impact editor of an explicit dynamics analysis (a drop test): where the projectile moves
// and how fast, gravity, what it hits and for how long. Its logic half is CKwUIImpactAnalysis.
// Exported with its constructor, so that a host can build it directly:
//
//     auto* dlg = new CKwMFCUIImpactAnalysis(analysis->GetImpactWizard(), analysis, view);
//     dlg->Create();
//     dlg->show();
#include "CKwMFCUIBase.h"
#include "CKwUIImpactAnalysis.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIImpactAnalysis;
}

class KWMFCUI_EXPORT CKwMFCUIImpactAnalysis : public CKwMFCUIBase, public CKwUIImpactAnalysis
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7036;
    enum ControlId { IdName = 7852, IdTranslationX = 7855, IdTranslationY = 7857,
                     IdTranslationZ = 7859, IdVelocity = 7865, IdAcceleration = 7868,
                     IdDuration = 7871, IdTargetFace = 7874, IdTargetPlane = 7875,
                     IdFace = 7877, IdPlaneDistance = 7879 };

    // `impact` null: a new impact, which OK makes the impact of `analysis`. Without an
    // analysis the impact's own is unknown: OK then says so and writes nothing.
    CKwMFCUIImpactAnalysis(CKwImpactWizard* impact, CKwAnalysis* analysis, CFMView* view,
                           KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIImpactAnalysis() override;

    void OnObjectDataLoaded() override;

protected:
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;
    // Faces: a picked face becomes the target.
    unsigned PickMaskWithoutBox() const override;

private:
    void syncTarget();
    std::unique_ptr<Ui::CKwMFCUIImpactAnalysis> m_ui;
};
