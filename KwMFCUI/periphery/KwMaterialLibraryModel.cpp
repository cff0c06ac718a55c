#include "KwMaterialLibraryModel.h"

#include "KW_UOM.h"
#include "KwLangText.h"
#include "KwMaterialDatabase.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"
#include "KwStyle.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <cmath>

namespace {

bool sameBound(double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; }

} // namespace

bool KwMaterialFilter::operator==(const KwMaterialFilter& o) const
{
    return type == o.type && category == o.category && name == o.name && key == o.key &&
           sameBound(low, o.low) && sameBound(high, o.high);
}

KwMaterialLibraryModel::KwMaterialLibraryModel(QObject* parent) : QAbstractTableModel(parent)
{
    Relabel();
}

int KwMaterialLibraryModel::AddMaterials(const QString& file, const QList<CKwMaterial>& materials)
{
    QSet<QString> names;
    names.reserve(int(m_all.size()));
    for (const KwLibraryMaterial& m : m_all)
        names.insert(m.folded);
    m_all.reserve(m_all.size() + std::size_t(materials.size()));
    int added = 0;
    for (int i = 0; i < materials.size(); ++i) {
        const CKwMaterial& material = materials[i];
        QString folded = material.GetName().toCaseFolded();
        if (names.contains(folded))
            continue;
        names.insert(folded);
        m_all.push_back({material, file, i, std::move(folded), material.m_category.trimmed()});
        ++added;
    }
    if (added > 0)
        refilter();
    return added;
}

int KwMaterialLibraryModel::AddFolder(const QString& folder, QStringList* refused)
{
    const QDir dir(folder);
    int added = 0;
    for (const char* pattern : {"*.kwimat", "*.svrmat", "*.sldmat", "*.xml"}) {
        const QFileInfoList files =
            dir.entryInfoList({QString::fromLatin1(pattern)}, QDir::Files | QDir::Readable,
                              QDir::Name | QDir::IgnoreCase);
        for (const QFileInfo& f : files) {
            const KwMaterialDatabase::ReadResult r =
                KwMaterialDatabase::ReadFile(f.absoluteFilePath());
            if (!r.ok) {
                if (refused)
                    *refused << QStringLiteral("%1: %2").arg(f.fileName(), r.error);
                continue;
            }
            added += AddMaterials(f.absoluteFilePath(), r.materials);
        }
    }
    return added;
}

void KwMaterialLibraryModel::Clear()
{
    beginResetModel();
    m_all.clear();
    m_shown.clear();
    endResetModel();
}

void KwMaterialLibraryModel::SetFilter(const KwMaterialFilter& filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    refilter();
}

void KwMaterialLibraryModel::SetUnits(const KW_UOM* units)
{
    m_units = units;
    Relabel();
}

void KwMaterialLibraryModel::SetValueKey(int key)
{
    if (key < 0 || key >= KwMaterialKeys::Count || key == m_valueKey)
        return;
    m_valueKey = key;
    Relabel();
}

int KwMaterialLibraryModel::ValueKey() const
{
    return m_filter.key >= 0 && m_filter.key < KwMaterialKeys::Count ? m_filter.key : m_valueKey;
}

int KwMaterialLibraryModel::IndexOfShownRow(int row) const
{
    return row >= 0 && row < ShownCount() ? m_shown[std::size_t(row)] : -1;
}

int KwMaterialLibraryModel::ShownRowOf(int index) const
{
    const auto it = std::lower_bound(m_shown.begin(), m_shown.end(), index);
    return it != m_shown.end() && *it == index ? int(it - m_shown.begin()) : -1;
}

std::vector<std::pair<int, QStringList>> KwMaterialLibraryModel::Categories() const
{
    std::vector<std::pair<int, QStringList>> out;
    for (int type = 0; type < CKwMaterial::TypeCount; ++type) {
        QStringList categories;
        bool any = false;
        for (const KwLibraryMaterial& m : m_all) {
            if (m.material.GetMaterialType() != type)
                continue;
            any = true;
            if (!m.category.isEmpty() && !categories.contains(m.category))
                categories << m.category;
        }
        if (any)
            out.emplace_back(type, categories);
    }
    return out;
}

void KwMaterialLibraryModel::Relabel()
{
    m_typeTexts.clear();
    for (int type = 0; type < CKwMaterial::TypeCount; ++type)
        m_typeTexts << KwMaterialTypeText(type);
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

bool KwMaterialLibraryModel::passes(const KwLibraryMaterial& m, const QString& needle) const
{
    const KwMaterialFilter& f = m_filter;
    if (f.type >= 0 && m.material.GetMaterialType() != f.type)
        return false;
    if (!f.category.isEmpty() && m.category != f.category)
        return false;
    if (f.key >= 0 && (!std::isnan(f.low) || !std::isnan(f.high))) {
        const double v = m.material.GetValue(f.key);
        if (IsMissingValue(v) || !std::isfinite(v))
            return false;
        if (!std::isnan(f.low) && v < f.low)
            return false;
        if (!std::isnan(f.high) && v > f.high)
            return false;
    }
    return needle.isEmpty() || m.folded.contains(needle);
}

void KwMaterialLibraryModel::refilter()
{
    beginResetModel();
    const QString needle = m_filter.name.trimmed().toCaseFolded();
    m_shown.clear();
    m_shown.reserve(m_all.size());
    for (std::size_t i = 0; i < m_all.size(); ++i)
        if (passes(m_all[i], needle))
            m_shown.push_back(int(i));
    endResetModel();
}

int KwMaterialLibraryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ShownCount();
}

int KwMaterialLibraryModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant KwMaterialLibraryModel::data(const QModelIndex& index, int role) const
{
    const int at = index.isValid() ? IndexOfShownRow(index.row()) : -1;
    if (at < 0)
        return {};
    const KwLibraryMaterial& m = m_all[std::size_t(at)];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(index.column() == ColValue ? KwStyle::NumberAlignment
                                                              : KwStyle::TextAlignment);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case ColName: return m.material.GetName();
    case ColType: return m_typeTexts.value(m.material.GetMaterialType());
    case ColCategory: return m.category;
    case ColValue: {
        const int key = ValueKey();
        return KwMaterialKeys::FormatValue(m.material.GetValue(key), KwMaterialKeys::UnitKind(key),
                                           m_units);
    }
    default: return {};
    }
}

QVariant KwMaterialLibraryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(section == ColValue ? KwStyle::NumberAlignment
                                                       : KwStyle::TextAlignment);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case ColName: return KwPropText("General", "LabelName", "Name");
    case ColType: return KwPropText("General", "LabelType", "Type");
    case ColCategory: return KwPropText("MaterialLibrary", "ColumnCategory", "Category");
    case ColValue: {
        const int key = ValueKey();
        return KwStyle::WithUnit(KwMaterialKeys::Label(key), KwMaterialKeys::UnitLabel(key, m_units));
    }
    default: return {};
    }
}
