#include "CKwUIBase.h"

CKwUIBase::CKwUIBase() = default;
CKwUIBase::~CKwUIBase() = default;

void CKwUIBase::OnKwMessage(const QString& text, unsigned, unsigned) { m_lastMessage = text; }
