#pragma once
// Loading, reading and checking an entity's number fields from their rows (KwNumberSlot): the
// shared part of the analysis-setup logics. A field left as it was filled keeps its stored
// value to the last bit; a text that is no number, or a count that is not whole, leaves the
// stored value and is refused on submit with its field's message.
#include "CKwFEUIBase.h"
#include "KwNumbers.h"
#include "KW_UOM.h"
#include "KwSetupFields.h"

#include <QMap>
#include <cmath>
#include <functional>
#include <span>

template <class E> class KwSetupNumbers
{
public:
    // (`slots` is a word Qt's headers take for themselves.)
    explicit KwSetupNumbers(std::span<const KwNumberSlot<E>> rows) : m_slots(rows) {}

    static double Get(const E& e, const KwNumberSlot<E>& s)
    {
        if (s.real)
            return e.*s.real;
        const int v = e.*s.whole;
        return IsMissingValue(v) ? MissingDouble : double(v);
    }

    void Load(CKwUIBase& ui, const E& e, const KW_UOM* units)
    {
        m_problems.clear();
        for (const KwNumberSlot<E>& s : m_slots)
            ui.SetControlText(s.rule.code, KwSetupFields::Show(Get(e, s), s.rule, units));
    }

    void Update(CKwUIBase& ui, E& e, const KW_UOM* units)
    {
        for (const KwNumberSlot<E>& s : m_slots) {
            QString text;
            if (!ui.GetControlText(s.rule.code, text))
                continue;
            text = text.trimmed();
            if (KwEntityLogic::ShowsUnchanged(text, KwSetupFields::Show(Get(e, s), s.rule, units))) {
                m_problems.remove(s.rule.code);
                continue;
            }
            double v = MissingDouble;
            if (!KwSetupFields::Read(text, s.rule, units, &v)) {
                m_problems[s.rule.code] = units ? units->GetErrorMessageForUnit(s.rule.unitKind)
                                                : KW_UOM().GetErrorMessageForUnit(s.rule.unitKind);
                continue;
            }
            // A count must be whole and fit its integer; the rule's message says why not.
            if (s.whole && !IsMissingValue(v) && (v != std::floor(v) || std::abs(v) > 1e9)) {
                m_problems[s.rule.code] = KwSetupFields::Check(v, s.rule, units);
                continue;
            }
            m_problems.remove(s.rule.code);
            if (s.real)
                e.*s.real = v;
            else
                e.*s.whole = IsMissingValue(v) ? MissingInteger : static_cast<int>(v);
        }
    }

    // The first field (in row order) among those `active` admits whose text or value is
    // refused: its label and why. False when every such field is fine.
    bool FirstProblem(const E& e, const KW_UOM* units, const std::function<bool(int)>& active,
                      QString* label, QString* message) const
    {
        for (const KwNumberSlot<E>& s : m_slots) {
            if (active && !active(s.rule.code))
                continue;
            QString why = m_problems.value(s.rule.code);
            if (why.isEmpty())
                why = KwSetupFields::Check(Get(e, s), s.rule, units);
            if (!why.isEmpty()) {
                *label = KwSetupFields::Label(s.rule);
                *message = why;
                return true;
            }
        }
        return false;
    }

    const KwNumberSlot<E>* SlotOf(int code) const
    {
        for (const KwNumberSlot<E>& s : m_slots)
            if (s.rule.code == code)
                return &s;
        return nullptr;
    }

private:
    std::span<const KwNumberSlot<E>> m_slots;
    QMap<int, QString> m_problems;
};
