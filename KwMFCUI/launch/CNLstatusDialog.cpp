#include "CNLstatusDialog.h"

#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "ui_CNLstatusDialog.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QProgressBar>
#include <QScreen>
#include <algorithm>
#include <limits>

namespace {

// Leading integer of a field the way the solver writes it: blanks, a sign, digits; anything
// after the digits is ignored, no digits give 0, and values beyond int saturate.
int leadingInt(QStringView s)
{
    qsizetype i = 0;
    while (i < s.size() && s[i].isSpace())
        ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-'))
        negative = s[i++] == u'-';
    qint64 v = 0;
    for (; i < s.size() && s[i] >= u'0' && s[i] <= u'9'; ++i) {
        v = v * 10 + (s[i].unicode() - u'0');
        if (v > qint64(std::numeric_limits<int>::max()) + 1)
            v = qint64(std::numeric_limits<int>::max()) + 1;
    }
    if (negative)
        v = -v;
    return int(std::clamp<qint64>(v, std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max()));
}

// Sets a bar's position the way the progress control's set-position message does: the value
// now, the picture at the next paint. QProgressBar itself repaints at once on most changes,
// which would cost a full paint per solver line.
void setBarPosition(QProgressBar* bar, int position)
{
    const int pos = std::clamp(position, bar->minimum(), bar->maximum());
    if (pos == bar->value())
        return;
    bar->setUpdatesEnabled(false);
    bar->setValue(pos);
    bar->setUpdatesEnabled(true); // schedules the repaint
}

} // namespace

KwProgressLine KwParseProgressLine(const QString& text)
{
    KwProgressLine line;
    const QStringView record = QStringView(text).left(CNLstatusDialog::kProgressLineMax);
    int field = 0;
    // Fields are split without allocating a list: the window takes a line per solver step.
    for (const QStringView token : record.tokenize(u',')) {
        if (field < 3)
            line.values[field] = token.toString();
        else if (field < 6)
            line.positions[field - 3] = leadingInt(token);
        else if (field == 7)
            line.stepType = token.toString();
        if (++field > 7)
            break;
    }
    return line;
}

CNLstatusDialog::CNLstatusDialog(QWidget* parent) : CNLstatusDialog(kTemplateId, parent) {}

CNLstatusDialog::CNLstatusDialog(unsigned templateId, QWidget* parent)
    : CKwMFCDialog(templateId, nullptr, parent), m_ui(std::make_unique<Ui::CNLstatusDialog>())
{
    m_ui->setupUi(this);
    m_values[0] = m_ui->valueSubcase;
    m_values[1] = m_ui->valueIncrement;
    m_values[2] = m_ui->valueIteration;
    m_bars[0] = m_ui->barLoad;
    m_bars[1] = m_ui->barDisplacement;
    m_bars[2] = m_ui->barStep;
    // A status window follows the solver; it never takes the focus from the host's work.
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

CNLstatusDialog::~CNLstatusDialog() = default;

bool CNLstatusDialog::OnInitDialog()
{
    KW_LOG_METHOD("CNLstatusDialog::OnInitDialog");
    SetTextToCurrentLang();
    for (QProgressBar* bar : m_bars) {
        bar->setRange(0, 100);
        bar->setValue(0);
    }
    adjustSize();
    // The status window stands a quarter of the screen in from the left, so that it does not
    // cover the model; its top and size stay as they are.
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int left = screen ? screen->geometry().width() / 4 : 0;
    move(left, pos().y());
    return true;
}

QString CNLstatusDialog::StatusTitle() const
{
    return KwPropText("NLStatus", "Title", "Nonlinear Status");
}

void CNLstatusDialog::SetTextToCurrentLang()
{
    const QString title = StatusTitle();
    setWindowTitle(m_strTitle.isEmpty() ? title : KwTitleWithName(title, m_strTitle));
    m_ui->labelSubcase->setText(KwLabel(KwPropText("NLStatus", "LabelSubcase", "Subcase")));
    m_ui->labelIncrement->setText(
        KwLabel(KwPropText("NLStatus", "LabelIncrement", "Increment")));
    m_ui->labelIteration->setText(
        KwLabel(KwPropText("NLStatus", "LabelIteration", "Iteration")));
    m_ui->labelLoad->setText(
        KwLabel(m_bTemperature
                    ? KwPropText("OptimizationObjective", "DropDownTemperature", "Temperature")
                    : KwPropText("NLStatus", "LabelLoad", "Load")));
    m_ui->labelDisplacement->setText(
        KwLabel(KwPropText("NLStatus", "LabelDisplacement", "Displacement")));
    applyStepLabel();
}

void CNLstatusDialog::applyStepLabel()
{
    const QString step = m_stepType == u'S'
                             ? KwPropText("NLStatus", "LabelSubIncrement", "SubIncrement")
                             : KwPropText("NLStatus", "LabelIncrement", "Increment");
    m_ui->labelStep->setText(KwLabel(step));
}

void CNLstatusDialog::DestroyStatusWindow()
{
    if (m_bWindowDestroyed)
        return;
    m_bWindowDestroyed = true;
    m_bVisible = false;
    hide();
}

void CNLstatusDialog::ResetStatus()
{
    if (!m_bRunning)
        return;
    for (QLabel* l : m_values)
        l->setText(QStringLiteral("1"));
    for (QProgressBar* b : m_bars)
        setBarPosition(b, 0);
    m_bRunning = false;
}

void CNLstatusDialog::showAndRaise()
{
    // A destroyed window still keeps its values and flags, but it never comes back on screen.
    if (m_bWindowDestroyed)
        return;
    show();
    KwBringWindowToTop(this);
    m_raised.start();
}

void CNLstatusDialog::keepOnTop()
{
    // Each line asks for the top of the stack, but a raise is a request to the window system:
    // a few a second keep the window in front without paying for one per solver line.
    if (!isVisible() || (m_raised.isValid() && m_raised.elapsed() < 250))
        return;
    KwBringWindowToTop(this);
    m_raised.start();
}

void CNLstatusDialog::ShowStatus(int value)
{
    const bool wanted = value == 1;
    if (m_bVisible == wanted)
        return;
    m_bVisible = wanted;
    if (wanted)
        showAndRaise();
    else
        hide();
}

void CNLstatusDialog::SetTitleString(const QString& title)
{
    m_strTitle = title;
    SetTextToCurrentLang();
}

void CNLstatusDialog::ProgressLine(const QString& text, bool& titleSet)
{
    m_bRunning = true;
    if (!titleSet) {
        if (!m_bVisible) {
            m_bVisible = true;
            showAndRaise();
        }
        titleSet = true;
        const QString title = StatusTitle();
        setWindowTitle(m_strTitle.isEmpty() ? title : KwTitleWithName(title, m_strTitle));
    }
    keepOnTop();

    const KwProgressLine line = KwParseProgressLine(text);
    for (int i = 0; i < 3; ++i) {
        m_values[i]->setText(line.values[i]);
        // The bar shows what it can: positions outside its range stand at its ends.
        setBarPosition(m_bars[i], line.positions[i]);
    }
    if (line.stepType == QLatin1String("F") || line.stepType == QLatin1String("S")) {
        const QChar type = line.stepType.at(0);
        if (type != m_stepType) {
            m_stepType = type;
            applyStepLabel();
        }
    }
}

void CNLstatusDialog::SetTemperatureLabel()
{
    m_bTemperature = true;
    m_ui->labelLoad->setText(KwLabel(
        KwPropText("OptimizationObjective", "DropDownTemperature", "Temperature")));
}

void CNLstatusDialog::reject()
{
    // Escape or the close button only put the window out of sight; the host owns its life.
    m_bVisible = false;
    hide();
}

void CNLstatusDialog::closeEvent(QCloseEvent* event)
{
    m_bVisible = false;
    event->accept();
}
