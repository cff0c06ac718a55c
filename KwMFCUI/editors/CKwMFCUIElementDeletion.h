#pragma once
// The element deletion editor of explicit analyses: per physical property, the criteria that
// delete an element (equivalent plastic strain, maximum principal stress, time), each with its
// switch and limit. Its logic half is CKwUIElementDeletion.
#include "CKwMFCUIBase.h"
#include "CKwUIElementDeletion.h"
#include "KwMFCUIExport.h"

class KWMFCUI_EXPORT CKwMFCUIElementDeletion : public CKwMFCUIBase, public CKwUIElementDeletion
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7225;
    static constexpr int kPropertyCombo = 7744;
    static constexpr int kCheckFirst = 7746; // 7746, 7748, 7750; each limit edit follows its box

    // `analysis`: the explicit analysis a new deletion belongs to (may be null).
    CKwMFCUIElementDeletion(CFMView* view, CKwAnalysis* analysis, CKwElementDeletion* deletion,
                            KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIElementDeletion() override;

    void OnObjectDataLoaded() override;

protected:
    bool OnInitDialog() override;

private:
    void syncLimitEdits();
};
