// Files of dipoles as Neuromag's programs and MNE write them in binary (.bdip): records of 196 bytes one
// behind the other, big-endian, without a heading.
//
// offset  type    holds
// 0       i32     which one of several dipoles at a time
// 4, 8    f32     begin and end, s
// 12      f32 x3  origin of the sphere, m
// 24      f32 x3  place, m, Neuromag head frame
// 36      f32 x3  moment, Am
// 48      f32     goodness of fit, 0 to 1
// 52      i32     whether errors were computed; they and more stand behind it
#pragma once

#include <string>
#include <string_view>

#include "host/exchange/NeuromagText.h"

namespace host {

inline constexpr std::size_t neuromagRecordBytes = 196;

// Throws TableFault: another size than whole records, a record that no fit gives (a place beyond 0.3 m, a
// goodness of fit outside of 0 to 1). What a dipole has no room for is counted.
NeuromagDipoles readNeuromagBinary(std::string_view bytes);

// The name has no room. Everything behind the goodness of fit is zero: no errors were computed.
std::string neuromagBinary(const NeuromagDipoles& dipoles);

}  // namespace host
