#include "CKwConnector.h"

CKwConnector::CKwConnector(int id, const QString& name) : CKwFEBase(id, name) {}
