// Assertions and traces. What they say in a build for debugging is not for checking.
#pragma once

#include "documented/Object.h"

#define ASSERT(booleanExpression) static_cast<void>(!(booleanExpression))
#define VERIFY(booleanExpression) static_cast<void>(!(booleanExpression))
#define ENSURE(booleanExpression) static_cast<void>(!(booleanExpression))
#define ASSERT_VALID(pObject) (pObject)->AssertValid()
BOOL AfxIsValidAddress(const void*, UINT, BOOL = TRUE);
BOOL AfxIsValidString(LPCSTR, int = -1);
