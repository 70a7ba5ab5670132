#include "headmodel/FiduciaryPt02Prcs.h"

CFiduciaryPt02Prcs::CFiduciaryPt02Prcs() = default;
CFiduciaryPt02Prcs::CFiduciaryPt02Prcs(const CFiduciaryPt02Prcs&) = default;
CFiduciaryPt02Prcs& CFiduciaryPt02Prcs::operator=(const CFiduciaryPt02Prcs&) = default;
CFiduciaryPt02Prcs::CFiduciaryPt02Prcs(CFiduciaryPt02Prcs&&) noexcept = default;
CFiduciaryPt02Prcs& CFiduciaryPt02Prcs::operator=(CFiduciaryPt02Prcs&&) noexcept = default;
CFiduciaryPt02Prcs::~CFiduciaryPt02Prcs() = default;
