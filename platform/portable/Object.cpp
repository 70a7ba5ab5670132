#include "platform/portable/Object.h"

CObject::~CObject() = default;
