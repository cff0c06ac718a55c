#include "CKwNonlinearParametersDlg.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwiCKAddin.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"
#include "ui_CKwNonlinearParametersDlg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace {

using Dlg = CKwNonlinearParametersDlg;
using NL = CKwNonlinearSetup;

constexpr const char* kSection = "NonlinearParametersDlg";
constexpr int kMethodAutoTransient = 2;
constexpr float kNone = std::numeric_limits<float>::infinity();

int labelOf(int fieldId)
{
    return fieldId + Dlg::kLabelIdOffset;
}

// What a field holds and how it is read.
enum class FieldKind
{
    Integer, // whole number, bounds below
    Real,    // single-precision number, bounds below
    Node,    // node identifier of the analysed mesh
    Number,  // any single-precision number
};

// When a field takes part in the check; a field that does not stays missing.
enum class When
{
    Always,
    UnlessTransientAuto, // the stiffness update count has no meaning under transient AUTO
    MaxIterChecked,
    DisplacementChecked,
    LoadChecked,
    WorkChecked,
    TransientStepping, // transient, method blank or ADAPT
    Static,
    Transient,
    NodeEntered, // a termination node passed its own check
};

// Message texts, all of them language texts.
enum class Msg
{
    A,
    B,
    C,
    D,
    E
};

// One field of the setup: where it is shown, where it is stored, when and how it is checked.
// The rows are in check order; the first failing row stops the check.
struct FieldCheck
{
    int field; // edit control
    int label; // control whose current text leads the message
    FieldKind kind;
    When when;
    int slot; // index into the setup's integers (Integer, Node) or reals (Real, Number)
    float lo; // lower bound, -kNone for none
    bool loIncl;
    float hi; // upper bound, kNone for none
    bool hiIncl;
    float loTransient; // lower bound in the transient variant where it differs, else NaN
    Msg msg;
    const char* format;
};

constexpr float kSame = std::numeric_limits<float>::quiet_NaN();
constexpr const char* kFmtA = "%s - \n '%s'";
constexpr const char* kFmtB = "%s - \n '%s >= 0'";
constexpr const char* kFmtD = "%s - \n %s";
constexpr const char* kFmtE = "%s - \n '%s'";

// Three messages do not word the bound that is enforced (stepping bounds, time ratio, and the
// rotation in the static variant); the bounds and the wordings are both kept as they are.
const FieldCheck kChecks[] = {
    {Dlg::IDC_KSTEP, labelOf(Dlg::IDC_KSTEP), FieldKind::Integer, When::UnlessTransientAuto,
     NL::IntStiffnessUpdateSteps, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_MAXITER, Dlg::IDC_CHECK_MAXITER, FieldKind::Integer, When::MaxIterChecked,
     NL::IntMaxIterations, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_MAXDIV, labelOf(Dlg::IDC_MAXDIV), FieldKind::Integer, When::Always,
     NL::IntMaxDivergence, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_MAXUBIS, labelOf(Dlg::IDC_MAXUBIS), FieldKind::Integer, When::Always,
     NL::IntMaxUnbisecting, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_MAXLS, labelOf(Dlg::IDC_MAXLS), FieldKind::Integer, When::Always,
     NL::IntMaxLineSearches, 0, true, kNone, false, kSame, Msg::B, kFmtB},
    {Dlg::IDC_MAXBIS, labelOf(Dlg::IDC_MAXBIS), FieldKind::Integer, When::Always,
     NL::IntMaxBisections, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_ADJUST, labelOf(Dlg::IDC_ADJUST), FieldKind::Integer, When::TransientStepping,
     NL::IntSkipFactor, 0, true, kNone, false, kSame, Msg::B, kFmtB},
    {Dlg::IDC_MSTEP, labelOf(Dlg::IDC_MSTEP), FieldKind::Integer, When::TransientStepping,
     NL::IntDominantPeriodSteps, 10, true, 200, true, kSame, Msg::C,
     "%s - \n '%s 10 <= value <= 200 ' "},
    // The node's message is led by the dominant-period label, not the node's own: intended.
    {Dlg::IDC_TDG, labelOf(Dlg::IDC_MSTEP), FieldKind::Node, When::Always, NL::IntTerminationNode,
     0, false, kNone, false, kSame, Msg::D, kFmtD},
    {Dlg::IDC_DISPLACEMENT_TOL, Dlg::IDC_CHECK_DISPLACEMENT, FieldKind::Real,
     When::DisplacementChecked, NL::RealDisplacementTolerance, 0, false, kNone, false, kSame,
     Msg::A, kFmtA},
    {Dlg::IDC_LOAD_TOL, Dlg::IDC_CHECK_LOAD, FieldKind::Real, When::LoadChecked,
     NL::RealLoadTolerance, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_WORK_TOL, Dlg::IDC_CHECK_WORK, FieldKind::Real, When::WorkChecked,
     NL::RealWorkTolerance, 0, false, kNone, false, kSame, Msg::A, kFmtA},
    {Dlg::IDC_FSTRESS, labelOf(Dlg::IDC_FSTRESS), FieldKind::Real, When::Always,
     NL::RealFractionOfStress, 0, false, 1, false, kSame, Msg::C,
     "%s - \n '%s 0.0 < value < 1.0 '"},
    {Dlg::IDC_INITIAL_INCREMENT, labelOf(Dlg::IDC_INITIAL_INCREMENT), FieldKind::Real, When::Static,
     NL::RealInitialIncrement, 0, false, 1, false, kSame, Msg::C,
     "%s - \n '%s 0.0 < value < 1.0 '"},
    {Dlg::IDC_MIN_INCREMENT, labelOf(Dlg::IDC_MIN_INCREMENT), FieldKind::Real, When::Static,
     NL::RealMinIncrement, 0, false, 1, false, kSame, Msg::C, "%s - \n '%s 0.0 < value < 1.0 '"},
    {Dlg::IDC_MAX_INCREMENT, labelOf(Dlg::IDC_MAX_INCREMENT), FieldKind::Real, When::Static,
     NL::RealMaxIncrement, 0, false, 1, false, kSame, Msg::C, "%s - \n '%s 0.0 < value < 1.0 '"},
    {Dlg::IDC_LSTOL, labelOf(Dlg::IDC_LSTOL), FieldKind::Real, When::Always,
     NL::RealLineSearchTolerance, 0.01f, false, 0.9f, true, kSame, Msg::C,
     "%s - \n '%s 0.01 < value <= 0.9 '"},
    {Dlg::IDC_RB, labelOf(Dlg::IDC_RB), FieldKind::Real, When::TransientStepping,
     NL::RealSteppingBounds, 0.1f, true, 1, true, kSame, Msg::C,
     "%s - \n '%s 0.0 <= value <= 1.0 '"},
    {Dlg::IDC_MAXR, labelOf(Dlg::IDC_MAXR), FieldKind::Real, When::Transient, NL::RealMaxTimeRatio,
     1, true, 32, true, kSame, Msg::C, "%s - \n '%s 1.0 < value < 32.0 '"},
    {Dlg::IDC_UTOL, labelOf(Dlg::IDC_UTOL), FieldKind::Real, When::Transient,
     NL::RealFilterTolerance, 0.001f, false, 1, true, kSame, Msg::C,
     "%s - \n '%s 0.001 < value <= 1.0 '"},
    {Dlg::IDC_RTOLB, labelOf(Dlg::IDC_RTOLB), FieldKind::Real, When::Always, NL::RealMaxRotation, 0,
     false, kNone, false, 2, Msg::C, "%s - \n '%s > 2.0 '"},
    {Dlg::IDC_TDV, labelOf(Dlg::IDC_TDV), FieldKind::Number, When::NodeEntered,
     NL::RealTerminationValue, -kNone, false, kNone, false, kSame, Msg::E, kFmtE},
};
static_assert(std::size(kChecks) == 22);

QString messageText(Msg m)
{
    switch (m) {
    case Msg::A:
        return KwErrText("General", "InvalidInput",
                         "Invalid Input. The entered value should be > 0");
    case Msg::B:
        return KwErrText("General", "InvalidInput2", "Invalid Input: The entered value should be");
    case Msg::C:
        return KwErrText("General", "InvalidInput2", "Invalid Input: The entered value should be:");
    case Msg::D:
        return KwErrText("ResultXYPlot", "ValidNode", "Please enter a valid node ID.");
    case Msg::E:
        return KwErrText("General", "ERROR", "ERROR");
    }
    return QString();
}

// Puts `first` and `second` in place of the format's two "%s", in order; whatever the texts
// themselves contain is left alone.
QString formatMessage(const char* format, const QString& first, const QString& second)
{
    const QString f = QString::fromLatin1(format);
    const qsizetype a = f.indexOf(QLatin1String("%s"));
    const qsizetype b = f.indexOf(QLatin1String("%s"), a + 2);
    return f.left(a) + first + f.mid(a + 2, b - a - 2) + second + f.mid(b + 2);
}

bool withinBounds(double v, float lo, bool loIncl, float hi, bool hiIncl)
{
    const bool aboveLo = loIncl ? v >= lo : v > lo;
    const bool belowHi = hiIncl ? v <= hi : v < hi;
    return aboveLo && belowHi;
}

// A box holding only blanks counts as empty; blanks around a number make it no number.
bool isEmptyText(const QString& t)
{
    return t.trimmed().isEmpty();
}
bool isPlainNumber(const QString& t)
{
    return t == t.trimmed() && IsNumber(t);
}

// The integer in a field, or nothing when the text is not one (within int's range).
std::optional<int> readInteger(const QString& t)
{
    if (!isPlainNumber(t))
        return std::nullopt;
    const int v = CFMView::GetIntegerFromString(t);
    if (IsMissingValue(v))
        return std::nullopt;
    return v;
}

// The number in a field narrowed to single precision, or nothing when it is not a number or
// cannot be kept as one (beyond single range, or the host's missing sentinel itself).
std::optional<float> readReal(const QString& t)
{
    if (!isPlainNumber(t))
        return std::nullopt;
    const double d = CFMView::GetDoubleFromString(nullptr, t, -1, 0);
    const float f = static_cast<float>(d);
    if (IsMissingValue(d) || !std::isfinite(f) || IsMissingValue(f))
        return std::nullopt;
    return f;
}

const char* const kStaticMethods[] = {"", "AUTO", "ITER", "SEMI"};
const char* const kTransientMethods[] = {"", "ADAPT", "AUTO", "TSTEP"};
const char* const kComponents[] = {"", "TX", "TY", "TZ", "RX", "RY", "RZ", "MAXT", "MAXR"};

const int kLoadIncrementControls[] = {
    Dlg::IDC_INITIAL_INCREMENT, labelOf(Dlg::IDC_INITIAL_INCREMENT),
    Dlg::IDC_MIN_INCREMENT,     labelOf(Dlg::IDC_MIN_INCREMENT),
    Dlg::IDC_MAX_INCREMENT,     labelOf(Dlg::IDC_MAX_INCREMENT),
};

const KwTextRow kTexts[] = {
    {Dlg::IDC_GROUP_SETUP, kSection, "GroupSetup", "Nonlinear setup", false},
    {labelOf(Dlg::IDC_METHOD), kSection, "NLMethod", "Stiffness update method", true},
    {Dlg::IDC_CHECK_MAXITER, kSection, "NLMaxITER", "Maximum iterations for an increment", true},
    {labelOf(Dlg::IDC_RTOLB), kSection, "NLRTOLB", "Maximum incremental rotation (Degree)", true},
    {Dlg::IDC_GROUP_TERMINATION, kSection, "GroupTremination", "Termination control", false},
    {labelOf(Dlg::IDC_TDV), kSection, "NLTDV", "Terminate on displacement value", true},
    {labelOf(Dlg::IDC_TDG), kSection, "NLTDG", "Terminate on displacement of Node", true},
    {labelOf(Dlg::IDC_TDC), kSection, "NLTDC", "Terminate on displacement component", true},
    {Dlg::IDC_GROUP_CONVDIV, kSection, "GroupConvDiv", "Convergence-Divergence", false},
    {Dlg::IDC_LABEL_CRITERIA, kSection, "NLConvergenceCriteria",
     "Convergence criteria and Error tolerances", true},
    {Dlg::IDC_CHECK_DISPLACEMENT, "NLStatus", "LabelDisplacement", "Displacement", false},
    {Dlg::IDC_CHECK_LOAD, "NLStatus", "LabelLoad", "Load", false},
    {Dlg::IDC_CHECK_WORK, "NLStatus", "LabelWork", "Work", false},
    {labelOf(Dlg::IDC_MAXDIV), kSection, "NLMaxDiv", "Maximum divergence conditions per iteration",
     true},
    {labelOf(Dlg::IDC_MAXUBIS), kSection, "NLMaxUBIS",
     "Maximum iterations for unbisecting load increment", true},
    {labelOf(Dlg::IDC_MAXLS), kSection, "NLMaxLS", "Maximum line searches for an iteration", true},
    {labelOf(Dlg::IDC_LSTOL), kSection, "NLLSTol", "Line search tolerance", true},
    {labelOf(Dlg::IDC_MAXBIS), kSection, "NLMaxBIS", "Maximum bisections for each increment", true},
    {labelOf(Dlg::IDC_FSTRESS), kSection, "NLFStress", "Fraction of effective stress", true},
    {labelOf(Dlg::IDC_INITIAL_INCREMENT), kSection, "LabelInitialLoadIncrement",
     "Initial load increment", true},
    {labelOf(Dlg::IDC_MIN_INCREMENT), kSection, "LabelMinLoadIncrement", "Minimum load increment",
     true},
    {labelOf(Dlg::IDC_MAX_INCREMENT), kSection, "LabelMaxLoadIncrement", "Maximum load increment",
     true},
    {Dlg::IDC_GROUP_DYNAMIC, kSection, "DynamicOptions", "Dynamic Options", false},
    {labelOf(Dlg::IDC_MSTEP), kSection, "NLMStep", "Steps to obtain dominant period", true},
    {labelOf(Dlg::IDC_ADJUST), kSection, "NLAdjust", "Skip factor for time step adjustment", true},
    {labelOf(Dlg::IDC_RB), kSection, "NLRB", "Bounds for stepping function", true},
    {labelOf(Dlg::IDC_MAXR), kSection, "NLMaxR", "Maximum ratio of incremental time to time step",
     true},
    {labelOf(Dlg::IDC_UTOL), kSection, "NLUTol", "Tolerance on displacement to filter time step",
     true},
    {Dlg::IDC_BUTTON_OK, "General", "ButtonOk", "OK", false},
    {2, "General", "ButtonCancel", "Cancel", false},
    {Dlg::IDC_HELP_BUTTON, "General", "ButtonHelp", "Help", false},
};

} // namespace

CKwNonlinearParametersDlg::CKwNonlinearParametersDlg(CKwNonlinearSetup* setup, QWidget* parent)
    : CKwMFCDialog(7218, nullptr, parent), m_ui(std::make_unique<Ui::CKwNonlinearParametersDlg>()),
      m_pSetup(setup), m_nAnalysisType(setup ? setup->GetAnalysisType() : 0)
{
    m_ui->setupUi(this);
    connect(m_ui->ok, &QPushButton::clicked, this, &Dlg::OnButtonOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);
    connect(m_ui->help, &QPushButton::clicked, this, &Dlg::OnBnClickedHelp);
    connect(m_ui->comboMethod, &QComboBox::currentIndexChanged, this, &Dlg::OnSelchangeMethod);
    // Only a click clears the box or writes AUTO; filling it from the setup must not.
    connect(m_ui->checkMaxIter, &QCheckBox::clicked, this, &Dlg::OnCheckMaxITER);
    connect(m_ui->checkDisplacement, &QCheckBox::toggled, this, &Dlg::OnCheckDisplacement);
    connect(m_ui->checkLoad, &QCheckBox::toggled, this, &Dlg::OnCheckLoad);
    connect(m_ui->checkWork, &QCheckBox::toggled, this, &Dlg::OnCheckWork);
    if (!setup)
        SetCloseAtOnce(true);
}

CKwNonlinearParametersDlg::~CKwNonlinearParametersDlg() = default;

bool CKwNonlinearParametersDlg::OnInitDialog()
{
    KW_LOG_METHOD("CKwNonlinearParametersDlg::OnInitDialog");
    const bool transient = IsTransient();
    m_ui->groupDynamic->setVisible(transient);
    for (int id : kLoadIncrementControls)
        if (QWidget* w = KwFindControl(this, id))
            w->setVisible(!transient);
    fillCombos();
    fillFields();
    OnSelchangeMethod();
    OnCheckDisplacement();
    OnCheckLoad();
    OnCheckWork();
    return CKwMFCDialog::OnInitDialog();
}

void CKwNonlinearParametersDlg::fillCombos()
{
    auto fill = [](QComboBox* c, const auto& items, int index) {
        const QSignalBlocker block(c);
        c->clear();
        for (const char* t : items)
            c->addItem(QString::fromLatin1(t));
        c->setCurrentIndex(index >= 0 && index < c->count() ? index : 0);
    };
    if (IsTransient())
        fill(m_ui->comboMethod, kTransientMethods, m_pSetup ? m_pSetup->m_methodIndex : 0);
    else
        fill(m_ui->comboMethod, kStaticMethods, m_pSetup ? m_pSetup->m_methodIndex : 0);
    fill(m_ui->comboComponent, kComponents, m_pSetup ? m_pSetup->m_componentIndex : 0);
}

void CKwNonlinearParametersDlg::fillFields()
{
    if (!m_pSetup)
        return;
    for (const FieldCheck& c : kChecks) {
        auto* edit = KwControl<QLineEdit>(this, c.field);
        if (!edit)
            continue;
        QString text;
        if (c.kind == FieldKind::Integer || c.kind == FieldKind::Node) {
            const int v = m_pSetup->m_integers[static_cast<std::size_t>(c.slot)];
            if (!IsMissingValue(v))
                text = QString::asprintf("%d", v);
        } else {
            const float v = m_pSetup->m_reals[static_cast<std::size_t>(c.slot)];
            if (!IsMissingValue(v))
                text = QString::asprintf("%.6g", static_cast<double>(v));
        }
        edit->setText(text);
    }
    const bool autoIter = IsMissingValue(m_pSetup->m_integers[NL::IntMaxIterations]);
    m_ui->checkMaxIter->setChecked(!autoIter);
    m_ui->editMaxIter->setEnabled(!autoIter);
    if (autoIter)
        m_ui->editMaxIter->setText(QStringLiteral("AUTO"));
    m_ui->checkDisplacement->setChecked(m_pSetup->m_convergence[NL::ConvDisplacement]);
    m_ui->checkLoad->setChecked(m_pSetup->m_convergence[NL::ConvLoad]);
    m_ui->checkWork->setChecked(m_pSetup->m_convergence[NL::ConvWork]);
}

void CKwNonlinearParametersDlg::SetTextToCurrentLang()
{
    SetControlNames();
}

void CKwNonlinearParametersDlg::SetControlNames()
{
    const bool transient = IsTransient();
    const QString title =
        transient ? KwPropText(kSection, "TransientTitle", "Nonlinear transient parameters")
                  : KwPropText(kSection, "StaticTitle", "Nonlinear static parameters");
    setWindowTitle(KwTitleWithName(title, m_pSetup ? m_pSetup->GetName() : QString()));
    KwApplyTextTable(this, kTexts);
    // The two keys are crossed: the static variant counts iterations under the transient key
    // and the other way round. Translations are keyed that way.
    const QString kstep =
        transient ? KwPropText(kSection, "NLStaticKStep", "Time steps before stiffness update")
                  : KwPropText(kSection, "NLTransientKStep", "Iterations before stiffness update");
    KwSetControlText(this, labelOf(IDC_KSTEP), KwLabel(kstep));
}

void CKwNonlinearParametersDlg::OnSelchangeMethod()
{
    if (!IsTransient()) {
        m_ui->editKStep->setEnabled(true);
        return;
    }
    const int method = m_ui->comboMethod->currentIndex();
    m_ui->editKStep->setEnabled(method != kMethodAutoTransient);
    const bool stepping = method == 0 || method == 1;
    m_ui->editDominantSteps->setEnabled(stepping);
    m_ui->editSkipFactor->setEnabled(stepping);
    m_ui->editSteppingBounds->setEnabled(stepping);
}

void CKwNonlinearParametersDlg::OnCheckMaxITER()
{
    const bool on = m_ui->checkMaxIter->isChecked();
    m_ui->editMaxIter->setEnabled(on);
    if (on)
        m_ui->editMaxIter->clear();
    else
        m_ui->editMaxIter->setText(QStringLiteral("AUTO"));
}

void CKwNonlinearParametersDlg::enableFromCheck(int checkId, int editId)
{
    auto* check = KwControl<QCheckBox>(this, checkId);
    if (QWidget* edit = KwFindControl(this, editId))
        edit->setEnabled(check && check->isChecked());
}

void CKwNonlinearParametersDlg::OnCheckDisplacement()
{
    enableFromCheck(IDC_CHECK_DISPLACEMENT, IDC_DISPLACEMENT_TOL);
}

void CKwNonlinearParametersDlg::OnCheckLoad()
{
    enableFromCheck(IDC_CHECK_LOAD, IDC_LOAD_TOL);
}

void CKwNonlinearParametersDlg::OnCheckWork()
{
    enableFromCheck(IDC_CHECK_WORK, IDC_WORK_TOL);
}

void CKwNonlinearParametersDlg::OnBnClickedHelp()
{
    if (TheApplication)
        TheApplication->ShowHelp(IsTransient() ? QStringLiteral("TSTEPNL")
                                               : QStringLiteral("NLPARM"));
}

void CKwNonlinearParametersDlg::OnOK() {}

void CKwNonlinearParametersDlg::OnButtonOK()
{
    KW_LOG_METHOD("CKwNonlinearParametersDlg::OnButtonOK");
    if (!CheckParameters())
        return;
    if (m_pSetup) {
        m_pSetup->m_methodIndex = m_ui->comboMethod->currentIndex();
        m_pSetup->m_componentIndex = m_ui->comboComponent->currentIndex();
        m_pSetup->m_convergence = {m_ui->checkDisplacement->isChecked(),
                                   m_ui->checkLoad->isChecked(), m_ui->checkWork->isChecked()};
    }
    if (IsModalDialog())
        QDialog::done(QDialog::Accepted);
    else
        DestroyWindow();
}

bool CKwNonlinearParametersDlg::CheckParameters()
{
    KW_LOG_METHOD("CKwNonlinearParametersDlg::CheckParameters");
    std::array<int, NL::IntegerCount> integers;
    std::array<float, NL::RealCount> reals;
    integers.fill(MissingInteger);
    reals.fill(MissingFloat);

    const bool transient = IsTransient();
    const int method = m_ui->comboMethod->currentIndex();
    const CKwSubCase* subcase = m_pSetup ? m_pSetup->GetSubCase() : nullptr;
    const CKwAnalysis* analysis = subcase ? subcase->GetAnalysis() : nullptr;

    auto applies = [&](When w) {
        switch (w) {
        case When::Always:
            return true;
        case When::UnlessTransientAuto:
            return !(transient && method == kMethodAutoTransient);
        case When::MaxIterChecked:
            return m_ui->checkMaxIter->isChecked();
        case When::DisplacementChecked:
            return m_ui->checkDisplacement->isChecked();
        case When::LoadChecked:
            return m_ui->checkLoad->isChecked();
        case When::WorkChecked:
            return m_ui->checkWork->isChecked();
        case When::TransientStepping:
            return transient && (method == 0 || method == 1);
        case When::Static:
            return !transient;
        case When::Transient:
            return transient;
        case When::NodeEntered:
            return !IsMissingValue(integers[NL::IntTerminationNode]);
        }
        return false;
    };

    for (const FieldCheck& c : kChecks) {
        if (!applies(c.when))
            continue;
        const QString text = KwGetControlText(this, c.field);
        if (isEmptyText(text))
            continue;
        const float lo = transient && !std::isnan(c.loTransient) ? c.loTransient : c.lo;
        bool ok = false;
        switch (c.kind) {
        case FieldKind::Integer:
            if (const auto v = readInteger(text);
                v && withinBounds(*v, lo, c.loIncl, c.hi, c.hiIncl)) {
                integers[static_cast<std::size_t>(c.slot)] = *v;
                ok = true;
            }
            break;
        case FieldKind::Node:
            if (const auto v = readInteger(text);
                v && *v > 0 && analysis && analysis->IsValidUserId(*v)) {
                integers[static_cast<std::size_t>(c.slot)] = *v;
                ok = true;
            }
            break;
        case FieldKind::Real:
        case FieldKind::Number:
            if (const auto v = readReal(text);
                v && withinBounds(*v, lo, c.loIncl, c.hi, c.hiIncl)) {
                reals[static_cast<std::size_t>(c.slot)] = *v;
                ok = true;
            }
            break;
        }
        if (!ok) {
            showFieldError(
                formatMessage(c.format, KwGetControlText(this, c.label), messageText(c.msg)));
            return false;
        }
    }
    if (m_pSetup) {
        m_pSetup->m_integers = integers;
        m_pSetup->m_reals = reals;
    }
    return true;
}

void CKwNonlinearParametersDlg::showFieldError(const QString& message)
{
    CFMView* view = GetFMView();
    for (QWidget* w = parentWidget(); w && !view; w = w->parentWidget())
        view = qobject_cast<CFMView*>(w);
    if (!view && parentWidget())
        view = parentWidget()->window()->findChild<CFMView*>();
    if (view) {
        view->ShowBubbleToolTipError(message, 0);
        return;
    }
    // A host that gave no view still has to hear why OK did nothing.
    KwMessageBoxW(this, message, KwProductDisplayName(), KwMB::OK | KwMB::ICONERROR);
}
