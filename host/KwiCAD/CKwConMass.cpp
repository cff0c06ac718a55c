#include "CKwConMass.h"

CKwConMass::CKwConMass(int id, const QString& name) : CKwFEBase(id, name) {}
