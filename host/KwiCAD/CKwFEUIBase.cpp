#include "CKwFEUIBase.h"

#include "CKwAnalysis.h"
#include "CKwSubCase.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <QStringList>
#include <vector>

namespace KwEntityLogic {

void FillSubcaseList(CKwUIBase& ui, const CKwAnalysis* analysis, int itemsCode,
                     int selectionCode, const QList<int>& ids)
{
    QStringList names;
    std::vector<int> selected;
    if (analysis) {
        for (const CKwSubCase* s : analysis->GetSubCases()) {
            if (ids.contains(s->GetID()))
                selected.push_back(static_cast<int>(names.size()));
            names << s->GetName();
        }
    }
    ui.SetControlItems(itemsCode, static_cast<int>(names.size()), names.constData());
    ui.SelectControlItems(selectionCode, static_cast<int>(selected.size()), selected.data());
}

QList<int> SubcaseIdsOfRows(const CKwAnalysis* analysis, const QList<int>& rows)
{
    QList<int> ids;
    if (!analysis)
        return ids;
    const QList<CKwSubCase*>& subcases = analysis->GetSubCases();
    for (int row : rows)
        if (row >= 0 && row < subcases.size())
            ids.append(subcases[row]->GetID());
    return ids;
}

QList<int> NewEntitySubcaseIds(const CKwSubCase* subcase, const CKwAnalysis* analysis)
{
    if (subcase)
        return {subcase->GetID()};
    if (analysis && !analysis->GetSubCases().isEmpty())
        return {analysis->GetSubCases().first()->GetID()};
    return {};
}

QString FormatNumber(double value) { return QString::asprintf("%.10g", value); }

QString FormatShown(double internalValue, int unitKind, const KW_UOM* units)
{
    if (IsMissingValue(internalValue))
        return QString();
    return FormatNumber(units ? units->GetDisplayValue(internalValue, unitKind) : internalValue);
}

QString FillArgs(QString text, std::initializer_list<QString> args)
{
    qsizetype from = 0;
    for (const QString& a : args) {
        const qsizetype at = text.indexOf(QStringLiteral("%s"), from);
        if (at < 0)
            break;
        text.replace(at, 2, a);
        from = at + a.size();
    }
    return text;
}

} // namespace KwEntityLogic
