#include "headmodel/FiduciaryPt02Prcs.h"

CFiduciaryPt02Prcs::~CFiduciaryPt02Prcs() = default;
