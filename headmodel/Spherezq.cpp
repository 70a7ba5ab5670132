#include "headmodel/Spherezq.h"

CSpherezq::CSpherezq() = default;
CSpherezq::CSpherezq(const CSpherezq&) = default;
CSpherezq& CSpherezq::operator=(const CSpherezq&) = default;
CSpherezq::CSpherezq(CSpherezq&&) noexcept = default;
CSpherezq& CSpherezq::operator=(CSpherezq&&) noexcept = default;
CSpherezq::~CSpherezq() = default;
