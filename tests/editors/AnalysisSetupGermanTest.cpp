// The analysis-setup editors in German: field messages, labels and table heads come from the
// German language files under the keys the code asks for.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMFCUIModalSetup.h"
#include "CKwMFCUINonlinearSetup.h"
#include "CKwMFCUISubcase.h"
#include "CKwMFCUITimeStep.h"
#include "CKwSubCase.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QTableView>
#include <functional>
#include <gtest/gtest.h>

namespace {

struct GermanCase
{
    unsigned kind;
    int analysisIndex;
    std::function<void*(CKwFEModel&, CKwAnalysis&)> object;
    std::function<void(CKwMFCDialog*, CKwFEModel&)> edit;
    const char* bubble;
};

void* subcaseOf(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.GetSubCases().first()); }

const GermanCase kCases[] = {
    {32, 7, [](CKwFEModel&, CKwAnalysis& a) -> void* { return static_cast<CKwFEBase*>(a.GetModalSetup()); },
     [](CKwMFCDialog* d, CKwFEModel&) {
         KwControl<QLineEdit>(d, CKwMFCUIModalSetup::kModes)->setText("0");
     },
     "Anzahl der Eigenformen - \n 'Geben Sie eine ganze Zahl ab 1 ein.'"},
    {32, 7, [](CKwFEModel&, CKwAnalysis& a) -> void* { return static_cast<CKwFEBase*>(a.GetModalSetup()); },
     [](CKwMFCDialog* d, CKwFEModel&) {
         KwControl<QLineEdit>(d, CKwMFCUIModalSetup::kUpper)->setText("tief");
     },
     "Obere Frequenz - \n 'Geben Sie eine Zahl in Hz ein.'"},
    {29, 2, [](CKwFEModel&, CKwAnalysis& a) -> void* { return static_cast<CKwFEBase*>(a.GetTimeStep()); },
     [](CKwMFCDialog* d, CKwFEModel&) {
         QAbstractItemModel* m = dynamic_cast<CKwMFCUITimeStep*>(d)->GetTable()->model();
         m->setData(m->index(1, CKwUITimeStep::ColIncrement), "0", Qt::EditRole);
     },
     "Zeitinkrement (Intervall 2) - \n 'Geben Sie einen Wert größer als 0 ein.'"},
    {52, 1, [](CKwFEModel&, CKwAnalysis& a) -> void* {
         return static_cast<CKwFEBase*>(a.GetSubCases().first()->GetNonlinearSetup());
     },
     [](CKwMFCDialog* d, CKwFEModel&) {
         KwControl<QLineEdit>(d, CKwMFCUINonlinearSetup::kOutputEvery)->setText("99");
     },
     "Ausgabe alle - \n 'Geben Sie ein Ausgabeintervall ein, das die Anzahl der Inkremente "
     "nicht übersteigt.'"},
    {8, 0, subcaseOf,
     [](CKwMFCDialog*, CKwFEModel& m) { delete m.m_loads.takeLast(); },
     "Lasten - \n 'Eine Last dieses Lastfalls existiert nicht mehr (ID 6): Entfernen Sie sie "
     "aus der Liste.'"},
    {8, 0, subcaseOf,
     [](CKwMFCDialog* d, CKwFEModel&) { KwControl<QLineEdit>(d, CKwMFCUISubcase::kID)->setText("2"); },
     "ID - \n 'Ein anderer Lastfall dieser Analyse verwendet diese ID bereits.'"},
};

TEST(AnalysisSetupGerman, fieldMessagesComeInGerman)
{
    kwtest::IsolateSettings();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    for (const GermanCase& c : kCases) {
        SCOPED_TRACE(c.bubble);
        kwtest::Host host;
        CKwAnalysis& a = *host.model->m_analyses.at(c.analysisIndex);
        DialogLaunchRequest r = host.Request(c.kind);
        r.object = c.object(*host.model, a);
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        c.edit(d, *host.model);
        if (auto* s = dynamic_cast<CKwMFCUISubcase*>(d))
            s->OnMembersChanged();
        KwControl<QAbstractButton>(d, 1)->click();
        EXPECT_EQ(host.view->GetLastBubbleText(), QString::fromUtf8(c.bubble));
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}

TEST(AnalysisSetupGerman, labelsAndHeadsComeInGerman)
{
    kwtest::IsolateSettings();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    kwtest::Host host;
    CKwFEModel& m = *host.model;
    const struct { unsigned kind; void* object; int ctrlId; const char* text; } cases[] = {
        {32, static_cast<CKwFEBase*>(m.m_analyses.at(7)->GetModalSetup()), 7714, "Untere Frequenz (Hz):"},
        {32, static_cast<CKwFEBase*>(m.m_analyses.at(7)->GetModalSetup()), 7719, "Maximale Verschiebung"},
        {52, static_cast<CKwFEBase*>(m.m_analyses.at(2)->GetSubCases().first()->GetNonlinearSetup()), 7736,
         "Anzahl der Zeitschritte:"},
        {29, static_cast<CKwFEBase*>(m.m_analyses.at(2)->GetTimeStep()), 7724, "Gesamtzeit:"},
        {8, static_cast<CKwFEBase*>(m.m_analyses.at(0)->GetSubCases().first()), CKwMFCUISubcase::kThermal,
         "Thermischer Lastfall"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        DialogLaunchRequest r = host.Request(c.kind);
        r.object = c.object;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(KwGetControlText(d, c.ctrlId), QString::fromUtf8(c.text));
        if (auto* t = dynamic_cast<CKwMFCUITimeStep*>(d)) {
            EXPECT_EQ(t->GetTable()->model()->headerData(CKwUITimeStep::ColEndTime, Qt::Horizontal),
                      "Endzeit (s)");
        }
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}

} // namespace
