// The demo host opens the nonlinear parameters dialog of each nonlinear analysis from its
// model tree, and its menus and gallery offer both variants.
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwNonlinearParametersDlg.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "KwHostKinds.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

CKwNonlinearParametersDlg* visibleNonlinearDialog()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* d = qobject_cast<CKwNonlinearParametersDlg*>(w); d && d->isVisible())
            return d;
    return nullptr;
}

TEST(KwHostNonlinearParameters, bothVariantsOpenFromTheModelTree)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    const auto items = tree->findItems(QStringLiteral("Nonlinear parameters"),
                                       Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(items.size(), 2);
    QList<bool> variants;
    for (QTreeWidgetItem* item : items) {
        Q_EMIT tree->itemActivated(item, 0);
        CKwNonlinearParametersDlg* d = visibleNonlinearDialog();
        ASSERT_NE(d, nullptr) << item->parent()->text(0).toStdString();
        variants << d->IsTransient();
        // The dialog edits the setup of the subcase the item sits under.
        EXPECT_EQ(d->GetSetup()->GetSubCase()->GetName(), item->parent()->text(0));
        delete d;
    }
    EXPECT_EQ(variants, (QList<bool>{false, true}));
}

TEST(KwHostNonlinearParameters, menusAndGalleryOfferBothVariants)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    QList<int> types;
    for (const KwHostKind& k : KwHostKinds()) {
        if (k.kind != 53)
            continue;
        const DialogLaunchRequest r =
            KwMakeRequest(k.kind, model.get(), nullptr, nullptr, false, k.variant);
        auto* setup = dynamic_cast<CKwNonlinearSetup*>(static_cast<CKwFEBase*>(r.object));
        ASSERT_NE(setup, nullptr);
        types << setup->GetAnalysisType();
    }
    EXPECT_EQ(types, (QList<int>{CKwAnalysis::NonlinearStatic, CKwAnalysis::NonlinearTransient}));
}

} // namespace
