#include "CKwMaterialBrowserDlg.h"

#include "CKwMaterialCompareDlg.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "CKwMFCUIBase.h"
#include "KwMaterialDatabase.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialKeys.h"
#include "KwMessageBox.h"
#include "KwStyle.h"
#include "KwWarningDismissal.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr const char* kSection = "MaterialLibrary";
// The tree's items carry their type (-1 for all) and category.
constexpr int kTypeRole = Qt::UserRole;
constexpr int kCategoryRole = Qt::UserRole + 1;

// The properties a range can be set on, in the order of the list: the ones engineers look up
// a material by.
constexpr int kRangeKeys[] = {
    KwMaterialKeys::EX,    KwMaterialKeys::NUXY, KwMaterialKeys::GXY,   KwMaterialKeys::DENS,
    KwMaterialKeys::SIGXT, KwMaterialKeys::SIGXC, KwMaterialKeys::SIGXY, KwMaterialKeys::ALPX,
    KwMaterialKeys::KX,    KwMaterialKeys::C,     KwMaterialKeys::E1,    KwMaterialKeys::E2,
};

} // namespace

CKwMaterialBrowserDlg::CKwMaterialBrowserDlg(KW_UOM* units, QWidget* parent)
    : CKwMFCDialog(kTemplateId, nullptr, parent), m_units(units),
      m_model(new KwMaterialLibraryModel(this))
{
    m_model->SetUnits(units);
    auto* outer = new QVBoxLayout(this);

    auto* split = new QSplitter(Qt::Horizontal, this);
    m_categories = new QTreeWidget(split);
    KwSetControlId(m_categories, IDC_CATEGORIES);
    m_categories->setHeaderHidden(true);
    m_categories->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), 30));
    auto* right = new QWidget(split);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    auto label = [&](int id) {
        auto* l = new QLabel(right);
        KwSetControlId(l, id);
        return l;
    };
    // The library files listed, in the column of the fields below, with the button that adds one.
    m_libraryLabel = label(IDC_LABEL_LIBRARY);
    m_library = label(IDC_LIBRARY);
    m_library->setProperty("kwData", true);
    m_library->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* open = new QPushButton(right);
    KwSetControlId(open, IDC_OPEN_LIBRARY);
    auto* libraryRow = new QHBoxLayout;
    libraryRow->addWidget(m_library, 1);
    libraryRow->addWidget(open);
    grid->addWidget(m_libraryLabel, 0, 0);
    grid->addLayout(libraryRow, 0, 1);
    m_search = new QLineEdit(right);
    KwSetControlId(m_search, IDC_NAME);
    m_search->setClearButtonEnabled(true);
    m_property = new QComboBox(right);
    KwSetControlId(m_property, IDC_PROPERTY);
    m_minimum = new QLineEdit(right);
    KwSetControlId(m_minimum, IDC_MINIMUM);
    m_maximum = new QLineEdit(right);
    KwSetControlId(m_maximum, IDC_MAXIMUM);
    const int number = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QLineEdit* e : {m_minimum, m_maximum}) {
        e->setFixedWidth(number);
        e->setAlignment(KwStyle::NumberAlignment);
    }
    m_minimumUnit = label(IDC_MINIMUM_UNIT);
    m_maximumUnit = label(IDC_MAXIMUM_UNIT);
    m_minimumUnit->setProperty("kwData", true); // a unit symbol, the same in every language
    m_maximumUnit->setProperty("kwData", true);
    const std::pair<int, QWidget*> rows[] = {{IDC_LABEL_NAME, m_search},
                                             {IDC_LABEL_PROPERTY, m_property},
                                             {IDC_LABEL_MINIMUM, m_minimum},
                                             {IDC_LABEL_MAXIMUM, m_maximum}};
    for (int r = 0; r < 4; ++r) {
        QLabel* l = label(rows[r].first);
        l->setBuddy(rows[r].second);
        grid->addWidget(l, r + 1, 0);
        const bool numberRow = r >= 2;
        if (numberRow) {
            auto* field = new QHBoxLayout;
            field->addWidget(rows[r].second);
            field->addWidget(r == 2 ? m_minimumUnit : m_maximumUnit);
            field->addStretch(1);
            grid->addLayout(field, r + 1, 1);
        } else {
            grid->addWidget(rows[r].second, r + 1, 1);
        }
    }
    KwStyle::ApplyFormGrid(grid);
    rightLayout->addLayout(grid);

    m_list = new QTableView(right);
    KwSetControlId(m_list, IDC_LIST);
    m_list->setModel(m_model);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->verticalHeader()->hide();
    m_list->setWordWrap(false);
    m_list->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->setMinimumHeight(fontMetrics().height() * 20);
    rightLayout->addWidget(m_list, 1);
    m_count = label(IDC_COUNT);
    m_count->setProperty("kwData", true);
    rightLayout->addWidget(m_count);
    split->addWidget(m_categories);
    split->addWidget(right);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    outer->addWidget(split, 1);

    auto* buttons = new QHBoxLayout;
    m_compare = new QPushButton(this);
    KwSetControlId(m_compare, IDC_COMPARE);
    buttons->addWidget(m_compare);
    buttons->addStretch(1);
    auto* ok = new QPushButton(this);
    KwSetControlId(ok, 1);
    ok->setDefault(true);
    auto* cancel = new QPushButton(this);
    KwSetControlId(cancel, 2);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    outer->addLayout(buttons);

    connect(ok, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(cancel, &QPushButton::clicked, this, [this] { OnCancel(); });
    connect(open, &QPushButton::clicked, this, [this] { OpenLibrary(); });
    connect(m_compare, &QPushButton::clicked, this, [this] { Compare(); });
    connect(m_search, &QLineEdit::textChanged, this, &CKwMaterialBrowserDlg::SetSearchText);
    connect(m_list, &QTableView::doubleClicked, this, [this] { OnOK(); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_compare->setEnabled(selectedIndices().size() == 2); });
    connect(m_categories, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (!item)
            return;
        KwMaterialFilter f = m_model->GetFilter();
        f.type = item->data(0, kTypeRole).toInt();
        f.category = item->data(0, kCategoryRole).toString();
        m_model->SetFilter(f);
        keepAChoice();
    });
    connect(m_property, &QComboBox::currentIndexChanged, this, [this] { applyRange(); });
    for (QLineEdit* e : {m_minimum, m_maximum})
        connect(e, &QLineEdit::editingFinished, this, [this] { applyRange(); });
    // Typing narrows the list; the arrows move through what is left.
    m_search->installEventFilter(this);
    m_compare->setEnabled(false);
}

CKwMaterialBrowserDlg::~CKwMaterialBrowserDlg() = default;

bool CKwMaterialBrowserDlg::OnInitDialog()
{
    SetTextToCurrentLang();
    keepAChoice();
    SizeAndPlace();
    m_search->setFocus();
    // Files of the folder that are no libraries are named once the browser stands.
    if (!m_refused.isEmpty())
        QTimer::singleShot(0, this, [this] {
            const QStringList refused = std::exchange(m_refused, {});
            KwAdvisoryBox(this, QStringLiteral("MaterialLibraryUnreadFiles"),
                          KwErrText(kSection, "UnreadFiles",
                                    "These files of the library folder are no material libraries "
                                    "and are not listed: %1")
                              .arg(refused.join(QStringLiteral("; "))),
                          windowTitle());
        });
    return true;
}

void CKwMaterialBrowserDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText(kSection, "Title", "Material Library"));
    KwSetControlText(this, IDC_LABEL_LIBRARY, KwLabel(KwPropText(kSection, "LabelLibrary", "Library")));
    KwSetControlText(this, IDC_OPEN_LIBRARY,
                     KwPropText(kSection, "ButtonOpenLibrary", "Open Library..."));
    KwSetControlText(this, IDC_LABEL_NAME, KwLabel(KwPropText("General", "LabelName", "Name")));
    m_search->setPlaceholderText(KwPropText(kSection, "PromptSearch", "Part of a name"));
    KwSetControlText(this, IDC_LABEL_PROPERTY,
                     KwLabel(KwPropText(kSection, "LabelProperty", "Property")));
    KwSetControlText(this, IDC_LABEL_MINIMUM, KwLabel(KwPropText(kSection, "LabelMinimum", "Minimum")));
    KwSetControlText(this, IDC_LABEL_MAXIMUM, KwLabel(KwPropText(kSection, "LabelMaximum", "Maximum")));
    KwSetControlText(this, IDC_COMPARE, KwPropText(kSection, "ButtonCompare", "Compare..."));
    m_compare->setToolTip(
        KwPropText(kSection, "TooltipCompare", "Select two materials to compare them side by side"));
    KwSetControlText(this, 1, KwPropText("General", "ButtonOk", "OK"));
    KwSetControlText(this, 2, KwPropText("General", "ButtonCancel", "Cancel"));
    {
        const QSignalBlocker block(m_property);
        const int row = std::max(0, m_property->currentIndex());
        m_property->clear();
        for (int key : kRangeKeys)
            m_property->addItem(KwMaterialKeys::Label(key), key);
        m_property->setCurrentIndex(row);
    }
    const QString unit = KwMaterialKeys::UnitLabel(m_property->currentData().toInt(), m_units);
    m_minimumUnit->setText(unit);
    m_maximumUnit->setText(unit);
    QStringList names;
    for (const QString& f : m_files)
        names << QFileInfo(f).fileName();
    m_library->setText(names.join(QStringLiteral(", ")));
    m_library->setToolTip(m_files.join(QLatin1Char('\n')));
    m_model->Relabel();
    fillCategories();
    updateCount();
    fitColumns();
}

void CKwMaterialBrowserDlg::fitColumns()
{
    // Name, type and category as wide as their longest text in the whole library (measured
    // once per library or language, not per filter: the list may hold ten thousand); the value
    // takes the rest.
    const QFontMetrics fm(m_list->font());
    const int pad = KwStyle::CellPadding + 2 * m_list->style()->pixelMetric(QStyle::PM_FocusFrameHMargin);
    QHeaderView* head = m_list->horizontalHeader();
    for (int c = KwMaterialLibraryModel::ColName; c < KwMaterialLibraryModel::ColValue; ++c) {
        int width = fm.horizontalAdvance(
                        m_model->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString()) +
                    2 * pad;
        for (int i = 0; i < m_model->TotalCount(); ++i) {
            const KwLibraryMaterial& m = m_model->At(i);
            const QString text = c == KwMaterialLibraryModel::ColName   ? m.material.GetName()
                                 : c == KwMaterialLibraryModel::ColType ? KwMaterialTypeText(m.material.GetMaterialType())
                                                                        : m.category;
            width = std::max(width, fm.horizontalAdvance(text) + pad);
        }
        head->resizeSection(c, std::min(width, KwStyle::CharsWidth(fm, 60)));
    }
    const int value =
        fm.horizontalAdvance(
            m_model->headerData(KwMaterialLibraryModel::ColValue, Qt::Horizontal, Qt::DisplayRole)
                .toString()) +
        2 * pad;
    int total = 2 * m_list->frameWidth() + m_list->verticalScrollBar()->sizeHint().width() + value;
    for (int c = KwMaterialLibraryModel::ColName; c < KwMaterialLibraryModel::ColValue; ++c)
        total += head->sectionSize(c);
    m_list->setMinimumWidth(total);
    // The tree as wide as its deepest, longest item.
    m_categories->resizeColumnToContents(0);
    m_categories->setMinimumWidth(m_categories->columnWidth(0) + 2 * m_categories->frameWidth() +
                                  m_categories->verticalScrollBar()->sizeHint().width());
}

bool CKwMaterialBrowserDlg::AddFolder(const QString& folder)
{
    QStringList refused;
    const int added = m_model->AddFolder(folder, &refused);
    m_refused << refused;
    if (added > 0 && !m_files.contains(folder))
        m_files << QDir::toNativeSeparators(folder);
    SetTextToCurrentLang();
    keepAChoice();
    return added > 0;
}

int CKwMaterialBrowserDlg::AddFile(const QString& path, bool showMessage)
{
    const KwMaterialDatabase::ReadResult r = KwMaterialDatabase::ReadFile(path);
    if (!r.ok) {
        m_lastMessage = KwErrText(kSection, "NotALibrary", "'%1' is not a material library: %2")
                            .arg(QFileInfo(path).fileName(), r.error);
        if (showMessage)
            KwMessageBoxW(this, m_lastMessage, windowTitle(), KwMB::OK | KwMB::ICONERROR);
        return 0;
    }
    const int added = m_model->AddMaterials(path, r.materials);
    if (!m_files.contains(path))
        m_files << path;
    if (added == 0 && showMessage)
        KwAdvisoryBox(this, QStringLiteral("MaterialLibraryNothingNew"),
                      KwErrText(kSection, "NothingNew",
                                "Every material of '%1' is listed already: a name listed once is "
                                "not listed again.")
                          .arg(QFileInfo(path).fileName()),
                      windowTitle());
    SetTextToCurrentLang();
    keepAChoice();
    return added;
}

void CKwMaterialBrowserDlg::OpenLibrary()
{
    QString path;
    if (m_chooser) {
        path = m_chooser();
    } else {
        QFileDialog dlg(this, QString(), KwMaterialDatabase::DatabaseFolder());
        dlg.setNameFilters(CKwMFCUIBase::FileDialogFilters(
            KwPropText("Materials", "FilterExchangeFiles",
                       "Material Libraries (*.kwimat *.xml)|*.kwimat;*.xml|") +
            KwPropText("Materials", "FilterCADMaterialFiles",
                       "CAD Material Files (*.sldmat)|*.sldmat|") +
            KwPropText("Materials", "FilterMaterialFiles", "Material Files (*.svrmat)|*.svrmat|")));
        dlg.setFileMode(QFileDialog::ExistingFile);
        if (dlg.exec() == QDialog::Accepted && !dlg.selectedFiles().isEmpty())
            path = dlg.selectedFiles().first();
    }
    if (path.isEmpty())
        return;
    KwMaterialDatabase::RememberFolder(QFileInfo(path).absolutePath());
    AddFile(path);
}

void CKwMaterialBrowserDlg::fillCategories()
{
    const int type = m_model->GetFilter().type;
    const QString category = m_model->GetFilter().category;
    const QSignalBlocker block(m_categories);
    m_categories->clear();
    auto* all = new QTreeWidgetItem(m_categories, {KwPropText(kSection, "TreeAll", "All Materials")});
    all->setData(0, kTypeRole, -1);
    QTreeWidgetItem* current = all;
    for (const auto& [t, categories] : m_model->Categories()) {
        auto* typeItem = new QTreeWidgetItem(all, {KwMaterialTypeText(t)});
        typeItem->setData(0, kTypeRole, t);
        if (t == type && category.isEmpty())
            current = typeItem;
        for (const QString& c : categories) {
            auto* item = new QTreeWidgetItem(typeItem, {c});
            item->setData(0, kTypeRole, t);
            item->setData(0, kCategoryRole, c);
            if (t == type && c == category)
                current = item;
        }
    }
    m_categories->expandAll();
    m_categories->setCurrentItem(current);
}

bool CKwMaterialBrowserDlg::SelectCategory(int type, const QString& category)
{
    for (QTreeWidgetItemIterator it(m_categories); *it; ++it) {
        if ((*it)->data(0, kTypeRole).toInt() == type &&
            (*it)->data(0, kCategoryRole).toString() == category) {
            m_categories->setCurrentItem(*it);
            return true;
        }
    }
    return false;
}

void CKwMaterialBrowserDlg::SetSearchText(const QString& text)
{
    if (m_search->text() != text)
        m_search->setText(text); // comes back here through textChanged
    KwMaterialFilter f = m_model->GetFilter();
    f.name = text;
    m_model->SetFilter(f);
    keepAChoice();
}

bool CKwMaterialBrowserDlg::SetRange(int key, const QString& minimum, const QString& maximum)
{
    const int row = m_property->findData(key);
    if (row < 0)
        return false;
    {
        const QSignalBlocker block(m_property);
        m_property->setCurrentIndex(row);
    }
    m_minimum->setText(minimum);
    m_maximum->setText(maximum);
    applyRange();
    return m_lastMessage.isEmpty();
}

void CKwMaterialBrowserDlg::applyRange()
{
    m_lastMessage.clear();
    const int key = m_property->currentData().toInt();
    const QString unit = KwMaterialKeys::UnitLabel(key, m_units);
    m_minimumUnit->setText(unit);
    m_maximumUnit->setText(unit);
    const KW_UOM si;
    const KW_UOM* units = m_units ? m_units : &si;
    const int kind = KwMaterialKeys::UnitKind(key);
    double bounds[2];
    const std::pair<QLineEdit*, const char*> sides[] = {{m_minimum, "Minimum"},
                                                        {m_maximum, "Maximum"}};
    for (int i = 0; i < 2; ++i) {
        const QString text = sides[i].first->text().trimmed();
        bounds[i] = std::numeric_limits<double>::quiet_NaN();
        if (text.isEmpty())
            continue;
        if (!units->ReadInternalValue(text, kind, &bounds[i])) {
            showError(KwPropText(kSection, i == 0 ? "LabelMinimum" : "LabelMaximum", sides[i].second),
                      units->GetErrorMessageForUnit(text, kind));
            sides[i].first->setFocus();
            return;
        }
    }
    if (!std::isnan(bounds[0]) && !std::isnan(bounds[1]) && bounds[0] > bounds[1]) {
        showError(KwPropText(kSection, "LabelMinimum", "Minimum"),
                  KwErrText(kSection, "MinimumAboveMaximum",
                            "The minimum must not lie above the maximum."));
        m_minimum->setFocus();
        return;
    }
    KwMaterialFilter f = m_model->GetFilter();
    f.key = key;
    f.low = bounds[0];
    f.high = bounds[1];
    m_model->SetValueKey(key);
    m_model->SetFilter(f);
    keepAChoice();
}

void CKwMaterialBrowserDlg::showError(const QString& label, const QString& message)
{
    m_lastMessage = KwFieldMessage(label, message);
    if (CFMView* view = GetFMView()) {
        view->ShowBubbleToolTipError(m_lastMessage, 0);
        return;
    }
    if (isVisible())
        KwMessageBoxW(this, m_lastMessage, windowTitle(), KwMB::OK | KwMB::ICONERROR);
}

bool CKwMaterialBrowserDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            const QModelIndex current = m_list->currentIndex();
            const int row = current.isValid() ? current.row() : -1;
            ChooseShownRow(std::clamp(row + (key == Qt::Key_Up ? -1 : 1), 0,
                                      std::max(0, m_model->ShownCount() - 1)));
            return true;
        }
    }
    return CKwMFCDialog::eventFilter(watched, event);
}

bool CKwMaterialBrowserDlg::ChooseShownRow(int row)
{
    if (row < 0 || row >= m_model->ShownCount())
        return false;
    m_list->selectRow(row);
    m_list->setCurrentIndex(m_model->index(row, 0));
    m_list->scrollTo(m_model->index(row, 0));
    m_chosen = m_model->IndexOfShownRow(row);
    return true;
}

bool CKwMaterialBrowserDlg::SelectShownRows(int first, int second)
{
    if (first < 0 || second < 0 || first == second || std::max(first, second) >= ShownCount())
        return false;
    ChooseShownRow(first);
    m_list->selectionModel()->select(m_model->index(second, 0),
                                     QItemSelectionModel::Select | QItemSelectionModel::Rows);
    return true;
}

QList<int> CKwMaterialBrowserDlg::selectedIndices() const
{
    QList<int> out;
    for (const QModelIndex& i : m_list->selectionModel()->selectedRows())
        out << m_model->IndexOfShownRow(i.row());
    std::sort(out.begin(), out.end());
    return out;
}

void CKwMaterialBrowserDlg::keepAChoice()
{
    // The chosen material stays chosen while it is shown; when the filter hid it, the first
    // row left is chosen.
    const int row = m_model->ShownRowOf(m_chosen);
    if (row >= 0)
        ChooseShownRow(row);
    else if (!ChooseShownRow(0))
        m_chosen = -1;
    if (auto* ok = KwControl<QPushButton>(this, 1))
        ok->setEnabled(m_chosen >= 0);
    updateCount();
}

void CKwMaterialBrowserDlg::updateCount()
{
    m_count->setText(KwPropText(kSection, "LabelShownCount", "%1 of %2 materials")
                         .arg(m_model->ShownCount())
                         .arg(m_model->TotalCount()));
}

int CKwMaterialBrowserDlg::GetChosen() const
{
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid() || !m_list->selectionModel()->isRowSelected(current.row(), {}))
        return m_model->ShownRowOf(m_chosen) >= 0 ? m_chosen : -1;
    return m_model->IndexOfShownRow(current.row());
}

const KwLibraryMaterial* CKwMaterialBrowserDlg::GetChosenMaterial() const
{
    const int i = GetChosen();
    return i >= 0 ? &m_model->At(i) : nullptr;
}

bool CKwMaterialBrowserDlg::Compare()
{
    const QList<int> two = selectedIndices();
    if (two.size() != 2)
        return false;
    CKwMaterialCompareDlg dlg(m_model->At(two[0]).material, m_model->At(two[1]).material, m_units,
                              this);
    dlg.DoModal();
    return true;
}

void CKwMaterialBrowserDlg::OnOK()
{
    m_chosen = GetChosen();
    if (m_chosen < 0)
        return; // nothing is shown to choose: the browser stays
    CKwMFCDialog::OnOK();
}
