// Colours of dipoles by one of their values: latency (ms), fit error (percent) or moment (nAm, or the unit of
// the set's file).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/ColorScale.h"
#include "host/dipoles/UnknownDipoles.h"
#include "host/paint/Image.h"
#include "module/dipole.h"

namespace host {

// Of the latency, the fit error or the moment; nan for what is no number.
double valueOf(const CDipoles& dipole, DipoleValue value);

// Such as "latency (ms)"; the moment of a set that does not say nAm has no unit.
std::string titleOf(DipoleValue value, const CDipoleFace& set);

struct ValueRange {
  double low = 0.0;
  double high = 0.0;
  bool isCutLow = false;   // values lie below, and have the colour of `low`
  bool isCutHigh = false;  // likewise above

  friend bool operator==(const ValueRange&, const ValueRange&) = default;
};

// From the 2nd to the 98th of a hundred of the finite values, so that a few stray ones do not take all the
// colours; each end is a value that occurs, the one next outwards. So up to 50 values none is cut. Nothing
// without a finite value.
std::optional<ValueRange> robustRange(std::vector<double> values);

class ValueColors {
 public:
  // The range is that of all dipoles of the set, shown or not, so that colours stay when some are hidden.
  // What is unknown counts as no number; `unknown` must outlive this.
  ValueColors(const CDipoleFace& set, DipoleValue value, const UnknownDipoles* unknown = nullptr);
  ValueColors(DipoleValue value, std::string title, std::optional<ValueRange> range)
      : m_value(value), m_title(std::move(title)), m_range(range) {}

  // The middle of the scale when the range is one value; noValueColor without a range, and for a value that
  // is not a number.
  Rgb colorOf(double value) const;
  Rgb colorOf(const CDipoles& dipole) const;

  const std::optional<ValueRange>& range() const { return m_range; }
  const std::string& title() const { return m_title; }

 private:
  DipoleValue m_value;
  const UnknownDipoles* m_unknown = nullptr;
  std::string m_title;
  std::optional<ValueRange> m_range;
};

}  // namespace host
