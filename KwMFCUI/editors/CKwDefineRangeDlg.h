#pragma once
// "Define Range": one range of IDs as from, to and step, for the highlight editor's ID list.
// OK takes the range only when it reads (whole numbers from 1, an end not below the start, a
// step of 1 or more, not too many IDs); otherwise the dialog says why and stays open.
#include "CKwMFCDialog.h"
#include "KwIdRanges.h"
#include "KwMFCUIExport.h"

#include <memory>

namespace Ui {
class CKwDefineRangeDlg;
}

class KWMFCUI_EXPORT CKwDefineRangeDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 1100;

    explicit CKwDefineRangeDlg(QWidget* parent = nullptr);
    ~CKwDefineRangeDlg() override;

    // The fields as the user would type them (tests and the gallery fill them this way).
    void SetFields(const QString& from, const QString& to, const QString& step);
    // The range taken by OK, and its text for the list ("300-310 by 5").
    KwIdRanges::Range GetRange() const { return m_range; }
    QString GetRangeText() const { return KwIdRanges::FormatRange(m_range); }
    // Why the last OK was refused; empty after a good one.
    QString GetMessage() const;

    void SetTextToCurrentLang() override;
    void OnOK() override;

private:
    std::unique_ptr<Ui::CKwDefineRangeDlg> m_ui;
    KwIdRanges::Range m_range;
};
