// The box around the head of a session, found once for all panes.
#pragma once

#include "host/head/Head.h"
#include "host/head/HeadBox.h"

namespace host {

// As findHead; mm in the head frame. Where nothing is bright the box reaches 100 mm to every side of the
// origin. The box of the last head is kept: asking again costs nothing while volume and frame are the same.
HeadBox headBoxOf(const Head& head);

}  // namespace host
