#include "headmodel/Fiducial02Prcs.h"

CFiducial02Prcs::~CFiducial02Prcs() = default;
