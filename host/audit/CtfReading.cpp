#include "host/audit/CtfReading.h"

#include "host/audit/CtfWalk.h"

namespace host {

namespace {

using C = Column;

const ColumnPlaces dipolePlaces(std::vector{C::x, C::y, C::z, C::xo, C::yo, C::zo, C::moment, C::label});
const ColumnPlaces movingPlaces(std::vector{C::trial, C::sample, C::latency, C::x, C::y, C::z, C::xo, C::yo,
                                            C::zo, C::moment, C::error, C::label});
const ColumnPlaces fitPlaces(std::vector{C::trial, C::sample, C::latency, C::other, C::error});

}  // namespace

const ColumnPlaces& expectedPlaces(CtfKind kind) {
  return kind == CtfKind::moving ? movingPlaces : kind == CtfKind::fitInfo ? fitPlaces : dipolePlaces;
}

CtfReading::CtfReading(const ImportedText& file, const TextEncoding& encoding) {
  constexpr std::size_t usualRow = 60;  // bytes
  rows.reserve(encoding.text().size() / usualRow);
  slots.reserve(rows.capacity());
  repairedSlots.reserve(rows.capacity());
  TextLines lines(encoding);
  CtfWalk walk(*this, file, encoding);
  for (TextLine line; lines.next(line);) {
    walk.take(line);
  }
  walk.finish();
}

}  // namespace host
