#include "CNLstatusDialog.h"

#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "KwStyle.h"
#include "ui_CNLstatusDialog.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>
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
    m_elapsed = m_ui->valueElapsed;
    for (QLabel* l : m_values)
        l->setAlignment(KwStyle::NumberAlignment);
    m_elapsed->setAlignment(KwStyle::NumberAlignment);
    // The percentage is written over the bar on purpose, centred, in the bar's own colours.
    for (QProgressBar* bar : m_bars) {
        bar->setAlignment(Qt::AlignCenter);
        bar->setProperty("kwOverlay", true);
    }
    // Two blocks: the counters with the clock, then the bars, a rule and a group's space apart.
    KwStyle::ApplyDialogLayout(m_ui->grid);
    m_ui->grid->setHorizontalSpacing(KwStyle::ColumnSpacing);
    m_ui->grid->setVerticalSpacing(KwStyle::RowSpacing);
    m_ui->grid->setRowMinimumHeight(4, KwStyle::GroupSpacing);
    m_tick = new QTimer(this);
    // A few ticks a second: the shown second turns over within a quarter of a second of the
    // clock's, and the text only changes when the second does.
    m_tick->setInterval(250);
    connect(m_tick, &QTimer::timeout, this, &CNLstatusDialog::showElapsed);
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
    m_ui->labelElapsed->setText(
        KwLabel(KwPropText("NLStatus", "LabelElapsedTime", "Elapsed time")));
    applyStepLabel();
    fitValueBoxes();
}

void CNLstatusDialog::fitValueBoxes()
{
    // Wide enough for a solver's longest values: a signed number in exponent form, or a count
    // of a hundred thousand and more.
    const QFontMetrics fm(m_values[0]->font());
    const int text = qMax(fm.horizontalAdvance(QStringLiteral("-1.234567e+08")),
                          KwStyle::CharsWidth(fm, KwStyle::NumberFieldChars));
    const int frame = 2 * (m_values[0]->frameWidth() + m_values[0]->margin()) + 8;
    for (QLabel* l : m_values)
        l->setMinimumWidth(qMax(l->minimumWidth(), text + frame));
    m_elapsed->setMinimumWidth(qMax(m_elapsed->minimumWidth(), text + frame));
}

QString CNLstatusDialog::ElapsedText(qint64 milliseconds)
{
    const qint64 s = qMax<qint64>(0, milliseconds) / 1000;
    return QStringLiteral("%1:%2:%3")
        .arg(s / 3600)
        .arg(s / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(s % 60, 2, 10, QLatin1Char('0'));
}

void CNLstatusDialog::showElapsed()
{
    const QString text = ElapsedText(m_clock.isValid() ? m_clock.elapsed() : 0);
    if (m_elapsed->text() != text)
        m_elapsed->setText(text);
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
    m_tick->stop();
    m_clock.invalidate();
    showElapsed();
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
    // The run's clock starts with its first line and ticks on its own between lines, so the
    // time shown moves on while the solver works on a long step.
    if (!m_clock.isValid())
        m_clock.start();
    if (!m_tick->isActive())
        m_tick->start();
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
    showElapsed();
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
