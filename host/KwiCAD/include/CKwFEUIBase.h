#pragma once
// Entity logic shared by the editors of one entity class T: the entity being edited (null for
// a new one), its edit copy, the subcase it is edited in, and the submit, next, duplicate and
// cancel actions. An entity's logic class derives from this and fills in the data transfer,
// validation and creation; the dialog half is reached through the UI callbacks of CKwUIBase.
#include "CFMView.h"
#include "CKwUIBase.h"

#include <QList>
#include <QString>
#include <initializer_list>
#include <memory>

class CKwAnalysis;
class CKwFEModel;
class CKwSubCase;
class KW_UOM;

// What the entity logics share beside their base class: subcase lists and the texts of
// numbers and messages. Exported, so that the class template below stays free of the model's
// headers.
namespace KwEntityLogic {
// Fills a multiple-selection list with the analysis's subcases (nothing without an analysis)
// and selects the rows of those whose ids are in `ids`.
KWICAD_EXPORT void FillSubcaseList(CKwUIBase& ui, const CKwAnalysis* analysis, int itemsCode,
                                   int selectionCode, const QList<int>& ids);
// The ids of the analysis's subcases at `rows`; rows out of range are skipped.
KWICAD_EXPORT QList<int> SubcaseIdsOfRows(const CKwAnalysis* analysis, const QList<int>& rows);
// Where a new entity goes: the subcase it is created in, else the analysis's first subcase.
KWICAD_EXPORT QList<int> NewEntitySubcaseIds(const CKwSubCase* subcase,
                                             const CKwAnalysis* analysis);
// A number as the editors show it: up to ten significant digits ("%.10g").
KWICAD_EXPORT QString FormatNumber(double value);
// An internal value in the display unit of `unitKind` (SI without units); empty when missing.
KWICAD_EXPORT QString FormatShown(double internalValue, int unitKind, const KW_UOM* units);
// Fills the "%s" of a message in order; surplus arguments are dropped, and a "%s" inside an
// argument is never filled again.
KWICAD_EXPORT QString FillArgs(QString text, std::initializer_list<QString> args);
} // namespace KwEntityLogic

template <class T> class CKwFEUIBase : public virtual CKwUIBase
{
public:
    ~CKwFEUIBase() override = default;

    // End of the editor's construction: the view it works in, the entity (null: a new one) and
    // the subcase in whose context it is edited.
    void OnCreate(CFMView* view, T* entity, CKwSubCase* subcase)
    {
        SetView(view);
        m_pObject = entity;
        m_pSubCase = subcase;
        m_edit = entity ? std::make_unique<T>(*entity) : CreateNewObject();
        m_upToDate = true;
    }

    // Fills the dialog's controls from the edit copy.
    void LoadObjectData() override = 0;
    // Moves the dialog's contents into the edit copy.
    virtual void UpdateObjectData(bool checkOnly) = 0;
    // Non-zero when the edit copy may be written; shows its own message otherwise.
    virtual int ValidateObjectData() = 0;
    // Starts the edit copy afresh from the stored entity.
    virtual void UpdateEditObject()
    {
        if (m_pObject)
            *m_edit = *m_pObject;
    }
    // Puts a new entity (a copy of the edit copy) into the model's list of its kind.
    virtual void AddNewObjects()
    {
        if (QList<T*>* all = GetModelList(); all && m_edit)
            AppendEditCopy(*all);
    }
    // The entity being created, or null when an existing one is edited.
    T* GetNewObject() const { return m_pObject ? nullptr : m_edit.get(); }
    QString GetPageTitleString() const override = 0;

    long OnSubmitUI() override
    {
        if (!m_edit)
            return 1;
        UpdateObjectData(false);
        if (!ValidateObjectData())
            return 1;
        if (m_pObject)
            *m_pObject = *m_edit;
        else
            AddNewObjects();
        Display(0);
        return 0;
    }
    // Submits and goes on with a fresh entity; the editor stays open.
    long OnNextUI()
    {
        const long status = OnSubmitUI();
        if (status != 0)
            return status;
        m_pObject = nullptr;
        ReplaceEditObject(CreateNewObject());
        return 1;
    }
    // Submits and goes on with a copy of what was just written.
    long OnDuplicateUI()
    {
        const long status = OnSubmitUI();
        if (status != 0)
            return status;
        auto copy = std::make_unique<T>(*m_edit);
        m_pObject = nullptr;
        copy->SetID(CreateNewObject()->GetID());
        ReplaceEditObject(std::move(copy));
        return 1;
    }
    long OnCancelUI() override
    {
        Display(0);
        UpdateEditObject();
        return 0;
    }

    int IsUpToDate() override { return m_upToDate ? 1 : 0; }
    void Refresh() override
    {
        UpdateEditObject();
        m_upToDate = true;
        ReloadObjectData();
    }
    // The host marks the editor stale when the entity changed underneath it.
    void MarkOutOfDate() { m_upToDate = false; }

    T* GetObject() const { return m_pObject; }
    T* GetEditObject() const { return m_edit.get(); }
    CKwSubCase* GetSubCase() const { return m_pSubCase; }
    CKwFEModel* GetModel() const { return m_pView ? m_pView->GetModel() : nullptr; }

protected:
    // A new entity with defaults and the next free id.
    virtual std::unique_ptr<T> CreateNewObject() = 0;
    // Every replacement of the edit copy goes through here and ends in ReloadObjectData.
    void ReplaceEditObject(std::unique_ptr<T> copy)
    {
        if (!copy)
            return;
        m_edit = std::move(copy);
        ReloadObjectData();
    }

    // The model's list of entities of this kind; null without a model or for a kind the model
    // keeps no list of. Identity checks and new entities go by it.
    virtual QList<T*>* GetModelList() const { return nullptr; }
    // The id a new entity takes: one above the highest in the model's list (1 without one).
    int NextFreeID() const
    {
        int id = 0;
        if (const QList<T*>* all = GetModelList())
            for (const T* e : *all)
                id = e->GetID() > id ? e->GetID() : id;
        return id + 1;
    }

    // Name and ID controls: filled from the edit copy, read back (the name trimmed).
    void LoadNameAndID(int nameCode, int idCode)
    {
        SetControlText(nameCode, m_edit->GetName());
        SetControlText(idCode, QString::number(m_edit->GetID()));
    }
    void UpdateNameAndID(int nameCode, int idCode)
    {
        QString text;
        if (GetControlText(nameCode, text))
            m_edit->SetName(text.trimmed());
        if (GetControlText(idCode, text))
            m_edit->SetID(CFMView::GetIntegerFromString(text));
    }
    // The name and ID checks of the edit copy (see ValidateIdentity) against the model's list
    // of the kind, where the entity being edited may keep its own ID.
    int ValidateNameAndID(const IdentityTexts& texts) const
    {
        bool taken = false;
        if (const QList<T*>* all = GetModelList())
            for (const T* other : *all)
                if (other != m_pObject && other->GetID() == m_edit->GetID())
                    taken = true;
        return ValidateIdentity(m_edit->GetName(), m_edit->GetID(), taken, texts);
    }
    // Appends a copy of the edit copy to the model's list; further submits edit that copy.
    void AppendEditCopy(QList<T*>& all)
    {
        auto* added = new T(*m_edit);
        all.append(added);
        m_pObject = added;
    }

    T* m_pObject = nullptr;
    CKwSubCase* m_pSubCase = nullptr;
    std::unique_ptr<T> m_edit;
    bool m_upToDate = true;
};
