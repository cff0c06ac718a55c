#pragma once
// Second base of every add-in dialog: lets the host re-caption open dialogs after a language
// switch without knowing their classes.
#include "KwiCADExport.h"

class KWICAD_EXPORT CKwDlgBase
{
public:
    CKwDlgBase();
    virtual ~CKwDlgBase();
    // Sets every caption, label and button text from the current language.
    virtual void SetTextToCurrentLang() = 0;

    // Calls SetTextToCurrentLang on every live dialog that carries this base.
    static void RetranslateAll();
    static int LiveCount();
};
