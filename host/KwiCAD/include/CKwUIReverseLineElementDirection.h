#pragma once
// Logic of the "Reverse Line Element Direction" editor: beam directions shown as arrows;
// picked edges with beams, or beam elements, are turned round on OK (their end releases swap
// ends with them).
#include "CKwUIMeshReversal.h"

class KWICAD_EXPORT CKwUIReverseLineElementDirection : public CKwUIMeshReversal
{
public:
    CKwUIReverseLineElementDirection() : CKwUIMeshReversal(Beams) {}
};
