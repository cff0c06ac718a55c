#pragma once
// Report of one beam section's values beside a drawing of its outline. The host computes the
// values; the dialog converts them to display units and writes them out.
#include "CKwMFCDialog.h"
#include "KwSectionTypes.h"

#include <QList>
#include <array>

class KW_UOM;
class QPlainTextEdit;

class KWMFCUI_EXPORT CSectionProp : public CKwMFCDialog
{
    Q_OBJECT
public:
    enum ControlId
    {
        IDC_GROUP_SECTION = 1001,
        IDC_GROUP_PROPERTIES = 1002,
        IDC_REPORT = 1003,
        IDC_CLOSE = 1,
        IDC_OUTLINE = 308,
    };
    static constexpr int kPipeForm = 2;
    static constexpr int kMaxReportChars = 2000;

    CSectionProp(QWidget* parent, const QList<QList<SymMatrixUtils::Point2D>>& outline,
                 const double* sectionData, double first, double pierceZ, double pierceY,
                 KW_UOM* units, int firstInt, int form);

    // The report as the dialog shows it (built at initialisation).
    QString GetReport() const { return m_report; }
    static QString BuildReport(const double* data, double pierceZ, double pierceY,
                               const KW_UOM& units, int form);
    // The report's tool tip: the unit its warping coefficient (Cw) is in ("mm⁶").
    static QString WarpingUnit(const KW_UOM& units);
    const QList<QList<SymMatrixUtils::Point2D>>& GetOutline() const { return m_outline; }
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    QList<QList<SymMatrixUtils::Point2D>> m_outline;
    std::array<double, KwSectionValue::Count> m_data{};
    double m_first;
    double m_pierceZ;
    double m_pierceY;
    KW_UOM* m_units;
    int m_firstInt;
    int m_form;
    QString m_report;
    QPlainTextEdit* m_edit = nullptr;
};
