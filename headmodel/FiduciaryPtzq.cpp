#include "headmodel/FiduciaryPtzq.h"

CFiduciaryPtzq::~CFiduciaryPtzq() = default;
