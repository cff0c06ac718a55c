#pragma once
// Logic of the subcase editor: name and ID among the analysis's subcases, which loads and
// constraints of the model are in the subcase, the thermal switch, and the subcase's nonlinear
// setup (edited on the editor's copy). Membership is kept by the loads and constraints (their
// subcase IDs); the editor works on a list of member IDs and writes it back on OK.
#include "CKwFEUIBase.h"
#include "CKwSubCase.h"

#include <QList>
#include <QString>

class KWICAD_EXPORT CKwUISubcase : public CKwFEUIBase<CKwSubCase>
{
public:
    enum Code { CodeName = 1, CodeID = 2 };
    enum Field { FieldThermal = 1 };
    enum Family { Loads = 0, Constraints = 1 };

    // One load or constraint as the lists show it. A member whose entity was deleted while
    // the editor was open keeps its ID and is marked missing.
    struct Member
    {
        int id = 0;
        QString name;
        QString type;
        bool missing = false;
    };

    CKwUISubcase();
    ~CKwUISubcase() override;

    // The analysis the subcase belongs to (a new one is added to it on OK).
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;

    QList<Member> Members(Family family) const;
    // The entities of the family that are not in the subcase yet.
    QList<Member> Candidates(Family family) const;
    // False when nothing changed (unknown ID, already a member, not a member).
    bool AddMember(Family family, int id);
    bool RemoveMember(Family family, int id);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    void AddNewObjects() override;
    long OnSubmitUI() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // The editor hears of every change to the member lists.
    virtual void OnMembersChanged() {}

protected:
    std::unique_ptr<CKwSubCase> CreateNewObject() override;
    QList<CKwSubCase*>* GetModelList() const override;

private:
    void loadMembers();
    void writeMembers(int oldId, int newId) const;
    QList<int>& ids(Family family) { return family == Loads ? m_loadIds : m_restraintIds; }
    const QList<int>& ids(Family family) const
    {
        return family == Loads ? m_loadIds : m_restraintIds;
    }

    CKwAnalysis* m_analysis = nullptr;
    QList<int> m_loadIds;
    QList<int> m_restraintIds;
    // The edit copy the member lists were read for; another copy reads them afresh.
    const CKwSubCase* m_membersFor = nullptr;
};
