// The FE model editor (kind 27): its lists over the model, the item editors it builds itself,
// deleting with a confirmation, and the automatic contact settings with their page, OK and
// Cancel; its logic half on its own for the field checks and for a missing model.
#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwFEModel.h"
#include "CKwMFCUIConMass.h"
#include "CKwMFCUIFEModel.h"
#include "CKwMFCUIPhysicalProperty.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwPhysicalProperty.h"
#include "CKwSurfaceContact.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

using Ed = CKwMFCUIFEModel;

class FEModelEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    Ed* open(void* object)
    {
        DialogLaunchRequest r = host.Request(27);
        r.object = object;
        LaunchDialog(&r);
        return dynamic_cast<Ed*>(host.view->GetOpenDialog());
    }
    Ed* openOnModel() { return open(static_cast<CKwFEBase*>(host.model.get())); }
    static QStringList names(const Ed* d, int list)
    {
        QStringList out;
        const QAbstractItemModel* m = d->GetTable(list)->model();
        for (int row = 0; row < m->rowCount(); ++row)
            out << m->index(row, 0).data().toString();
        return out;
    }
    static void flush()
    {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    // Runs the parameters page with these entries and presses OK (Cancel when OK is refused).
    void runPage(Ed* d, const QString& tolerance, int kind)
    {
        QTimer::singleShot(0, d, [&] {
            QWidget* page = QApplication::activeModalWidget();
            ASSERT_NE(page, nullptr);
            KwControl<QLineEdit>(page, CKwMFCUIAutoContactParameters::kToleranceEdit)
                ->setText(tolerance);
            KwControl<QComboBox>(page, CKwMFCUIAutoContactParameters::kKindCombo)
                ->setCurrentIndex(kind);
            KwControl<QPushButton>(page, 1)->click();
            if (QApplication::activeModalWidget() == page)
                KwControl<QPushButton>(page, 2)->click();
        });
        d->OpenAutoContactParameters();
    }

    kwtest::Host host;
};

// Each list shows the model's items by name and type, in the model's order.
TEST_F(FEModelEditor, listsShowTheModelsItems)
{
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);
    const CKwFEModel& m = *host.model;
    const int counts[] = {static_cast<int>(m.m_conMasses.size()),
                          static_cast<int>(m.m_properties.size()),
                          static_cast<int>(m.m_surfaceContacts.size())};
    for (int list = 0; list < Ed::ListCount; ++list) {
        SCOPED_TRACE(list);
        ASSERT_EQ(d->GetTable(list)->model()->rowCount(), counts[list]);
        ASSERT_GT(counts[list], 0) << "the sample model holds one of each";
        EXPECT_EQ(d->GetTable(list)->model()->index(0, 0).data().toString(),
                  d->Item(list, 0)->GetName());
        EXPECT_FALSE(d->GetTable(list)->model()->index(0, 1).data().toString().isEmpty());
    }
    EXPECT_EQ(d->ItemType(Ed::Contacts, 0), QStringLiteral("Separating"));
}

// The model comes from the object, else from the view; no view and no object opens nothing.
TEST_F(FEModelEditor, opensOnTheObjectOrTheViewsModelAndNeverCrashes)
{
    Ed* d = open(nullptr);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetFEModel(), host.model.get());
    d->OnCancel();
    flush();

    const QList<QWidget*> before = kwtest::VisibleTopLevels();
    DialogLaunchRequest r = host.Request(27);
    r.view = nullptr;
    r.object = nullptr;
    LaunchDialog(&r); // nothing to edit, nothing opens
    EXPECT_EQ(kwtest::VisibleTopLevels(), before);
    r.object = static_cast<CKwFEBase*>(host.model->m_conMasses.first()); // not a model
    LaunchDialog(&r);
    EXPECT_EQ(kwtest::VisibleTopLevels(), before);

    CKwUIFEModel logic; // no view, no model
    logic.OnCreate(nullptr, nullptr);
    EXPECT_EQ(logic.ItemCount(CKwUIFEModel::Masses), 0);
    EXPECT_EQ(logic.Item(CKwUIFEModel::Contacts, 0), nullptr);
    EXPECT_FALSE(logic.DeleteItem(CKwUIFEModel::Masses, 0));
    EXPECT_EQ(logic.OnSubmitUI(), 0);
    EXPECT_EQ(logic.OnCancelUI(), 0);
    EXPECT_EQ(logic.ItemCount(7), 0);
}

// The page's fields, in order: the first bad one is named and nothing is taken.
TEST_F(FEModelEditor, autoContactParametersStopAtTheFirstBadField)
{
    KW_UOM mm(KW_UOM::MMNS);
    CKwUIFEModel logic;
    logic.OnCreate(host.view.get(), host.model.get());
    logic.SetUnits(&mm);
    struct Case
    {
        const char* tolerance;
        int kind;
        int badField; // -1: taken
        const char* why;
    };
    const Case cases[] = {
        {"abc", 0, 0, ""},
        {"", 0, 0, "Enter the contact tolerance."},
        {"-0.2", 0, 0, "greater than zero"},
        {"0", 0, 0, "greater than zero"},
        {"-1", 9, 0, "greater than zero"}, // the tolerance comes first
        {"0.5", 9, 1, "Choose the contact type."},
        {"0.5", -1, 1, "Choose the contact type."},
        {"0.25", CKwSurfaceContact::Welded, -1, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.tolerance);
        const CKwUIFEModel::AutoContact before = logic.GetAutoContact();
        int bad = -1;
        QString why;
        const bool taken =
            logic.SetAutoContactParameters(QString::fromLatin1(c.tolerance), c.kind, &bad, &why);
        EXPECT_EQ(taken, c.badField < 0);
        if (taken)
            continue;
        EXPECT_EQ(bad, c.badField);
        EXPECT_FALSE(why.isEmpty());
        EXPECT_TRUE(why.contains(QString::fromLatin1(c.why))) << why.toStdString();
        EXPECT_EQ(logic.GetAutoContact().tolerance, before.tolerance);
        EXPECT_EQ(logic.GetAutoContact().kind, before.kind);
    }
    // Display units in, metres stored.
    EXPECT_DOUBLE_EQ(logic.GetAutoContact().tolerance, 2.5e-4);
    EXPECT_EQ(logic.GetAutoContact().kind, CKwSurfaceContact::Welded);
    EXPECT_EQ(logic.GetToleranceText(), QStringLiteral("0.25"));
}

// OK writes the detection settings into the model, Cancel leaves the model as it was.
TEST_F(FEModelEditor, okWritesTheSettingsAndCancelUndoesThem)
{
    CKwFEModel& m = *host.model;
    for (bool accept : {false, true}) {
        SCOPED_TRACE(accept);
        Ed* d = openOnModel();
        ASSERT_NE(d, nullptr);
        KwControl<QCheckBox>(d, Ed::kAutoCheck)->setChecked(true);
        runPage(d, QStringLiteral("0.3"), CKwSurfaceContact::SlidingNoSeparation);
        EXPECT_DOUBLE_EQ(d->GetAutoContact().tolerance, 3.0e-4);
        EXPECT_FALSE(m.m_autoContact) << "nothing written before OK";
        KwControl<QPushButton>(d, accept ? 1 : 2)->click();
        flush();
        EXPECT_EQ(m.m_autoContact, accept);
        EXPECT_DOUBLE_EQ(m.m_autoContactTolerance, accept ? 3.0e-4 : 1.0e-4);
        EXPECT_EQ(m.m_autoContactKind,
                  accept ? CKwSurfaceContact::SlidingNoSeparation : CKwSurfaceContact::Bonded);
    }
    // Reopened, the editor shows what the model holds.
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(KwControl<QCheckBox>(d, Ed::kAutoCheck)->isChecked());
}

// A refused page entry keeps the page open with the field's message and takes nothing; a model
// holding a bad tolerance is refused at OK with the same kind of message.
TEST_F(FEModelEditor, badToleranceIsRefusedOnThePageAndAtOk)
{
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);
    runPage(d, QStringLiteral("-4"), 0);
    EXPECT_DOUBLE_EQ(d->GetAutoContact().tolerance, 1.0e-4);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Tolerance (mm) - \n 'The contact tolerance must be greater than "
                             "zero.'"));
    d->OnCancel();
    flush();

    host.model->m_autoContact = true;
    host.model->m_autoContactTolerance = -1.0; // read from elsewhere
    d = openOnModel();
    ASSERT_NE(d, nullptr);
    host.view->ClearBubbleRecord();
    KwControl<QPushButton>(d, 1)->click();
    EXPECT_TRUE(d->isVisible()) << "refused OK keeps the editor open";
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(QStringLiteral("Tolerance - \n '")));
    EXPECT_DOUBLE_EQ(host.model->m_autoContactTolerance, -1.0);
}

// Delete asks first; No keeps the item, Yes removes it; a property others name is refused.
TEST_F(FEModelEditor, deleteAsksAndRefusesPropertiesInUse)
{
    CKwFEModel& m = *host.model;
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);
    const int masses = static_cast<int>(m.m_conMasses.size());
    d->SetCurrentRow(Ed::Masses, 0);
    kwtest::ModalRecord no =
        kwtest::AnswerModals([&] { EXPECT_FALSE(d->DeleteChosenItem(Ed::Masses)); },
                             QMessageBox::No);
    ASSERT_EQ(no.boxTexts.size(), 1);
    EXPECT_TRUE(no.boxTexts.first().contains(m.m_conMasses.first()->GetName()));
    EXPECT_EQ(m.m_conMasses.size(), masses);
    kwtest::AnswerModals([&] { EXPECT_TRUE(d->DeleteChosenItem(Ed::Masses)); },
                         QMessageBox::Yes);
    EXPECT_EQ(m.m_conMasses.size(), masses - 1);
    EXPECT_EQ(d->GetTable(Ed::Masses)->model()->rowCount(), masses - 1);

    // The shell property is named by the sample's orientation; the beam property by nothing.
    const int shell = d->RowOf(Ed::Idealizations, m.m_properties.first());
    ASSERT_EQ(m.m_properties.first()->m_idealization, CKwPhysicalProperty::Shell);
    d->SetCurrentRow(Ed::Idealizations, shell);
    kwtest::ModalRecord refused = kwtest::AnswerModals(
        [&] { EXPECT_FALSE(d->DeleteChosenItem(Ed::Idealizations)); }, QMessageBox::Yes);
    ASSERT_EQ(refused.boxTexts.size(), 1);
    EXPECT_TRUE(refused.boxTexts.first().contains("still used"));
    EXPECT_EQ(m.m_properties.size(), 2);
    d->SetCurrentRow(Ed::Idealizations, 1);
    kwtest::AnswerModals([&] { EXPECT_TRUE(d->DeleteChosenItem(Ed::Idealizations)); },
                         QMessageBox::Yes);
    EXPECT_EQ(names(d, Ed::Idealizations), QStringList{m.m_properties.first()->GetName()});
}

// Edit and New build the item's own editor (the launcher would open nothing now); while it is
// open the lists stay still; when it closes they show what it wrote.
TEST_F(FEModelEditor, itemEditorsOpenFromTheListsAndTheListsFollowThem)
{
    CKwFEModel& m = *host.model;
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);

    struct Case
    {
        int list;
        bool (*isEditor)(QWidget*);
    };
    const Case cases[] = {
        {Ed::Masses, [](QWidget* w) { return dynamic_cast<CKwMFCUIConMass*>(w) != nullptr; }},
        {Ed::Idealizations,
         [](QWidget* w) { return dynamic_cast<CKwMFCUIPhysicalProperty*>(w) != nullptr; }},
        {Ed::Contacts,
         [](QWidget* w) { return dynamic_cast<CKwMFCUISurfaceContact*>(w) != nullptr; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.list);
        d->SetCurrentRow(c.list, 0);
        CKwFEBase* item = d->Item(c.list, 0);
        CKwMFCDialog* child = d->EditItem(c.list);
        ASSERT_NE(child, nullptr);
        EXPECT_TRUE(c.isEditor(child));
        EXPECT_EQ(host.view->GetOpenDialog(), child);
        EXPECT_EQ(d->EditItem(c.list), nullptr) << "one item editor at a time";
        EXPECT_FALSE(KwFindControl(d, Ed::ControlId(c.list, Ed::DeleteOffset))->isEnabled());
        EXPECT_FALSE(KwFindControl(d, 1)->isEnabled());
        // The item's editor renames it and is done.
        KwControl<QLineEdit>(child, 273)->setText(QStringLiteral("Renamed %1").arg(c.list));
        KwControl<QPushButton>(child, 1)->click();
        flush();
        EXPECT_EQ(d->GetItemEditor(), nullptr);
        EXPECT_EQ(item->GetName(), QStringLiteral("Renamed %1").arg(c.list));
        EXPECT_EQ(names(d, c.list).first(), item->GetName());
        EXPECT_EQ(d->CurrentRow(c.list), 0) << "the chosen item stays chosen";
        EXPECT_TRUE(KwFindControl(d, 1)->isEnabled());
        EXPECT_EQ(host.view->GetOpenDialog(), d);

        // A new item's editor cancelled adds nothing.
        const int rows = d->ItemCount(c.list);
        child = d->NewItem(c.list);
        ASSERT_NE(child, nullptr);
        EXPECT_TRUE(c.isEditor(child));
        KwControl<QPushButton>(child, 2)->click();
        flush();
        EXPECT_EQ(d->ItemCount(c.list), rows);
        EXPECT_EQ(d->GetTable(c.list)->model()->rowCount(), rows);
    }
    EXPECT_EQ(m.m_conMasses.first()->GetName(), QStringLiteral("Renamed 0"));
}

// An item deleted elsewhere while its editor is open does not leave the list pointing at it,
// and the editor closing without one does not crash the list.
TEST_F(FEModelEditor, listsFollowItemsAddedOrRemovedByTheirEditor)
{
    CKwFEModel& m = *host.model;
    Ed* d = openOnModel();
    ASSERT_NE(d, nullptr);
    CKwMFCDialog* child = d->NewItem(Ed::Masses);
    ASSERT_NE(child, nullptr);
    // What the item editor's OK would have added, and a mass gone meanwhile.
    auto* added = new CKwConMass(99, QStringLiteral("Added"));
    m.m_conMasses.append(added);
    delete m.m_conMasses.takeFirst();
    child->OnCancel();
    flush();
    EXPECT_EQ(names(d, Ed::Masses), QStringList{QStringLiteral("Added")});
    EXPECT_EQ(d->CurrentRow(Ed::Masses), 0) << "a new item becomes the chosen one";
}

} // namespace
