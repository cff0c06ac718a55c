#pragma once
// The transient solution status window: the nonlinear window's layout and rules under its
// own title.
#include "CNLstatusDialog.h"

class KWMFCUI_EXPORT CTransientStatusDialog : public CNLstatusDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7342;
    explicit CTransientStatusDialog(QWidget* parent = nullptr);

protected:
    QString StatusTitle() const override;
};
