#pragma once
// Logic of the surface contact editor: master and slave entities (faces or edges, each picked
// into its own list), the contact kind, the friction coefficient of separating contacts, and
// the contact parameters (penetration tolerance and search distance in the display length
// unit, a stiffness factor) that its page edits all together or not at all.
#include "CKwFEUIBase.h"
#include "CKwSurfaceContact.h"

class KWICAD_EXPORT CKwUISurfaceContact : public CKwFEUIBase<CKwSurfaceContact>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeFriction = 5, CodeMaster = 18, CodeSlave = 19 };
    enum Field { FieldKind = 3 };
    enum Side { Master = 0, Slave = 1 };
    enum Parameter { PenetrationTolerance = 0, StiffnessFactor = 1, SearchDistance = 2,
                     ParameterCount = 3 };

    CKwUISurfaceContact();
    ~CKwUISurfaceContact() override;

    static bool Admits(const CKwUIEntity* entity);
    // Which side the next picks go to.
    void SetPickSide(Side side) { m_side = side; }
    Side GetPickSide() const { return m_side; }
    const QList<CKwUIEntity*>& GetSideEntities(Side side) const;
    // A new contact's kind (out of range: bonded).
    void SetInitialKind(int kind) { m_initialKind = kind; }

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    // Picks and drops act on the side of SetPickSide.
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    // Both sides, master first; the dialog fills each list from its own side.
    QList<CKwUIEntity*> GetSelectedEntities() const override;

    // Friction applies to separating contacts only.
    bool TakesFriction() const;
    QString GetParameterText(int which) const;
    static int ParameterUnitKind(int which);
    // All three or none: false, with the first bad one and why.
    bool SetParameterTexts(const QString (&texts)[ParameterCount], int* badIndex = nullptr,
                           QString* why = nullptr);

protected:
    std::unique_ptr<CKwSurfaceContact> CreateNewObject() override;
    QList<CKwSurfaceContact*>* GetModelList() const override;

private:
    Side m_side = Master;
    int m_initialKind = CKwSurfaceContact::Bonded;
    bool m_badFriction = false;
};
