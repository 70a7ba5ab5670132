// The legend of dipole colours. By a value: title with unit, the scale upright with the largest value on top,
// ticks at round numbers, and the colour of dipoles without a value. By cluster: the rule, and the colour of
// each cluster with the count of its dipoles.
#pragma once

#include "host/dipoles/DipoleColors.h"
#include "host/paint/Image.h"

namespace host {

// A picture of its own on black, to be laid over another one: about `height` pixels high, as wide as its
// texts need. lineHeight: of the texts, pixels, at least 8; the height is at least 8 lines.
// The ends of the scale are flat; where values lie beyond an end, and share its colour, it comes to a point.
Image legendPicture(const ValueColors& colors, int height, int lineHeight);
// As high as its lines need.
Image legendPicture(const ClusterColors& colors, int lineHeight);
Image legendPicture(const DipoleColors& colors, int height, int lineHeight);

}  // namespace host
