#pragma once
// The dialog kinds the demo host offers, and how it fills a request for each from the model.
#include "KwMFCUIEntry.h"

#include <QList>
#include <QString>

class CFMView;
class CKwAnalysis;
class CKwFEBase;
class CKwFEModel;
class KW_UOM;

struct KwHostKind
{
    unsigned kind;
    QString title;   // menu text in English (also names the kind's gallery pictures)
    QString group;   // menu the entry goes under
    int variant = 0; // which sample object the request carries (see KwMakeRequest)
};

// Every kind the library's dispatch knows, in menu order.
QList<KwHostKind> KwHostKinds();

// The kind's menu text in the current language (key "Kind<kind>" or "Kind<kind>v<variant>").
QString KwHostKindText(const KwHostKind& kind);
// A menu's name ("&Editors", "&Analysis", ...) in the current language, with its access key.
QString KwHostGroupText(const QString& group);

// A request for `kind` on the sample model as the host would send it: the entity to edit (the
// first of its family), the view, an analysis with results where the kind shows results, the
// units. `newEntity` leaves the object null ("new"). `variant` 1 picks the transient
// nonlinear setup for kinds 52 and 53 instead of the static one, and for kind 0 the remote
// force (2: the hydrostatic load) instead of the first force; for kind 34 the first beam
// property (2: a new property) instead of the first shell or solid. `current` is the analysis
// the user made current: the entity editors (loads, constraints, materials) are opened for it;
// without one, and for the kinds that show results, the analysis with results is taken.
DialogLaunchRequest KwMakeRequest(unsigned kind, CKwFEModel* model, CFMView* view,
                                  KW_UOM* units, bool newEntity = false, int variant = 0,
                                  CKwAnalysis* current = nullptr);

// The analysis a damping, spectrum setup or solution frequency set belongs to (null for
// anything else, or when the model has no analysis of that id).
CKwAnalysis* KwAnalysisOfSetup(const CKwFEModel* model, const CKwFEBase* setup);
