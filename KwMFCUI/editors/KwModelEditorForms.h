#pragma once
// Building blocks of the model editors whose controls are made in code: every control carries
// its template id, data fields are marked as data (their texts are the user's, not the
// product's), and rows, groups and the button row take the house margins and widths.
#include <QGridLayout>

class CKwMFCNodeElemSelectionBox;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

namespace KwForm {

// The dialog's top layout (fixed size, house margins).
QVBoxLayout* DialogLayout(QWidget* dialog);
// A grid of label and field columns inside `layout`.
QGridLayout* FormGrid(QBoxLayout* layout);
// A group box with a form grid inside.
QGroupBox* Group(QWidget* parent, int id, QBoxLayout* into, QGridLayout** grid);

QLabel* Label(QWidget* parent, int id);
// A line edit for a number, `NumberFieldChars` wide (`TripleFieldChars` for a triple).
QLineEdit* NumberEdit(QWidget* parent, int id, bool triple = false);
QLineEdit* TextEdit(QWidget* parent, int id);
QComboBox* Combo(QWidget* parent, int id);
QCheckBox* Check(QWidget* parent, int id);
QPushButton* Button(QWidget* parent, int id);
// Label in column 0, field in column 1 (to the grid's last column when `span`), optional
// unit or second field in column 2. Returns the row used.
int Row(QGridLayout* grid, QWidget* label, QWidget* field, QWidget* third = nullptr,
        bool span = false);
// Name (273) and ID (274) with their labels (1419, 343) as the first rows of `grid`.
void NameAndID(QWidget* parent, QGridLayout* grid);
// A selection list of picked entities.
CKwMFCNodeElemSelectionBox* SelectionBox(QWidget* parent, int id);
// OK (1) and Cancel (2) on the right; `extra` buttons, when given, on the left.
void ButtonRow(QWidget* dialog, QBoxLayout* layout, QPushButton* extra = nullptr);

} // namespace KwForm
