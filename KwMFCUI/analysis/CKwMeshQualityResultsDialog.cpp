#include "CKwMeshQualityResultsDialog.h"

#include "CFMView.h"
#include "CKwMeshQualityResultsModel.h"
#include "CKwTreeManager.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwStyle.h"
#include "ui_CKwMeshQualityResultsDialog.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLayout>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTableView>

CKwMeshQualityResultsDialog::CKwMeshQualityResultsDialog(CKwMeshModel* mesh, CFMView* view,
                                                         KW_UOM* units, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CKwMeshQualityResultsDialog>()), m_units(units)
{
    CheckMeshQuality(mesh, units);
    init(mesh, view);
}

CKwMeshQualityResultsDialog::CKwMeshQualityResultsDialog(CKwMeshModel* mesh, CFMView* view,
                                                         KW_UOM* units,
                                                         CKwUIMeshQualityResults* results,
                                                         QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::CKwMeshQualityResultsDialog>()), m_units(units)
{
    if (results)
        TakeResults(*results);
    m_pCheckedMesh = mesh;
    init(mesh, view);
}

CKwMeshQualityResultsDialog::~CKwMeshQualityResultsDialog() = default;

void CKwMeshQualityResultsDialog::init(CKwMeshModel* mesh, CFMView* view)
{
    KW_LOG_METHOD("CKwMeshQualityResultsDialog::OnInitDialog");
    SetView(view);
    m_pObject = mesh;
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    setProperty("templateId", kTemplateId);
    m_ui->setupUi(this);
    setSizeGripEnabled(true);
    setMinimumSize(kMinWidth, kMinHeight);

    m_model = new CKwMeshQualityResultsModel(this, mesh, m_units, this);
    QTableView* list = m_ui->list;
    // A million rows: fixed row heights and no per-row sizing, so that only painted rows
    // cost anything.
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() + 6);
    list->verticalHeader()->hide();
    list->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    list->horizontalHeader()->setStretchLastSection(true);
    list->setModel(m_model);
    list->horizontalHeader()->setSortIndicatorShown(true);
    list->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    const int widths[] = {70, 100, 90, 70, 70, 70};
    for (int c = 0; c < 6; ++c)
        list->setColumnWidth(c, widths[c]);

    auto* copy = new QAction(this);
    copy->setObjectName(QStringLiteral("copyAction"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    list->addAction(copy);
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copy, &QAction::triggered, this, &CKwMeshQualityResultsDialog::CopySelection);

    connect(m_ui->groupCheck, &QCheckBox::toggled, this,
            &CKwMeshQualityResultsDialog::OnBnClickedMeshQualityGroupCheck);
    connect(m_ui->ok, &QPushButton::clicked, this,
            &CKwMeshQualityResultsDialog::OnBnClickedMeshQualityOk);
    connect(m_ui->highlight, &QPushButton::clicked, this,
            &CKwMeshQualityResultsDialog::OnBnClickedMeshQualityHighlightButton);

    SetTextToCurrentLang();
    m_ui->groupCheck->setChecked(false);
    m_ui->groupName->setText(GetNextGroupName());
    OnBnClickedMeshQualityGroupCheck();
    UpdateResults();
    // Wide enough for every column at its fitted width: the heads are longer in some
    // languages than in English.
    int columns = 0;
    for (int c = 0; c < CKwMeshQualityResultsModel::ColumnCount; ++c)
        columns += list->columnWidth(c);
    const QMargins margins = layout()->contentsMargins();
    const int chrome = 2 * list->frameWidth() + list->verticalScrollBar()->sizeHint().width() +
                       margins.left() + margins.right();
    resize(std::max(620, columns + chrome), 420);
    m_lastAccepted = geometry();
}

QTableView* CKwMeshQualityResultsDialog::ResultsView() const { return m_ui->list; }

QString CKwMeshQualityResultsDialog::GetPageTitleString() const
{
    return KwPropText("MeshQuality", "TitleFailedElements", "Failed Elements");
}

void CKwMeshQualityResultsDialog::SetTextToCurrentLang()
{
    setWindowTitle(GetPageTitleString());
    m_ui->groupCheck->setText(KwPropText("MeshQuality", "LabelCreateGroup", "Create Group"));
    m_ui->groupLabel->setText(KwLabel(KwPropText("MeshQuality", "LabelGroupName", "Group Name")));
    m_ui->highlight->setText(KwPropText("MeshQuality", "ButtonLabelHighlight", "Highlight"));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
    const QList<QAction*> actions = m_ui->list->actions();
    if (!actions.isEmpty())
        actions.first()->setText(KwPropText("MeshQuality", "MenuCopy", "Copy"));
    if (m_model) {
        m_model->RetranslateTexts();
        m_ui->summary->setText(GetSummaryText());
        m_ui->coverage->setText(GetCoverageText());
        // The heads are longer in some languages than the columns' first widths.
        KwStyle::FitHeaders(m_ui->list);
    }
}

QString CKwMeshQualityResultsDialog::GetSummaryText() const
{
    const long failed = static_cast<long>(GetFailedElements().size());
    const long checked = static_cast<long>(GetCheckedElementCount());
    const double share = checked > 0 ? 100.0 * static_cast<double>(failed) / checked : 0.0;
    const QByteArray text =
        KwPropText("MeshQuality", "LabelElementsFailed", "elements failed").toUtf8();
    return QString::asprintf("%ld of %ld %s (%0.2f%s)", failed, checked, text.constData(), share,
                             "%");
}

QString CKwMeshQualityResultsDialog::GetCoverageText() const
{
    QStringList lines;
    const auto count = [](std::size_t n) { return QString::number(static_cast<qulonglong>(n)); };
    if (const std::size_t n = GetParabolicElementCount())
        lines << KwPropText("MeshQuality", "LabelParabolicOnCorners",
                            "Parabolic elements, measured on their corner nodes: %ld")
                     .replace(QStringLiteral("%ld"), count(n));
    if (const std::size_t n = GetUncheckedElementCount())
        lines << KwPropText("MeshQuality", "LabelBeamsNotChecked",
                            "Beam elements, not checked (no quality measure applies to them): %ld")
                     .replace(QStringLiteral("%ld"), count(n));
    return lines.join(QLatin1Char('\n'));
}

void CKwMeshQualityResultsDialog::UpdateResults()
{
    m_model->Reload();
    m_ui->list->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_ui->summary->setText(GetSummaryText());
    const QString coverage = GetCoverageText();
    m_ui->coverage->setText(coverage);
    m_ui->coverage->setVisible(!coverage.isEmpty());
}

QString CKwMeshQualityResultsDialog::GetNextGroupName() const
{
    const QByteArray group = KwPropText("MeshQuality", "LabelGroup", "Group").toUtf8();
    return QString::asprintf("%s%d", group.constData(), GetGroupCounter());
}

bool CKwMeshQualityResultsDialog::UpdateElementGroup()
{
    return SetPendingGroup(m_ui->groupCheck->isChecked(), m_ui->groupName->text());
}

void CKwMeshQualityResultsDialog::OnBnClickedMeshQualityGroupCheck()
{
    m_ui->groupName->setEnabled(m_ui->groupCheck->isChecked());
}

void CKwMeshQualityResultsDialog::showGroupMessage(GroupStatus status)
{
    QString text;
    switch (status) {
    case GroupNameEmpty:
        text = KwErrText("MeshQuality", "GroupNameEmpty", "Enter a name for the group.");
        break;
    case GroupNameUsed:
        text = KwErrText("MeshQuality", "GroupNameUsed", "A group with this name already exists.");
        break;
    case GroupNothingFailed:
        text = KwErrText("MeshQuality", "GroupNothingFailed",
                         "No element failed the checks: there is nothing to gather into a group.");
        break;
    default:
        return;
    }
    const QString message = KwFieldMessage(
        KwPropText("MeshQuality", "LabelGroupName", "Group Name"), text);
    if (CFMView* view = GetView())
        view->ShowBubbleToolTipError(message, 0);
    else
        KwMessageBoxW(this, message, windowTitle(), KwMB::OK | KwMB::ICONWARNING);
    m_ui->groupName->setFocus();
}

void CKwMeshQualityResultsDialog::OnBnClickedMeshQualityOk()
{
    KW_LOG_METHOD("CKwMeshQualityResultsDialog::OnBnClickedMeshQualityOk");
    if (UpdateElementGroup())
        ResetPendingGroup();
    const GroupStatus status = BuildGroups(m_pObject);
    if (status < 0) {
        showGroupMessage(status);
        return;
    }
    if (status == GroupBuilt)
        CKwTreeManager::RefreshModelTree();
    close();
}

void CKwMeshQualityResultsDialog::OnBnClickedMeshQualityHighlightButton()
{
    HighlightFailedElements(GetView());
}

void CKwMeshQualityResultsDialog::CopySelection()
{
    // The rows of the selection's ranges, marked once each. Asking the selection row by row
    // costs a hash lookup per row, far too much after Ctrl+A on a million rows.
    std::vector<int> rows;
    const int count = m_model->rowCount();
    if (QItemSelectionModel* sel = m_ui->list->selectionModel()) {
        const QItemSelection ranges = sel->selection();
        if (!ranges.isEmpty()) {
            std::vector<unsigned char> marked(static_cast<std::size_t>(count), 0);
            for (const QItemSelectionRange& range : ranges)
                for (int r = std::max(range.top(), 0); r <= range.bottom() && r < count; ++r)
                    marked[static_cast<std::size_t>(r)] = 1;
            for (int r = 0; r < count; ++r)
                if (marked[static_cast<std::size_t>(r)])
                    rows.push_back(r);
        }
    }
    QApplication::clipboard()->setText(m_model->CopyText(std::move(rows)));
}

bool CKwMeshQualityResultsDialog::OnSizing(QRect* proposed)
{
    if (!proposed)
        return false;
    if (proposed->width() < kMinWidth || proposed->height() < kMinHeight) {
        *proposed = m_lastAccepted;
        return false;
    }
    m_lastAccepted = *proposed;
    return true;
}

void CKwMeshQualityResultsDialog::resizeEvent(QResizeEvent* event)
{
    QRect r = geometry();
    if (!OnSizing(&r) && r.isValid()) {
        // A platform that ignored the minimum: go back to the last size that was accepted.
        resize(r.size());
        return;
    }
    QDialog::resizeEvent(event);
}
