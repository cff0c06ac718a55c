// The "Highlight" editor through LaunchDialog kinds 23, 24, 45, 46 and 47: what each kind
// opens, lists highlighted in the view, IDs the mesh lacks in the warning, lists refused with
// nothing changed, sets kept in the model, and ranges added through "Define Range".
#include "CFMView.h"
#include "CKwDefineRangeDlg.h"
#include "CKwFEModel.h"
#include "CKwGroup.h"
#include "CKwMFCUIHighlightNodeElem.h"
#include "CKwMeshModel.h"
#include "CKwMsgDialog.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace {

using Ed = CKwMFCUIHighlightNodeElem;

class HighlightEditor : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        mesh = host.model->m_mesh;
        ASSERT_NE(mesh, nullptr);
        // The sample mesh the cases below count on.
        for (int id = 1; id <= 20; ++id)
            ASSERT_TRUE(mesh->HasElement(id) && mesh->HasNode(id)) << id;
        ASSERT_FALSE(mesh->HasElement(kMissing));
        ASSERT_FALSE(mesh->HasNode(kMissing));
    }
    void TearDown() override
    {
        if (auto* d = dynamic_cast<Ed*>(host.view->GetOpenDialog()))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Ed* open(unsigned kind, CKwFEBase* object = nullptr)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        r.extra = static_cast<CKwFEBase*>(mesh);
        LaunchDialog(&r);
        return dynamic_cast<Ed*>(host.view->GetOpenDialog());
    }
    static QLineEdit* list(Ed* d) { return KwControl<QLineEdit>(d, Ed::IdList); }
    static QString summary(Ed* d) { return KwControl<QLabel>(d, Ed::IdSummary)->text(); }
    // Runs `action`, answering the missing-IDs warning; returns the IDs it listed.
    static QStringList warned(const std::function<void()>& action, int* warnings = nullptr)
    {
        QStringList ids;
        const auto rec = kwtest::AnswerModals(action, QMessageBox::Ok, [&](QWidget* w) {
            if (auto* msg = qobject_cast<CKwMsgDialog*>(w))
                ids = msg->GetListedIDs();
        });
        if (warnings)
            *warnings = static_cast<int>(rec.dialogTitles.count(QStringLiteral("Warning")));
        return ids;
    }
    const std::vector<int>& shown(CFMView::MeshHighlight kind) const
    {
        return host.view->GetHighlightedMesh(kind);
    }

    static constexpr int kMissing = 987654;
    kwtest::Host host;
    CKwMeshModel* mesh = nullptr;
};

TEST_F(HighlightEditor, eachKindOpensWithItsModeAndFreedoms)
{
    struct Case
    {
        unsigned kind;
        bool nodes;      // the mode it opens in
        bool free;       // the mode can be switched
        bool groupShown; // a set can be made
    };
    const Case cases[] = {
        {23, true, true, true},
        {24, false, true, true},
        {45, false, false, false},
        {46, true, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        Ed* d = open(c.kind);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->windowTitle(), "Highlight");
        EXPECT_EQ(KwControl<QAbstractButton>(d, Ed::IdModeNodes)->isChecked(), c.nodes);
        EXPECT_EQ(KwControl<QAbstractButton>(d, Ed::IdModeElements)->isChecked(), !c.nodes);
        EXPECT_EQ(KwControl<QWidget>(d, Ed::IdModeNodes)->isEnabled(), c.free);
        EXPECT_EQ(KwControl<QWidget>(d, Ed::IdGroupBox)->isVisibleTo(d), c.groupShown);
        EXPECT_EQ(KwControl<QLabel>(d, Ed::IdListLabel)->text(),
                  c.nodes ? "Node IDs:" : "Element IDs:");
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(HighlightEditor, kind47OpensOnlyOnASetAndTakesItsModeAndList)
{
    EXPECT_EQ(open(47, nullptr), nullptr);
    // Something that is not a set opens nothing either.
    EXPECT_EQ(open(47, static_cast<CKwFEBase*>(mesh)), nullptr);
    CKwGroup set(7, "Tip");
    set.m_mode = CKwGroup::Nodes;
    set.m_idList = "2-6 by 2";
    Ed* d = open(47, &set);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(list(d)->text(), "2-6 by 2");
    EXPECT_TRUE(KwControl<QAbstractButton>(d, Ed::IdModeNodes)->isChecked());
    EXPECT_FALSE(KwControl<QWidget>(d, Ed::IdModeElements)->isEnabled());
    // OK keeps the edited list in the set and shows it.
    list(d)->setText("3, 1-2");
    d->OnOK();
    EXPECT_EQ(set.m_idList, "3, 1-2");
    EXPECT_EQ(set.m_ids, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(shown(CFMView::HighlightNodes), (std::vector<int>{1, 2, 3}));
}

TEST_F(HighlightEditor, highlightShowsFoundIdsAndWarnsOfMissingOnes)
{
    Ed* d = open(24);
    ASSERT_NE(d, nullptr);
    host.view->SetHighlightedMesh(CFMView::HighlightNodes, {1, 2});
    list(d)->setText(QStringLiteral("%1, 1-4, 10-14 by 2, 3").arg(kMissing));
    int warnings = 0;
    const QStringList listed = warned([&] { d->OnHighlight(); }, &warnings);
    EXPECT_EQ(warnings, 1);
    EXPECT_EQ(listed, QStringList{QString::number(kMissing)});
    EXPECT_EQ(shown(CFMView::HighlightElements), (std::vector<int>{1, 2, 3, 4, 10, 12, 14}));
    // Only the editor's own kind stays highlighted.
    EXPECT_TRUE(shown(CFMView::HighlightNodes).empty());
    EXPECT_EQ(summary(d), "7 elements highlighted");
    // The list is shown in its canonical form; the editor stays open.
    EXPECT_EQ(list(d)->text(), QStringLiteral("%1, 1-4, 10-14 by 2, 3").arg(kMissing));
    EXPECT_TRUE(d->isVisible());
    // "All" highlights every element with no warning.
    d->OnAll();
    warned([&] { d->OnHighlight(); }, &warnings);
    EXPECT_EQ(warnings, 0);
    EXPECT_EQ(shown(CFMView::HighlightElements).size(), mesh->ElementCount());
}

TEST_F(HighlightEditor, aListThatDoesNotReadChangesNothing)
{
    struct Case
    {
        const char* text;
        const char* bubble;
    };
    const Case cases[] = {
        {"", "Element IDs - \n 'Enter IDs, ranges such as 1-100 or 300-310 by 5, or ALL.'"},
        {"1, ten", "Element IDs - \n 'Not an ID or a range: ten'"},
        {"20-10", "Element IDs - \n 'The range ends below its start: 20-10'"},
        {"1-9 by 0", "Element IDs - \n 'The step of a range is 1 or more: 1-9 by 0'"},
        {"0", "Element IDs - \n 'IDs are whole numbers from 1 to 2147483647: 0'"},
        {"1-10000000",
         "Element IDs - \n 'The list names more than 5000000 IDs: 1-10000000'"},
        {"ALL, 3", "Element IDs - \n 'ALL stands alone in the list: 3'"},
    };
    Ed* d = open(24);
    ASSERT_NE(d, nullptr);
    KwControl<QAbstractButton>(d, Ed::IdCreateGroup)->setChecked(true);
    const std::vector<int> before = {5, 6};
    const qsizetype sets = host.model->m_idSets.size();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        host.view->SetHighlightedMesh(CFMView::HighlightElements, before);
        host.view->ClearBubbleRecord();
        list(d)->setText(QString::fromLatin1(c.text));
        int warnings = 0;
        warned([&] { d->OnHighlight(); }, &warnings);
        EXPECT_EQ(host.view->GetLastBubbleText(), QString::fromLatin1(c.bubble));
        EXPECT_EQ(warnings, 0);
        EXPECT_EQ(shown(CFMView::HighlightElements), before);
        // OK is refused the same way: the editor stays open and no set is made.
        d->OnOK();
        EXPECT_TRUE(d->isVisible());
        EXPECT_EQ(host.model->m_idSets.size(), sets);
        EXPECT_EQ(list(d)->text(), QString::fromLatin1(c.text));
    }
}

TEST_F(HighlightEditor, okKeepsTheListAsANamedSetOnlyWhenAsked)
{
    const qsizetype sets = host.model->m_idSets.size();
    // Without the box OK highlights and closes, and no set is made.
    Ed* d = open(23);
    ASSERT_NE(d, nullptr);
    list(d)->setText("4-6");
    d->OnOK();
    EXPECT_EQ(host.model->m_idSets.size(), sets);
    EXPECT_EQ(shown(CFMView::HighlightNodes), (std::vector<int>{4, 5, 6}));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    d = open(23);
    ASSERT_NE(d, nullptr);
    auto* name = KwControl<QLineEdit>(d, Ed::IdGroupName);
    EXPECT_FALSE(name->isEnabled());
    KwControl<QAbstractButton>(d, Ed::IdCreateGroup)->setChecked(true);
    EXPECT_TRUE(name->isEnabled());
    list(d)->setText(QStringLiteral("8, 9, %1").arg(kMissing));
    // A name that is empty or taken is refused before anything is highlighted.
    const struct
    {
        QString name;
        const char* bubble;
    } refused[] = {
        {"  ", "Group Name - \n 'Enter a name for the group.'"},
        {host.model->m_idSets.first()->GetName(), "Group Name - \n 'A group of this name exists.'"},
    };
    for (const auto& r : refused) {
        host.view->ClearMeshHighlight();
        name->setText(r.name);
        int warnings = 0;
        warned([&] { d->OnOK(); }, &warnings);
        EXPECT_EQ(host.view->GetLastBubbleText(), QString::fromLatin1(r.bubble));
        EXPECT_EQ(warnings, 0);
        EXPECT_TRUE(shown(CFMView::HighlightNodes).empty());
        EXPECT_EQ(host.model->m_idSets.size(), sets);
    }
    name->setText("Top row");
    const QStringList listed = warned([&] { d->OnOK(); });
    EXPECT_EQ(listed, QStringList{QString::number(kMissing)});
    ASSERT_EQ(host.model->m_idSets.size(), sets + 1);
    const CKwGroup* made = host.model->m_idSets.last();
    EXPECT_EQ(made->GetName(), "Top row");
    EXPECT_EQ(made->m_mode, CKwGroup::Nodes);
    EXPECT_EQ(made->m_ids, (std::vector<int>{8, 9}));
    EXPECT_GT(made->GetID(), host.model->m_idSets.first()->GetID());
}

TEST_F(HighlightEditor, aSetOfNothingFoundIsRefused)
{
    Ed* d = open(24);
    ASSERT_NE(d, nullptr);
    KwControl<QAbstractButton>(d, Ed::IdCreateGroup)->setChecked(true);
    KwControl<QLineEdit>(d, Ed::IdGroupName)->setText("Nothing");
    list(d)->setText(QString::number(kMissing));
    const qsizetype sets = host.model->m_idSets.size();
    warned([&] { d->OnOK(); });
    EXPECT_EQ(host.view->GetLastBubbleText(), "Element IDs - \n 'No ID of the list is in the mesh.'");
    EXPECT_EQ(host.model->m_idSets.size(), sets);
    EXPECT_TRUE(d->isVisible());
}

TEST_F(HighlightEditor, switchingTheModeDropsTheLastResult)
{
    Ed* d = open(24);
    ASSERT_NE(d, nullptr);
    list(d)->setText("1-3");
    d->OnHighlight();
    EXPECT_EQ(summary(d), "3 elements highlighted");
    KwControl<QAbstractButton>(d, Ed::IdModeNodes)->click();
    EXPECT_EQ(summary(d), "");
    EXPECT_EQ(KwControl<QLabel>(d, Ed::IdListLabel)->text(), "Node IDs:");
    d->OnHighlight();
    EXPECT_EQ(shown(CFMView::HighlightNodes), (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(shown(CFMView::HighlightElements).empty());
}

TEST_F(HighlightEditor, defineRangeAppendsAGoodRangeAndExplainsABadOne)
{
    struct Case
    {
        const char* before;
        const char* from;
        const char* to;
        const char* step;
        const char* message; // empty: taken
        const char* after;
    };
    const Case cases[] = {
        {"", "300", "310", "5", "", "300-310 by 5"},
        {"1-100, 205,", "300", "310", "", "", "1-100, 205, 300-310"},
        {"ALL", "4", "4", "1", "", "4"},
        {"7", "20", "10", "1", "The range ends below its start: 20-10 by 1", "7"},
        {"7", "1", "10", "0", "The step of a range is 1 or more: 1-10 by 0", "7"},
        {"7", "x", "10", "1", "Not an ID or a range: x-10 by 1", "7"},
        {"7", "1", "10000000", "1",
         "The list names more than 5000000 IDs: 1-10000000 by 1", "7"},
    };
    Ed* d = open(24);
    ASSERT_NE(d, nullptr);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.after);
        list(d)->setText(QString::fromLatin1(c.before));
        QString message = "(not pressed)";
        QString title;
        kwtest::AnswerModals([&] { d->OnAddRange(); }, QMessageBox::Ok, [&](QWidget* w) {
            if (auto* range = qobject_cast<CKwDefineRangeDlg*>(w)) {
                title = range->windowTitle();
                range->SetFields(QString::fromLatin1(c.from), QString::fromLatin1(c.to),
                                 QString::fromLatin1(c.step));
                range->OnOK();
                message = range->GetMessage();
            }
        });
        EXPECT_EQ(title, "Define Range");
        EXPECT_EQ(message, QString::fromLatin1(c.message));
        EXPECT_EQ(list(d)->text(), QString::fromLatin1(c.after));
    }
}

} // namespace
