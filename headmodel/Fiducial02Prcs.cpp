#include "headmodel/Fiducial02Prcs.h"

CFiducial02Prcs::CFiducial02Prcs() = default;
CFiducial02Prcs::CFiducial02Prcs(const CFiducial02Prcs&) = default;
CFiducial02Prcs& CFiducial02Prcs::operator=(const CFiducial02Prcs&) = default;
CFiducial02Prcs::CFiducial02Prcs(CFiducial02Prcs&&) noexcept = default;
CFiducial02Prcs& CFiducial02Prcs::operator=(CFiducial02Prcs&&) noexcept = default;
CFiducial02Prcs::~CFiducial02Prcs() = default;
