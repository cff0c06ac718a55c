#pragma once
// "Solver Input Preview": what each entity of an analysis becomes in the solver's input before
// it runs, a table per entity family (materials, properties, constraints, loads per subcase,
// contacts, masses, connectors) with the deck keyword, the value as the model holds it in the
// user's units and the number the deck carries in its own unit system, which the window states.
// What the deck leaves out is listed too; a deck that cannot be written shows why.
#include "KwSolverDeck.h"

#include <QAbstractTableModel>
#include <QDialog>

class CKwAnalysis;
class CKwFEModel;
class KW_UOM;
class QTabWidget;
class QLabel;

// The rows of one family as a table: subcase (constraints and loads), entity, keyword,
// quantity, model value with its unit, and the deck's text.
class KwDeckRowModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Subcase = 0, Entity, Keyword, Quantity, ModelValue, DeckValue, ColumnCount };
    KwDeckRowModel(std::vector<KwDeckRow> rows, bool perSubcase, const KW_UOM* units,
                   const QString& deckUnits, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // The value column's text of a row: the model's value in the user's units.
    QString ModelText(int row) const;

private:
    std::vector<KwDeckRow> m_rows;
    bool m_perSubcase;
    const KW_UOM* m_units;
    QString m_deckUnits;
};

class KwDeckPreview : public QDialog
{
    Q_OBJECT
public:
    KwDeckPreview(const CKwFEModel& model, const CKwAnalysis& analysis, const KW_UOM* units,
                  QWidget* parent = nullptr);
    const KwSolverDeck& Deck() const { return m_deck; }
    QTabWidget* Tabs() const { return m_tabs; }
    // The table model of a family (KwDeckRow::Family).
    KwDeckRowModel* FamilyModel(int family) const { return m_models[std::size_t(family)]; }

    // The family's tab title in the current language.
    static QString FamilyTitle(int family);

private:
    KwSolverDeck m_deck;
    QTabWidget* m_tabs = nullptr;
    std::vector<KwDeckRowModel*> m_models;
};
