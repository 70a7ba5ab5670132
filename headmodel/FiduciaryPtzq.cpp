#include "headmodel/FiduciaryPtzq.h"

CFiduciaryPtzq::CFiduciaryPtzq() = default;
CFiduciaryPtzq::CFiduciaryPtzq(const CFiduciaryPtzq&) = default;
CFiduciaryPtzq& CFiduciaryPtzq::operator=(const CFiduciaryPtzq&) = default;
CFiduciaryPtzq::CFiduciaryPtzq(CFiduciaryPtzq&&) noexcept = default;
CFiduciaryPtzq& CFiduciaryPtzq::operator=(CFiduciaryPtzq&&) noexcept = default;
CFiduciaryPtzq::~CFiduciaryPtzq() = default;
