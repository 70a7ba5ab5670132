// Round numbers along a range: multiples of 1, 2 or 5 times a power of ten.
#pragma once

#include <string>
#include <vector>

namespace host {

struct Tick {
  double value;
  std::string text;  // as many decimals as the step needs; a point whatever the program's language; no "-0"

  friend bool operator==(const Tick&, const Tick&) = default;
};

// The ticks from low to high, both included, ascending: as many as there can be, but at most `most`, which is
// at least 2. Only the low end, exact, when there is nothing between the two; nothing when an end is not
// finite or high is below low.
std::vector<Tick> niceTicks(double low, double high, int most);

}  // namespace host
