#include "headmodel/Spherezq.h"

CSpherezq::~CSpherezq() = default;
