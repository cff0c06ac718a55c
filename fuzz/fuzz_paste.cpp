// Clipboard text of any shape pasted into a point table: it must never crash, never lose the
// edit row, and keep the count of real rows equal to what the list holds.
#include "CFMView.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KW_UOM.h"

#include <QApplication>
#include <cstdint>
#include <memory>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argc = 1;
    static char arg0[] = "fuzz_paste";
    static char* argv[] = {arg0, nullptr};
    if (!qApp) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        new QApplication(argc, argv);
    }
    static KW_UOM units(KW_UOM::MMNS);
    // Messages about bad cells go to the view's bubble, never into a modal box.
    static CFMView* view = new CFMView();
    CKwTable table(1, QStringLiteral("F"), size % 2 ? CKwTable::TimeCurve : CKwTable::General);
    table.AddPoint(0, 0);
    table.AddPoint(1, 2);
    std::unique_ptr<CKwTableDialog> dlg(CKwTableDialog::NewFor(&table));
    dlg->SetTable(view, &table, &units);
    dlg->Create();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // First byte picks the start row (any row, the edit row included) and the column.
    const int start = size ? int(data[0] % 4) : 0;
    const int row = start > dlg->GetRowCount() ? dlg->GetRowCount() : start;
    QString first;
    dlg->PasteToCell(text, row, size > 1 ? int(data[1] % 2) : 0, &first);
    const KwPointTableModel* m = dlg->GetList().Model();
    if (m->rows() != dlg->GetRowCount() + 1)
        __builtin_trap();
    if (!m->cellView(dlg->GetRowCount(), 0).empty() || !m->cellView(dlg->GetRowCount(), 1).empty())
        __builtin_trap();
    // The pasted text becomes the cells (and the same again through the QString entry).
    dlg->PasteToCell(QString::fromUtf8(text.data(), qsizetype(text.size())), 0, 0, nullptr);
    dlg->SortAndCompressTable(1);
    if (m->rows() != dlg->GetRowCount() + 1)
        __builtin_trap();
    return 0;
}
