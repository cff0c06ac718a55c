#include "CKwNonlinearDialogBase.h"

#include "CFMView.h"
#include "CKwCtrlListHeader.h"
#include "CKwFunction.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "KwTableMath.h"
#include "KwTableText.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <algorithm>
#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif
#include <bit>
#include <charconv>
#include <cstdint>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

std::string_view viewOf(const QByteArray& b)
{
    return std::string_view(b.constData(), std::size_t(b.size()));
}

// KwAtof of a cell: a plain number directly, anything else through the host.
double cellAtof(std::string_view s)
{
    double v = 0;
    if (KwTableText::plainNumber(s, &v))
        return v;
    return KwAtof(QString::fromUtf8(s.data(), qsizetype(s.size())));
}

// Every blank removed, not only those at the ends.
QString withoutBlanks(QString t)
{
    t.remove(QLatin1Char(' '));
    t.remove(QLatin1Char('\t'));
    return t;
}

// "%.10g" of the C library, then the exponent's leading zeros dropped; at most 24 bytes.
int formatG10(double v, char* out)
{
    char buf[40];
    const auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::general, 10);
    int n = int(r.ptr - buf);
    // "e+0" -> "e+" and "e-0" -> "e-", each twice (two-digit exponents of other runtimes).
    int o = 0;
    for (int i = 0; i < n; ++i) {
        out[o++] = buf[i];
        if ((buf[i] == '+' || buf[i] == '-') && i > 0 && buf[i - 1] == 'e') {
            int zeros = 0;
            while (zeros < 2 && i + 1 < n && buf[i + 1] == '0' && i + 2 < n) {
                ++i;
                ++zeros;
            }
        }
    }
    return o;
}

// Narrows UTF-16 units into `out` (their low bytes); true when every unit is ASCII.
inline bool narrowAscii(const char16_t* u, std::size_t n, char* out)
{
    char16_t high = 0;
    for (std::size_t i = 0; i < n; ++i) {
        high |= u[i];
        out[i] = char(u[i]);
    }
    return high < 0x80;
}

// The text of a pasted piece for the dialog's check. An ASCII piece (every number) is widened
// into `buffer` and lent as a QString without an allocation of its own; the check must copy
// it to keep it.
QString pieceText(std::string_view piece, std::u16string& buffer)
{
    buffer.resize(piece.size());
    unsigned char high = 0;
    for (std::size_t i = 0; i < piece.size(); ++i) {
        const auto c = static_cast<unsigned char>(piece[i]);
        high |= c;
        buffer[i] = char16_t(c);
    }
    if (high & 0x80)
        return QString::fromUtf8(piece.data(), qsizetype(piece.size()));
    return QString::fromRawData(reinterpret_cast<const QChar*>(buffer.data()),
                                qsizetype(buffer.size()));
}

// A UTF-16 piece is lent as it is.
QString pieceText(std::u16string_view piece, std::u16string&)
{
    return QString::fromRawData(reinterpret_cast<const QChar*>(piece.data()),
                                qsizetype(piece.size()));
}

// The bytes a piece is stored as: 8-bit text as it is, UTF-16 as UTF-8 (narrowed in place
// into `buffer` when it is ASCII, as every number is).
std::string_view pieceBytes(std::string_view piece, std::string&) { return piece; }

std::string_view pieceBytes(std::u16string_view piece, std::string& buffer)
{
    buffer.resize(piece.size());
    if (!narrowAscii(piece.data(), piece.size(), buffer.data())) {
        const QByteArray u = QString::fromRawData(reinterpret_cast<const QChar*>(piece.data()),
                                                  qsizetype(piece.size()))
                                 .toUtf8();
        buffer.assign(u.constData(), std::size_t(u.size()));
    }
    return buffer;
}

template <class Ch>
std::basic_string_view<Ch> trimmedPiece(std::basic_string_view<Ch> s)
{
    auto ws = [](Ch c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; };
    while (!s.empty() && ws(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && ws(s.back()))
        s.remove_suffix(1);
    return s;
}

// The next `c` at or after `from`: memchr's speed for 8-bit text, and the same eight units at
// a time for UTF-16 (the library's find compares one unit after the other).
std::size_t findUnit(std::string_view s, char c, std::size_t from) { return s.find(c, from); }

#if defined(__GNUC__)
__attribute__((always_inline))
#endif
inline std::size_t findUnit(std::u16string_view s, char c, std::size_t from)
{
    std::size_t i = from;
#if defined(__SSE2__) || defined(_M_X64)
    const __m128i needle = _mm_set1_epi16(short(c));
    for (; i + 8 <= s.size(); i += 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.data() + i));
        if (const int mask = _mm_movemask_epi8(_mm_cmpeq_epi16(v, needle)))
            return i + std::size_t(std::countr_zero(unsigned(mask)) / 2);
    }
#endif
    for (; i < s.size(); ++i)
        if (s[i] == char16_t(c))
            return i;
    return std::u16string_view::npos;
}

// How often `c` occurs: sixteen bytes at a time where the processor has SSE2 (every x86-64),
// eight at a time elsewhere.
std::size_t countByte(std::string_view s, char c)
{
    std::size_t n = 0, i = 0;
#if defined(__SSE2__) || defined(_M_X64)
    // Each byte lane counts its matches (a match compares as -1); the lanes are summed before
    // any of them can pass 255.
    const __m128i needle = _mm_set1_epi8(c);
    const __m128i zero = _mm_setzero_si128();
    const auto sum = [&zero](__m128i lanes) {
        const __m128i halves = _mm_sad_epu8(lanes, zero);
        return std::size_t(_mm_cvtsi128_si32(halves)) +
               std::size_t(_mm_cvtsi128_si32(_mm_unpackhi_epi64(halves, halves)));
    };
    __m128i lanes = zero;
    int rounds = 0;
    for (; i + 16 <= s.size(); i += 16) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.data() + i));
        lanes = _mm_sub_epi8(lanes, _mm_cmpeq_epi8(v, needle));
        if (++rounds == 255) {
            n += sum(lanes);
            lanes = zero;
            rounds = 0;
        }
    }
    n += sum(lanes);
#else
    constexpr std::uint64_t ones = 0x0101010101010101ull, low7 = 0x7f7f7f7f7f7f7f7full;
    const std::uint64_t pattern = ones * static_cast<unsigned char>(c);
    for (; i + 8 <= s.size(); i += 8) {
        std::uint64_t w;
        std::memcpy(&w, s.data() + i, 8);
        w ^= pattern; // bytes equal to c are now zero
        // High bit set exactly in the zero bytes (no carries between bytes).
        const std::uint64_t z = ~(((w & low7) + low7) | w | low7);
        n += std::size_t(((z >> 7) * ones) >> 56); // sum of the eight flags
    }
#endif
    for (; i < s.size(); ++i)
        n += s[i] == c;
    return n;
}

// How often `c` occurs in UTF-16 text: sixteen units a step with SSE2.
std::size_t countByte(std::u16string_view s, char c)
{
    std::size_t n = 0, i = 0;
#if defined(__SSE2__) || defined(_M_X64)
    const __m128i needle = _mm_set1_epi16(short(c));
    const __m128i ones = _mm_set1_epi16(1);
    // Each 16-bit lane counts its matches (a match compares as -1) for at most 16,384 steps,
    // so that it stays below 2^15 and the signed pairwise sum reads it right.
    while (i + 16 <= s.size()) {
        const std::size_t steps = std::min<std::size_t>((s.size() - i) / 16, 16384);
        __m128i a = _mm_setzero_si128(), b = _mm_setzero_si128();
        const char16_t* p = s.data() + i;
        for (std::size_t k = 0; k < steps; ++k, p += 16) {
            const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            const __m128i hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8));
            a = _mm_sub_epi16(a, _mm_cmpeq_epi16(lo, needle));
            b = _mm_sub_epi16(b, _mm_cmpeq_epi16(hi, needle));
        }
        i += steps * 16;
        const __m128i sums = _mm_add_epi32(_mm_madd_epi16(a, ones), _mm_madd_epi16(b, ones));
        alignas(16) std::int32_t four[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(four), sums);
        n += std::size_t(four[0]) + std::size_t(four[1]) + std::size_t(four[2]) +
             std::size_t(four[3]);
    }
#endif
    for (; i < s.size(); ++i)
        n += s[i] == char16_t(c);
    return n;
}

} // namespace

CKwNonlinearDialogBase::CKwNonlinearDialogBase()
{
    m_List.SetOwner(this);
}

CKwNonlinearDialogBase::~CKwNonlinearDialogBase()
{
    m_List.SetOwner(nullptr);
    delete m_plotWindow.data();
    delete m_pXFunction;
    delete m_pYFunction;
}

bool CKwNonlinearDialogBase::IsEditableItem(int, int) { return true; }
bool CKwNonlinearDialogBase::IsDeleteableRow(int) { return true; }
bool CKwNonlinearDialogBase::IsPasteableRow(int) { return true; }
bool CKwNonlinearDialogBase::IsValidDataInput(const QString&, int, int, int) { return true; }

void CKwNonlinearDialogBase::SetMaxSizeList()
{
    m_nMaxListHeight = m_List.height();
}

void CKwNonlinearDialogBase::BuildList()
{
    m_List.setShowGrid(true);
    m_List.setSelectionBehavior(QAbstractItemView::SelectRows);
    LoadHeaderLabel(0, m_pXFunction ? m_pXFunction->GetUnitType() : -1);
    LoadHeaderLabel(1, m_pYFunction ? m_pYFunction->GetUnitType() : -1);
    m_List.Header()->SizeColumns(m_List.viewport()->width() > 40 ? m_List.viewport()->width()
                                                                  : m_List.width());
    CreateEditRow();
}

void CKwNonlinearDialogBase::ResizeList()
{
    if (m_nRowCount == -1) {
        Add(QString(), QString());
        return;
    }
    if (m_nMaxListHeight <= 0)
        return;
    const int rowHeight = m_List.verticalHeader()->defaultSectionSize();
    // Once the rows fill the maximum height only the count changes: nothing to lay out. (The
    // header's height costs a font measurement, too much to pay for every row of a paste.)
    if ((long long)rowHeight * (m_nRowCount + 2) >= m_nMaxListHeight &&
        m_List.maximumHeight() == m_nMaxListHeight && m_List.height() == m_nMaxListHeight)
        return;
    const int frame = 2 * m_List.frameWidth();
    long long wanted = (long long)rowHeight * (m_nRowCount + 2) +
                       m_List.Header()->HeaderHeight() + frame;
    const int h = int(wanted < m_nMaxListHeight ? wanted : m_nMaxListHeight);
    if (m_List.height() != h || m_List.maximumHeight() != h)
        m_List.setFixedHeight(h);
}

void CKwNonlinearDialogBase::CreateEditRow()
{
    m_List.Model()->insertRowTexts(m_nRowCount, {}, {});
}

void CKwNonlinearDialogBase::addRow(int index, std::string_view x, std::string_view y)
{
    m_List.Model()->insertRowTexts(index, x, y);
    ++m_nRowCount;
    ResizeList();
}

void CKwNonlinearDialogBase::Add(const QString& x, const QString& y)
{
    const QByteArray bx = x.toUtf8(), by = y.toUtf8();
    addRow(m_nRowCount, viewOf(bx), viewOf(by));
}

void CKwNonlinearDialogBase::InsertRow(int index, const QString& x, const QString& y)
{
    const QByteArray bx = x.toUtf8(), by = y.toUtf8();
    addRow(index < 0 ? 0 : (index > m_nRowCount ? m_nRowCount : index), viewOf(bx), viewOf(by));
}

void CKwNonlinearDialogBase::OnAddOrigin()
{
    int row = -1;
    if (!IsOriginInTable(&row)) {
        AddOrigin();
        ResizeList();
    }
}

void CKwNonlinearDialogBase::OnDeleteOrigin()
{
    DeleteOriginFromTable();
    ResizeList();
}

void CKwNonlinearDialogBase::AddOrigin()
{
    m_List.Model()->insertRowTexts(0, "0", "0");
    ++m_nRowCount;
}

bool CKwNonlinearDialogBase::IsOriginInTable(int* row)
{
    const KwPointTableModel* m = m_List.Model();
    for (int r = 0; r < m_nRowCount; ++r) {
        const std::string_view x = KwTableText::trimmed(m->cellView(r, 0));
        const std::string_view y = KwTableText::trimmed(m->cellView(r, 1));
        if (x.empty() || y.empty())
            continue;
        const double vx = cellAtof(x), vy = cellAtof(y);
        if (vx > -1e-10 && vx < 1e-10 && vy > -1e-10 && vy < 1e-10) {
            if (row)
                *row = r;
            return true;
        }
    }
    return false;
}

void CKwNonlinearDialogBase::DeleteOriginFromTable()
{
    int row = -1;
    if (!IsOriginInTable(&row))
        return;
    m_List.Model()->removeRowAt(row);
    --m_nRowCount;
}

void CKwNonlinearDialogBase::SortAndCompressTable(int compress)
{
    if (m_nRowCount < 1)
        return;
    KwPointTableModel* m = m_List.Model();
    int n = m_nRowCount;
    std::vector<double> x(static_cast<std::size_t>(n)), y(static_cast<std::size_t>(n));
    for (int r = 0; r < n; ++r) {
        const std::string_view tx = KwTableText::trimmed(m->cellView(r, 0));
        const std::string_view ty = KwTableText::trimmed(m->cellView(r, 1));
        x[std::size_t(r)] = tx.empty() ? 0.0 : cellAtof(tx);
        y[std::size_t(r)] = ty.empty() ? 0.0 : cellAtof(ty);
    }
    qsort_double_two_arrays(x.data(), y.data(), 0, n - 1);
    if (compress)
        compress_double_two_arrays_tol(x.data(), &n, y.data(), 1e-15);
    // Every row is rewritten: one reset for the views instead of a signal per cell.
    const bool bulk = n > 64;
    if (bulk)
        m->beginBulk();
    for (int i = 0; i < n; ++i) {
        formatInto(i, 0, -1, x[std::size_t(i)]);
        formatInto(i, 1, -1, y[std::size_t(i)]);
    }
    if (n < m_nRowCount) {
        // The surplus rows go; the edit row moves up behind the kept ones.
        const int surplus = m_nRowCount - n;
        m_nRowCount = n;
        std::vector<int> gone(static_cast<std::size_t>(surplus));
        for (int i = 0; i < surplus; ++i)
            gone[std::size_t(i)] = n + i;
        m->removeRowsAt(gone);
    }
    if (bulk)
        m->endBulk();
    ResizeList();
}

void CKwNonlinearDialogBase::formatInto(int row, int col, int unitType, double value)
{
    if (IsMissingValue(value)) {
        m_List.Model()->setCellText(row, col, std::string_view());
        return;
    }
    if (unitType != -1 && m_pUnits)
        value = m_pUnits->GetDisplayValue(value, unitType);
    char buf[48];
    const int n = formatG10(value, buf);
    m_List.Model()->setCellText(row, col, std::string_view(buf, std::size_t(n)));
}

QString CKwNonlinearDialogBase::FormatValue(double displayValue)
{
    char buf[48];
    const int n = formatG10(displayValue, buf);
    return QString::fromLatin1(buf, n);
}

void CKwNonlinearDialogBase::LoadTableValues(int row, int col, int unitType, double value)
{
    formatInto(row, col, unitType, value);
}

void CKwNonlinearDialogBase::LoadTextBoxValues(QLineEdit* edit, int unitType, double value)
{
    if (!edit)
        return;
    if (IsMissingValue(value)) {
        edit->clear();
        return;
    }
    if (unitType != -1 && m_pUnits)
        value = m_pUnits->GetDisplayValue(value, unitType);
    edit->setText(FormatValue(value));
}

double CKwNonlinearDialogBase::GetItemValue(int row, int col)
{
    const std::string_view t = KwTableText::trimmed(m_List.Model()->cellView(row, col));
    if (t.empty())
        return MissingDouble;
    return cellAtof(t);
}

double CKwNonlinearDialogBase::TableUpdateValue(int row, int col, int unitType)
{
    double v = 0;
    if (ReadCell(m_List.Model()->cellView(row, col), unitType, &v) != CellRead::Number)
        return MissingDouble;
    return (m_pUnits && unitType != -1) ? m_pUnits->ToInternalValue(v, unitType) : v;
}

double CKwNonlinearDialogBase::TextBoxUpdateValue(QLineEdit* edit, int unitType)
{
    if (!edit)
        return MissingDouble;
    const QString t = withoutBlanks(edit->text());
    if (t.isEmpty())
        return MissingDouble;
    return CFMView::GetDoubleFromString(m_pUnits, t, unitType, 1);
}

bool CKwNonlinearDialogBase::ValidateTableValue(int row, int col, int unitType)
{
    const std::string_view raw = m_List.Model()->cellView(row, col);
    double v = 0;
    if (ReadCell(raw, unitType, &v) != CellRead::NotANumber)
        return true;
    const QString t = withoutBlanks(QString::fromUtf8(raw.data(), qsizetype(raw.size())));
    const KW_UOM fallback;
    ShowTableMessage((m_pUnits ? m_pUnits : &fallback)->GetErrorMessageForUnit(t, unitType));
    return false;
}

bool CKwNonlinearDialogBase::OnLeaveItem(int row, int col, const QString& text)
{
    const bool ok = IsValidDataInput(text, row, col, 1);
    if (row == m_nRowCount)
        Add(QString(), QString());
    return !ok;
}

bool CKwNonlinearDialogBase::UpdateListData(int col, CKwFunction** function)
{
    if (!function)
        return false;
    int unitType = MissingInteger;
    if (*function) {
        unitType = (*function)->GetUnitType();
        delete *function;
        *function = nullptr;
    }
    auto* f = new CKwFunction;
    f->Initialize();
    f->SetSize(m_nRowCount);
    *function = f;
    if (IsMissingValue(unitType))
        unitType = col == 0 ? -1 : 1;
    f->SetUnitType(unitType);
    for (int r = 0; r < m_nRowCount; ++r) {
        if (!ValidateTableValue(r, col, unitType))
            return false;
        f->SetValue(r, TableUpdateValue(r, col, unitType));
    }
    return true;
}

void CKwNonlinearDialogBase::PasteToCell(const QString& text, int row, int col, QString* first)
{
    // Straight from the UTF-16 text (the clipboard's): no converted copy of a large paste.
    pasteText(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()),
                                  std::size_t(text.size())),
              row, col, first);
}

void CKwNonlinearDialogBase::PasteToCell(std::string_view text, int row, int col,
                                         QString* first)
{
    pasteText(text, row, col, first);
}

template <class Ch>
void CKwNonlinearDialogBase::pasteText(std::basic_string_view<Ch> text, int row, int col,
                                       QString* first)
{
    constexpr std::size_t npos = std::basic_string_view<Ch>::npos;
    KwPointTableModel* m = m_List.Model();
    const int columns = m->columns();
    const int startCol = col;
    // Large pastes reach the views as one reset; a few cells keep their own signals.
    const bool bulk = text.size() > 4096;
    if (bulk) {
        m->beginBulk();
        // Room for every line and all of the text at once: growing step by step would copy
        // the store over and over while it fills.
        const std::size_t lines = 1 + countByte(text, '\r');
        m->reserve(std::size_t(m->rows()) + lines, m->textBytes() + text.size());
    }
    static const std::string_view kInvalid = "Invalid Data: ";
    std::string marked;
    std::string narrow;
    std::u16string wide;
    int showMessage = 1;
    bool firstDone = false;
    bool lastButOne = false;
    bool last = false;
    std::size_t pos = 0;
    // Positions of the next separators, found once and kept until passed, so that a text
    // with only one kind of separator is not rescanned to its end for every piece.
    std::size_t nextCr = findUnit(text, '\r', 0);
    std::size_t nextTab = findUnit(text, '\t', 0);
    while (true) {
        std::size_t end;
        std::size_t nextStart;
        int nextRow = row, nextCol = col;
        if (last) {
            end = text.size();
            nextStart = end;
        } else {
            if (nextCr != npos && nextCr < pos)
                nextCr = findUnit(text, '\r', pos);
            if (nextTab != npos && nextTab < pos)
                nextTab = findUnit(text, '\t', pos);
            if (nextCr != npos && nextTab != npos) {
                if (nextCr < nextTab) {
                    end = nextCr;
                    nextRow = row + 1;
                    nextCol = startCol;
                } else {
                    end = nextTab;
                    nextCol = col + 1;
                }
                nextStart = end + 1;
            } else {
                lastButOne = true;
                nextCol = col + 1;
                if (nextCr != npos || nextTab != npos) {
                    end = nextCr != npos ? nextCr : nextTab;
                    nextStart = end + 1;
                } else {
                    // No separator at all: an empty first piece, the whole text next.
                    end = pos;
                    nextStart = pos;
                }
            }
        }
        const std::basic_string_view<Ch> piece =
            trimmedPiece(text.substr(pos < text.size() ? pos : text.size(), end - pos));
        if (!firstDone) {
            firstDone = true;
            if (first) {
                const std::string_view b = pieceBytes(piece, narrow);
                *first = QString::fromUtf8(b.data(), qsizetype(b.size()));
            }
        }
        // Columns the list does not have take nothing.
        if (col < columns) {
            if (row == m_nRowCount) {
                // Straight into the store before the edit row; the list is laid out once at
                // the end of a large paste rather than for every row.
                m->insertRowTexts(m_nRowCount, pieceBytes(piece, narrow), {});
                ++m_nRowCount;
                if (!bulk)
                    ResizeList();
            } else if (row < m_nRowCount && IsPasteableRow(row)) {
                if (!IsValidDataInput(pieceText(piece, wide), row, col, showMessage)) {
                    showMessage = 0;
                    marked.assign(kInvalid);
                    marked.append(pieceBytes(piece, narrow));
                    m->setCellText(row, col, std::string_view(marked));
                } else {
                    m->setCellText(row, col, pieceBytes(piece, narrow));
                }
            }
        }
        if (last || nextStart > text.size())
            break;
        if (lastButOne)
            last = true;
        pos = nextStart;
        row = nextRow;
        col = nextCol;
    }
    if (bulk) {
        m->endBulk();
        ResizeList();
    }
}

void CKwNonlinearDialogBase::LoadHeaderLabel(int col, int unitType)
{
    QString text;
    if (col == 0)
        text = KwPropText("NonlinearMaterialDlg", "ColumnStrain", "Strain");
    else if (col == 1)
        text = KwPropText("NonlinearMaterialDlg", "ColumnStress", "Stress");
    SetHeaderLabel(col, unitType, text);
}

void CKwNonlinearDialogBase::SetHeaderLabel(int col, int unitType, const QString& text)
{
    QString label = text;
    if (unitType != -1)
        label = QStringLiteral("%1 (%2)").arg(text, m_pUnits ? m_pUnits->GetUnits(unitType)
                                                              : QString());
    m_List.Model()->setHeaderData(col, Qt::Horizontal, label);
}

void CKwNonlinearDialogBase::LoadTextBoxLabels(QLabel* label, int unitType)
{
    if (!label)
        return;
    QString text = label->text();
    if (text.endsWith(QLatin1Char(':')))
        text.chop(1);
    const QString abbr = m_pUnits ? m_pUnits->GetUnits(unitType) : QString();
    label->setText(abbr.isEmpty() ? QStringLiteral("%1:").arg(text)
                                  : QStringLiteral("%1 (%2):").arg(text, abbr));
}

void CKwNonlinearDialogBase::SetMenuItemText(unsigned id, QMenu* menu, const QString& text)
{
    if (!menu)
        return;
    for (QAction* a : menu->actions())
        if (a->data().toUInt() == id)
            a->setText(text);
}

CKwFunction* CKwNonlinearDialogBase::UnitsOf(const CKwFunction* f, int unitType)
{
    auto* shell = new CKwFunction;
    shell->Initialize();
    shell->SetUnitType(f ? f->GetUnitType() : unitType);
    return shell;
}

void CKwNonlinearDialogBase::SetFunctions(CKwFunction* x, CKwFunction* y)
{
    if (x != m_pXFunction)
        delete m_pXFunction;
    if (y != m_pYFunction)
        delete m_pYFunction;
    m_pXFunction = x;
    m_pYFunction = y;
}

void CKwNonlinearDialogBase::LoadFunctions()
{
    LoadFunctions(m_pXFunction, m_pYFunction);
}

void CKwNonlinearDialogBase::LoadFunctions(const CKwFunction* x, const CKwFunction* y)
{
    const int n = x && y ? std::min(x->GetSize(), y->GetSize()) : 0;
    if (n <= 0)
        return;
    // Display values now, text later: the list formats what it paints, and the rest is
    // formatted before anything reads it (see KwPointTableModel::insertNumberRows).
    KwPointTableModel::Numbers values(std::size_t(n) * 2);
    const CKwFunction* fn[2] = {x, y};
    for (int c = 0; c < 2; ++c) {
        const int unitType = fn[c]->GetUnitType();
        const bool convert = unitType != -1 && m_pUnits;
        const double* in = fn[c]->Values().data();
        for (int i = 0; i < n; ++i) {
            const double v = in[i];
            values[std::size_t(i) * 2 + std::size_t(c)] =
                IsMissingValue(v) ? std::numeric_limits<double>::quiet_NaN()
                                  : (convert ? m_pUnits->GetDisplayValue(v, unitType) : v);
        }
    }
    m_List.Model()->insertNumberRows(m_nRowCount, std::move(values), [](double v, char* out) {
        return formatG10(v, out);
    });
    m_nRowCount += n;
    ResizeList();
}

QMenu* CKwNonlinearDialogBase::CreateEditMenu(QWidget* parent, const char* section)
{
    auto* menu = new QMenu(parent);
    const struct
    {
        unsigned id;
        const char* key;
        const char* english;
    } items[] = {{ID_EDIT_CUT, "MenuCut", "Cut"},
                 {ID_EDIT_COPY, "MenuCopy", "Copy"},
                 {ID_EDIT_PASTE, "MenuPaste", "Paste"},
                 {ID_EDIT_DELETE, "MenuDelete", "Delete"},
                 {ID_EDIT_SELECTALL, "MenuSelectAll", "Select All"}};
    for (const auto& it : items) {
        QAction* a = menu->addAction(QString());
        a->setData(it.id);
        SetMenuItemText(it.id, menu, KwPropText(section, it.key, it.english));
        QObject::connect(a, &QAction::triggered, menu, [this, id = it.id] {
            switch (id) {
            case ID_EDIT_CUT:
                m_List.CopySelected();
                m_List.DeleteSelectedRows();
                break;
            case ID_EDIT_COPY:
                m_List.CopySelected();
                break;
            case ID_EDIT_PASTE:
                m_List.PasteFromClipboard();
                break;
            case ID_EDIT_DELETE:
                m_List.DeleteSelectedRows();
                break;
            default:
                m_List.SelectAllRows();
                break;
            }
        });
    }
    return menu;
}

CKwNonlinearDialogBase::CellRead CKwNonlinearDialogBase::ReadCell(std::string_view utf8,
                                                                  int unitType, double* value)
{
    if (utf8.empty())
        return CellRead::Empty;
    // A plain decimal number is read here: what the view reads it as, without the round trip
    // through a QString that a million cells could not afford.
    double v = 0;
    if (!KwTableText::hasBlank(utf8) && KwTableText::plainNumber(utf8, &v) && std::isfinite(v)) {
        *value = v;
        return CellRead::Number;
    }
    return ReadCell(QString::fromUtf8(utf8.data(), qsizetype(utf8.size())), unitType, value);
}

CKwNonlinearDialogBase::CellRead CKwNonlinearDialogBase::ReadCell(const QString& text,
                                                                  int unitType, double* value)
{
    // Short ASCII text takes the 8-bit path above (every number a person types or pastes).
    const qsizetype n = text.size();
    if (n > 0 && n < 48) {
        // A blank makes the plain reading fail (it reads no blanks), which leaves the text to
        // the path below that drops them.
        char buf[48];
        double v = 0;
        if (narrowAscii(reinterpret_cast<const char16_t*>(text.constData()), std::size_t(n), buf) &&
            KwTableText::plainNumber(std::string_view(buf, std::size_t(n)), &v) &&
            std::isfinite(v)) {
            *value = v;
            return CellRead::Number;
        }
    }
    const QString t = withoutBlanks(text);
    if (t.isEmpty())
        return CellRead::Empty;
    if (!CFMView::IsValidNumberString(t, unitType))
        return CellRead::NotANumber;
    *value = KwAtof(t);
    return CellRead::Number;
}

CKwNonlinearDialogBase::CellInput CKwNonlinearDialogBase::CheckCellInput(const QString& text,
                                                                         int unitType,
                                                                         bool nonNegative,
                                                                         int showMessage) const
{
    double v = 0;
    const CellRead read = ReadCell(text, unitType, &v);
    if (read == CellRead::NotANumber) {
        if (showMessage) {
            const KW_UOM fallback;
            ShowTableMessage(
                (m_pUnits ? m_pUnits : &fallback)->GetErrorMessageForUnit(text.trimmed(), unitType));
        }
        return CellInput::NotANumber;
    }
    if (nonNegative && read == CellRead::Number && v < 0)
        return CellInput::Negative;
    return CellInput::Accepted;
}

int CKwNonlinearDialogBase::DropBlankRows()
{
    KwPointTableModel* m = m_List.Model();
    std::vector<int> blank;
    for (int r = 0; r < m_nRowCount; ++r)
        if (KwTableText::trimmed(m->cellView(r, 0)).empty() &&
            KwTableText::trimmed(m->cellView(r, 1)).empty())
            blank.push_back(r);
    if (blank.empty())
        return 0;
    m->removeRowsAt(blank);
    m_nRowCount -= int(blank.size());
    ResizeList();
    return int(blank.size());
}

void CKwNonlinearDialogBase::ShowTableMessage(const QString& text) const
{
    if (m_pFMView)
        m_pFMView->ShowBubbleToolTipError(text, 0);
    else
        KwMessageBoxW(m_List.window(), text, QString(), KwMB::OK | KwMB::ICONWARNING);
}

QString CKwNonlinearDialogBase::CurvePlotTitle() const
{
    return m_List.window()->windowTitle();
}

QDialog* CKwNonlinearDialogBase::PlotWindow() const
{
    return m_plotWindow.data();
}

KwChart* CKwNonlinearDialogBase::PlotChart() const
{
    return m_plotWindow ? m_plotWindow->findChild<KwChart*>() : nullptr;
}

void CKwNonlinearDialogBase::OnShowXYPlot()
{
    const QString title = CurvePlotTitle();
    if (!m_plotWindow) {
        m_plotWindow = new QDialog(m_List.window());
        m_plotWindow->setAttribute(Qt::WA_DeleteOnClose);
        auto* lay = new QVBoxLayout(m_plotWindow);
        auto* chart = new KwChart(m_plotWindow);
        chart->setObjectName(QStringLiteral("curveChart"));
        lay->addWidget(chart, 1);
        auto* close = new QPushButton(KwPropText("General", "ButtonClose", "Close"), m_plotWindow);
        close->setAutoDefault(false);
        QObject::connect(close, &QPushButton::clicked, m_plotWindow.data(), &QDialog::close);
        auto* row = new QHBoxLayout;
        row->addStretch(1);
        row->addWidget(close);
        lay->addLayout(row);
        m_plotWindow->resize(560, 400);
    }
    QDialog* window = m_plotWindow.data();
    window->setWindowTitle(title);
    auto* chart = window->findChild<KwChart*>(QStringLiteral("curveChart"));
    const KwPointTableModel* m = m_List.Model();
    std::vector<double> x, y;
    x.reserve(std::size_t(m_nRowCount));
    y.reserve(std::size_t(m_nRowCount));
    for (int r = 0; r < m_nRowCount; ++r) {
        double vx = 0, vy = 0;
        if (ReadCell(m->cellView(r, 0), -1, &vx) != CellRead::Number ||
            ReadCell(m->cellView(r, 1), -1, &vy) != CellRead::Number)
            continue;
        x.push_back(vx);
        y.push_back(vy);
    }
    chart->ClearSeries();
    chart->AddSeries(title);
    chart->SetLegendVisible(false);
    chart->SetSeriesMarkers(0, true);
    chart->SetSeriesData(0, std::move(x), std::move(y));
    chart->SetAxisTitles(m->headerData(0, Qt::Horizontal).toString(), QString(),
                         m->headerData(1, Qt::Horizontal).toString(), QString());
    chart->ResetZoom();
    window->show();
}
