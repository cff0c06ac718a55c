// Language-text formats and the message-box mappings in both directions.
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"

#include "KW_UOM.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QWidget>
#include <gtest/gtest.h>

TEST(LanguageText, formatsLabelsTitlesAndFieldMessages)
{
    EXPECT_EQ(KwLabel(QStringLiteral("Name")), QStringLiteral("Name:"));
    EXPECT_EQ(KwTitleWithName(QStringLiteral("Table Data"), QStringLiteral("Curve 1")),
              QStringLiteral("Table Data - 'Curve 1'"));
    EXPECT_EQ(KwFieldMessage(QStringLiteral("Size:"), QStringLiteral("Invalid")),
              QStringLiteral("Size: - \n 'Invalid'"));
    // Arguments holding % markers must come through untouched.
    EXPECT_EQ(KwTitleWithName(QStringLiteral("%1"), QStringLiteral("%2")),
              QStringLiteral("%1 - '%2'"));
}

TEST(LanguageText, englishDefaultsWithoutTranslation)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_EQ(KwPropText("General", "LabelName", "Name"), QStringLiteral("Name"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
    EXPECT_EQ(KwPropText("General", "ButtonCancel", "Cancel"), QStringLiteral("Abbrechen"));
    EXPECT_EQ(KwPropText("General", "NoSuchKey", "Fallback"), QStringLiteral("Fallback"));
    // The same key in another family is another text.
    EXPECT_EQ(KwErrText("General", "ButtonCancel", "Cancel"), QStringLiteral("Cancel"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST(LanguageText, setsControlsByIdAndSkipsMissingOnes)
{
    QWidget root;
    auto* label = new QLabel(&root);
    auto* check = new QCheckBox(&root);
    auto* group = new QGroupBox(&root);
    KwSetControlId(label, 1419);
    KwSetControlId(check, 7675);
    KwSetControlId(group, 7116);
    const KwTextRow rows[] = {
        {1419, "General", "LabelName", "Name", true},
        {7675, "Constraints", "CheckboxFixRadialDirection", "Fix Radial Direction", false},
        {7116, "Constraints", "GroupDegreesofFreedom", "Degrees of Freedom", false},
        {9999, "General", "LabelID", "ID", true},
    };
    KwApplyTextTable(&root, rows);
    EXPECT_EQ(label->text(), QStringLiteral("Name:"));
    EXPECT_EQ(check->text(), QStringLiteral("Fix Radial Direction"));
    EXPECT_EQ(group->title(), QStringLiteral("Degrees of Freedom"));
    EXPECT_EQ(KwGetControlText(&root, 1419), QStringLiteral("Name:"));
    EXPECT_FALSE(KwSetControlText(&root, 9999, QStringLiteral("x")));
    EXPECT_EQ(KwGetControlText(nullptr, 1419), QString());
    EXPECT_EQ(KwFindControl(nullptr, 1), nullptr);
}

namespace {
bool g_offered = false;
bool offered() { return g_offered; }
} // namespace

TEST(LanguageText, tableRowsReachToolTipsUnitLabelsAndComboItemsAndKeepTheChosenRow)
{
    QWidget root;
    auto* label = new QLabel(&root);
    auto* combo = new QComboBox(&root);
    KwSetControlId(label, 1530);
    KwSetControlId(combo, 1417);
    KW_UOM units;
    const KwTextRow rows[] = {
        {1530, "Constraints", "LabelThermalConstraint", "Temperature", KwTextTarget::UnitLabel,
         KwTextLookup::Prop, KwUnitKind::Temperature},
        {1530, "Subcases", "TreeCategoryText", "Subcases", KwTextTarget::ToolTip,
         KwTextLookup::Tree},
        {1417, "Constraints", "DropDownStructural", "Structural", KwTextTarget::Item},
        {1417, "Constraints", "DropDownPin", "Pin", KwTextTarget::Item},
        {1417, "Constraints", "DropDownRigidExplicit", "Rigid(Explicit", KwTextTarget::Item,
         KwTextLookup::Prop, 0, offered},
    };
    int changes = 0;
    QObject::connect(combo, &QComboBox::currentIndexChanged, [&] { ++changes; });
    KwApplyTextTable(&root, rows, &units);
    EXPECT_EQ(label->text(), QStringLiteral("Temperature (%1):").arg(units.GetUnits(KwUnitKind::Temperature)));
    EXPECT_EQ(label->toolTip(), QStringLiteral("Subcases"));
    EXPECT_EQ(combo->count(), 2);
    combo->setCurrentIndex(1);
    changes = 0;
    // A second pass (a language switch) refills the items and keeps the chosen row silently.
    g_offered = true;
    KwApplyTextTable(&root, rows, &units);
    EXPECT_EQ(combo->count(), 3);
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_EQ(changes, 0);
    g_offered = false;
}

TEST(MessageBoxMapping, styleBitsChooseIconAndButtons)
{
    const struct
    {
        unsigned style;
        QMessageBox::Icon icon;
        QMessageBox::StandardButtons buttons;
    } cases[] = {
        {0x00, QMessageBox::NoIcon, QMessageBox::Ok},
        {0x41, QMessageBox::Information, QMessageBox::Ok | QMessageBox::Cancel},
        {0x24, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No},
        {0x10, QMessageBox::Critical, QMessageBox::Ok},
        {0x33, QMessageBox::Warning, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel},
        {0x02, QMessageBox::NoIcon,
         QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore},
        {0x05, QMessageBox::NoIcon, QMessageBox::Retry | QMessageBox::Cancel},
        {0x0F, QMessageBox::NoIcon, QMessageBox::Ok},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(KwStyleToIcon(c.style), c.icon) << c.style;
        EXPECT_EQ(KwStyleToButtons(c.style), c.buttons) << c.style;
    }
}

TEST(MessageBoxMapping, pressedButtonsGiveResultCodes)
{
    const struct
    {
        QMessageBox::StandardButton button;
        int result;
    } cases[] = {{QMessageBox::Ok, 1},    {QMessageBox::Cancel, 2}, {QMessageBox::Abort, 3},
                 {QMessageBox::Retry, 4}, {QMessageBox::Ignore, 5}, {QMessageBox::Yes, 6},
                 {QMessageBox::No, 7},    {QMessageBox::Close, 8},  {QMessageBox::Help, 2}};
    for (const auto& c : cases)
        EXPECT_EQ(KwButtonToResult(c.button), c.result) << c.button;
}

TEST(ControlLookup, followsControlsAddedRenumberedOrDeletedAfterTheFirstLookup)
{
    QWidget root;
    auto* a = new QLabel(&root);
    KwSetControlId(a, 10);
    EXPECT_EQ(KwFindControl(&root, 10), a);
    auto* b = new QLabel(&root);
    KwSetControlId(b, 11);
    EXPECT_EQ(KwFindControl(&root, 11), b);
    KwSetControlId(a, 12);
    EXPECT_EQ(KwFindControl(&root, 10), nullptr);
    EXPECT_EQ(KwFindControl(&root, 12), a);
    delete b;
    EXPECT_EQ(KwFindControl(&root, 11), nullptr);
    // A template set up into the dialog later carries its ids as plain properties.
    auto* panel = new QWidget(&root);
    auto* c = new QLabel(panel);
    c->setProperty(kKwCtrlIdProperty, 11);
    EXPECT_EQ(KwFindControl(&root, 11), c);
    // The same id in a second dialog belongs to that dialog only.
    QWidget other;
    auto* d = new QLabel(&other);
    KwSetControlId(d, 11);
    EXPECT_EQ(KwFindControl(&other, 11), d);
    EXPECT_EQ(KwFindControl(&root, 11), c);
}
