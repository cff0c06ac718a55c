#include "KwModelEditorForms.h"

#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace KwForm {

namespace {
template <class W> W* make(QWidget* parent, int id, bool data)
{
    auto* w = new W(parent);
    KwSetControlId(w, id);
    if (data)
        w->setProperty("kwData", true);
    return w;
}
} // namespace

QVBoxLayout* DialogLayout(QWidget* dialog)
{
    auto* l = new QVBoxLayout(dialog);
    l->setSizeConstraint(QLayout::SetFixedSize);
    KwStyle::ApplyDialogLayout(l);
    return l;
}

QGridLayout* FormGrid(QBoxLayout* layout)
{
    auto* g = new QGridLayout();
    g->setContentsMargins(0, 0, 0, 0);
    KwStyle::ApplyFormGrid(g);
    layout->addLayout(g);
    return g;
}

QGroupBox* Group(QWidget* parent, int id, QBoxLayout* into, QGridLayout** grid)
{
    auto* box = make<QGroupBox>(parent, id, false);
    auto* g = new QGridLayout(box);
    KwStyle::ApplyGroupLayout(g);
    KwStyle::ApplyFormGrid(g);
    into->addWidget(box);
    if (grid)
        *grid = g;
    return box;
}

QLabel* Label(QWidget* parent, int id) { return make<QLabel>(parent, id, false); }

QLineEdit* NumberEdit(QWidget* parent, int id, bool triple)
{
    auto* e = make<QLineEdit>(parent, id, true);
    e->setFixedWidth(KwStyle::CharsWidth(e->fontMetrics(), triple ? KwStyle::TripleFieldChars
                                                                  : KwStyle::NumberFieldChars));
    return e;
}

QLineEdit* TextEdit(QWidget* parent, int id) { return make<QLineEdit>(parent, id, true); }
QComboBox* Combo(QWidget* parent, int id) { return make<QComboBox>(parent, id, true); }
QCheckBox* Check(QWidget* parent, int id) { return make<QCheckBox>(parent, id, false); }

QPushButton* Button(QWidget* parent, int id)
{
    auto* b = make<QPushButton>(parent, id, false);
    b->setAutoDefault(false);
    return b;
}

int Row(QGridLayout* grid, QWidget* label, QWidget* field, QWidget* third, bool span)
{
    const int row = grid->rowCount();
    if (label)
        grid->addWidget(label, row, 0, Qt::AlignLeft | Qt::AlignVCenter);
    if (field)
        grid->addWidget(field, row, 1, 1, span ? -1 : 1,
                        span ? Qt::Alignment() : Qt::AlignLeft | Qt::AlignVCenter);
    if (third)
        grid->addWidget(third, row, 2, Qt::AlignLeft | Qt::AlignVCenter);
    return row;
}

void NameAndID(QWidget* parent, QGridLayout* grid)
{
    Row(grid, Label(parent, 1419), TextEdit(parent, 273), nullptr, true);
    Row(grid, Label(parent, 343), NumberEdit(parent, 274));
}

CKwMFCNodeElemSelectionBox* SelectionBox(QWidget* parent, int id)
{
    auto* box = new CKwMFCNodeElemSelectionBox(parent);
    KwSetControlId(box, id);
    // Five lines: a few picks show without the list growing the dialog.
    box->setFixedHeight(box->fontMetrics().lineSpacing() * 5 + 2 * box->frameWidth() + 12);
    return box;
}

void ButtonRow(QWidget* dialog, QBoxLayout* layout, QPushButton* extra)
{
    auto* row = new QHBoxLayout();
    row->setSpacing(KwStyle::ButtonSpacing);
    if (extra)
        row->addWidget(extra);
    row->addStretch(1);
    QPushButton* ok = Button(dialog, 1);
    ok->setDefault(true);
    row->addWidget(ok);
    row->addWidget(Button(dialog, 2));
    layout->addLayout(row);
}

} // namespace KwForm
