#include "KwMaterialPanels.h"

#include "KwControls.h"
#include "KwLangText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

QLabel* KwAddStiffnessGrid(QWidget* parent, QGridLayout* grid, int cellIdBase, int headIdBase,
                           int minWidth, bool readOnly,
                           std::array<QLineEdit*, CKwMaterial::MatrixSize>* cells)
{
    QPalette shown = parent->palette();
    shown.setColor(QPalette::Base, shown.color(QPalette::Window));
    int k = 0;
    for (int r = 0; r < 6; ++r)
        for (int c = r; c < 6; ++c) {
            auto* cell = new QLineEdit(parent);
            cell->setMinimumWidth(minWidth);
            if (readOnly) {
                cell->setReadOnly(true);
                cell->setPalette(shown);
            }
            KwSetControlId(cell, cellIdBase + k);
            if (cells)
                (*cells)[std::size_t(k)] = cell;
            ++k;
            grid->addWidget(cell, r + 1, c);
        }
    QLabel* head = nullptr;
    for (int c = 0; c < 7; ++c) {
        head = new QLabel(parent);
        head->setProperty("kwData", true);
        if (c < 6)
            head->setText(QStringLiteral("%1(Gij)").arg(c + 1));
        KwSetControlId(head, headIdBase + c);
        grid->addWidget(head, 0, c);
    }
    return head;
}

QString KwAijToolTip(int extra)
{
    if (extra == CKwMaterial::A10)
        return KwPropText("Materials", "ToolTipA10", "A10");
    if (extra == CKwMaterial::A01)
        return KwPropText("Materials", "ToolTipA01", "A01");
    return CKwMaterial::ExtraKey(extra);
}

KwAijGrid KwMakeAijGrid(QWidget* parent, int cellIdBase, int unitId, int titleId)
{
    KwAijGrid out;
    out.widget = new QWidget(parent);
    auto* grid = new QGridLayout(out.widget);
    grid->setContentsMargins(0, 0, 0, 0);
    auto* title = new QLabel(KwPropText("Materials", "LabelDistortionalDeformationConstants",
                                       "Distortional Deformation Constants(Aij)"),
                             out.widget);
    KwSetControlId(title, titleId);
    grid->addWidget(title, 0, 0, 1, 6);
    // Heads: i down the side, j across the top.
    auto* corner = new QLabel(QStringLiteral("i \\ j"), out.widget);
    corner->setProperty("kwData", true);
    grid->addWidget(corner, 1, 0);
    for (int n = 0; n <= 3; ++n) {
        auto* across = new QLabel(QString::number(n), out.widget);
        auto* down = new QLabel(QString::number(n), out.widget);
        for (QLabel* head : {across, down}) {
            head->setProperty("kwData", true);
            head->setAlignment(Qt::AlignCenter);
        }
        grid->addWidget(across, 1, n + 1);
        grid->addWidget(down, n + 2, 0);
    }
    out.unit = new QLabel(out.widget);
    out.unit->setProperty("kwData", true);
    KwSetControlId(out.unit, unitId);
    grid->addWidget(out.unit, 2, 5);
    // The extras A10 ... A03 in their own order, each at (i, j) from its symbol.
    for (int e = CKwMaterial::A10; e <= CKwMaterial::A03; ++e) {
        const QString symbol = CKwMaterial::ExtraKey(e);
        auto* cell = new QLineEdit(out.widget);
        cell->setMinimumWidth(70);
        cell->setToolTip(KwAijToolTip(e));
        KwSetControlId(cell, cellIdBase + e);
        grid->addWidget(cell, symbol.at(1).digitValue() + 2, symbol.at(2).digitValue() + 1);
        out.cells[std::size_t(e)] = cell;
    }
    for (int c = 1; c <= 4; ++c)
        grid->setColumnStretch(c, 1);
    return out;
}

void KwEnableAijCells(const KwAijGrid& grid, int model)
{
    // The constants each model is built from; Ogden takes its moduli and exponents instead.
    using E = CKwMaterial::Extra;
    static constexpr std::array<unsigned, CKwMaterial::HyperelasticModelCount> kUsed = {
        1u << E::A10,                               // Neo-Hookean
        1u << E::A10 | 1u << E::A01,                // Mooney-Rivlin
        1u << E::A10 | 1u << E::A20 | 1u << E::A30, // Yeoh
        0u,                                         // Ogden
        (1u << (E::A03 + 1)) - 1,                   // Polynomial
    };
    const unsigned used = model >= 0 && model < int(kUsed.size()) ? kUsed[model] : 0u;
    for (int e = E::A10; e <= E::A03; ++e)
        if (QLineEdit* cell = grid.cells[std::size_t(e)])
            cell->setEnabled((used >> e) & 1u);
}
