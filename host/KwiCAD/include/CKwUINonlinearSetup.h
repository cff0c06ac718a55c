#pragma once
// Logic of the nonlinear setup editor: static or transient solution, large displacements,
// follower forces, the number of increments (time steps), the output interval and, for a
// transient run, the time increment. The iteration and convergence controls of the same setup
// are the nonlinear parameters dialog's.
#include "CKwFEUIBase.h"
#include "CKwNonlinearSetup.h"

class KWICAD_EXPORT CKwUINonlinearSetup : public CKwFEUIBase<CKwNonlinearSetup>
{
public:
    enum Code { CodeIncrements = 1, CodeOutputEvery = 2, CodeTimeIncrement = 3 };
    // FieldSolution: 0 static, 1 transient.
    enum Field { FieldSolution = 1, FieldLargeDisplacement = 2, FieldFollowerForces = 3 };

    CKwUINonlinearSetup();
    ~CKwUINonlinearSetup() override;

    CKwAnalysis* GetAnalysis() const override;
    // A setup of a subcase in a nonlinear analysis takes its kind from the analysis; only a
    // setup of its own may switch between static and transient.
    bool IsSolutionFixed() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    // A setup always belongs to a subcase: there is no new one to add.
    void AddNewObjects() override {}
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

protected:
    std::unique_ptr<CKwNonlinearSetup> CreateNewObject() override;

private:
    const KW_UOM* units() const;
    int m_incrementsStatus = 0;
    int m_outputStatus = 0;
    int m_timeStatus = 0;
};
