#include "host/text/EndingHeldBack.h"

namespace host {

EndingHeldBack::EndingHeldBack() = default;
EndingHeldBack::~EndingHeldBack() = default;

}  // namespace host
