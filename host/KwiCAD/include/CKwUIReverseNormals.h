#pragma once
// Logic of the "Reverse Normals" editor: shell normals shown as front and back face colours and
// as vectors; picked faces with shells, or shell elements, are turned round on OK.
#include "CKwUIMeshReversal.h"

class KWICAD_EXPORT CKwUIReverseNormals : public CKwUIMeshReversal
{
public:
    CKwUIReverseNormals() : CKwUIMeshReversal(Shells) {}
};
