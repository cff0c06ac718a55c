#include "CKwUISPCSummationForce.h"

#include "CKwRestraint.h"

#include <unordered_set>

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwSolverDeck.h"
#include "KwSolverResults.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

namespace {

constexpr const char* kSec = "SPCSummationForce";

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

CKwUISPCSummationForce::CKwUISPCSummationForce() = default;
CKwUISPCSummationForce::~CKwUISPCSummationForce() = default;

const KW_UOM* CKwUISPCSummationForce::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QString CKwUISPCSummationForce::GetPageTitleString() const
{
    return prop(kSec, "Title", "Reaction Force Sum");
}

QList<const CKwSubCase*> CKwUISPCSummationForce::subcasesWithResults() const
{
    QList<const CKwSubCase*> out;
    const KwSolverResults* r = m_analysis ? m_analysis->GetSolverResults() : nullptr;
    if (!r)
        return out;
    for (const CKwSubCase* s : m_analysis->GetSubCases())
        for (const KwResultSet& set : r->sets)
            if (set.subcaseId == s->GetID() && !set.modal) {
                out.append(s);
                break;
            }
    return out;
}

std::unique_ptr<CKwSubCase> CKwUISPCSummationForce::CreateNewObject()
{
    // Without a subcase the sum starts on the first one with results.
    const QList<const CKwSubCase*> subcases = subcasesWithResults();
    return subcases.isEmpty() ? std::make_unique<CKwSubCase>()
                              : std::make_unique<CKwSubCase>(*subcases.first());
}

const KwResultSet* CKwUISPCSummationForce::CurrentSet() const
{
    const QList<const CKwSubCase*> subcases = subcasesWithResults();
    if (m_row < 0 || m_row >= subcases.size())
        return nullptr;
    const KwResultSet* last = nullptr;
    for (const KwResultSet& set : m_analysis->GetSolverResults()->sets)
        if (set.subcaseId == subcases[m_row]->GetID() && !set.modal)
            last = &set;
    return last;
}

void CKwUISPCSummationForce::LoadObjectData()
{
    const QList<const CKwSubCase*> subcases = subcasesWithResults();
    QStringList names;
    m_row = 0;
    for (const CKwSubCase* s : subcases) {
        if (GetEditObject() && s->GetID() == GetEditObject()->GetID())
            m_row = int(names.size());
        names << s->GetName();
    }
    SetControlItems(CodeSubcases, int(names.size()), names.constData());
    const KW_UOM* units = GetUnits();
    SetControlText(CodeOriginX, KwEntityLogic::FormatShown(m_typed[0], KwUnitKind::Length, units));
    SetControlText(CodeOriginY, KwEntityLogic::FormatShown(m_typed[1], KwUnitKind::Length, units));
    SetControlText(CodeOriginZ, KwEntityLogic::FormatShown(m_typed[2], KwUnitKind::Length, units));
    Calculate();
}

void CKwUISPCSummationForce::UpdateObjectData(bool)
{
    const int codes[3] = {CodeOriginX, CodeOriginY, CodeOriginZ};
    for (int k = 0; k < 3; ++k) {
        QString text;
        if (GetControlText(codes[k], text))
            m_typed[k] = CFMView::GetDoubleFromString(GetUnits(), text, KwUnitKind::Length, 1);
    }
}

int CKwUISPCSummationForce::GetValue(int field, int& value)
{
    switch (field) {
    case FieldSubcase: value = m_row; return 1;
    case FieldOrigin: value = m_origin; return 1;
    default: return 0;
    }
}

int CKwUISPCSummationForce::SetValue(int field, int value)
{
    switch (field) {
    case FieldSubcase:
        if (value < 0 || value >= subcasesWithResults().size())
            return 0;
        m_row = value;
        break;
    case FieldOrigin:
        if (value < OriginTyped || value > OriginCentroid)
            return 0;
        m_origin = value;
        break;
    default: return 0;
    }
    Calculate();
    return 1;
}

void CKwUISPCSummationForce::SetSummedEntities(const QList<CKwUIEntity*>& entities)
{
    m_entities = entities;
    Calculate();
}

void CKwUISPCSummationForce::SetOriginEntity(CKwUIEntity* entity)
{
    m_originEntity = entity;
    Calculate();
}

void CKwUISPCSummationForce::SetTypedOrigin(const std::array<double, 3>& origin)
{
    m_typed = origin;
    Calculate();
}

bool CKwUISPCSummationForce::Calculate()
{
    m_sum = KwReactionSum{};
    const KwResultSet* set = CurrentSet();
    const CKwFEModel* model = GetModel();
    if (!set || !model || !model->m_mesh) {
        showSum(false, err(kSec, "NoResults", "This analysis has no results to sum."));
        return false;
    }
    const CKwMeshModel& mesh = *model->m_mesh;
    // Only nodes a constraint holds carry a reaction: the solver's force at any other node is
    // what its neighbours, a connector or a load put there, not a support's answer.
    std::unordered_set<int> held;
    for (const CKwRestraint* r : model->m_restraints)
        if (r && !r->IsThermal())
            for (const CKwUIEntity* e : r->m_entities)
                if (e)
                    for (int id : KwGeometryNodes(mesh, *e))
                        held.insert(id);
    std::vector<int> nodes;
    for (const CKwUIEntity* e : m_entities)
        if (e)
            for (int id : KwGeometryNodes(mesh, *e))
                if (held.count(id))
                    nodes.push_back(id);
    std::array<double, 3> origin = m_typed;
    if (m_origin == OriginPicked) {
        const std::vector<int> at =
            m_originEntity ? KwGeometryNodes(mesh, *m_originEntity) : std::vector<int>{};
        const CKwMeshModel::Node* n = at.size() == 1 ? mesh.FindNode(at.front()) : nullptr;
        if (!n) {
            showSum(false, err(kSec, "PickOrigin", "Pick the vertex or node the moment is taken about."));
            return false;
        }
        origin = {n->x, n->y, n->z};
    } else if (m_origin == OriginTyped) {
        for (double v : origin)
            if (IsMissingValue(v)) {
                showSum(false, err(kSec, "TypeOrigin", "Enter the origin as three lengths."));
                return false;
            }
    }
    if (nodes.empty()) {
        showSum(false, err(kSec, "PickEntities", "Pick the constrained faces, edges or vertices."));
        return false;
    }
    m_sum = KwSumReactions(*set, mesh, std::move(nodes), origin, m_origin == OriginCentroid);
    if (m_sum.nodes == 0) {
        showSum(false, err(kSec, "NoReactions",
                           "The picked entities carry no reaction in this subcase."));
        return false;
    }
    showSum(true, prop(kSec, "SummedNodes", "Sum over %1 nodes").arg(m_sum.nodes));
    return true;
}

void CKwUISPCSummationForce::showSum(bool valid, const QString& note)
{
    const KW_UOM* units = GetUnits();
    const int codes[6] = {CodeForceX, CodeForceY, CodeForceZ, CodeMomentX, CodeMomentY, CodeMomentZ};
    for (int k = 0; k < 6; ++k) {
        const double v = k < 3 ? m_sum.force[std::size_t(k)] : m_sum.moment[std::size_t(k - 3)];
        const int kind = k < 3 ? KwUnitKind::Force : KwUnitKind::Moment;
        SetControlText(codes[k], valid ? KwEntityLogic::FormatShown(v, kind, units) : QString());
    }
    SetControlText(CodeNodes, note);
}
