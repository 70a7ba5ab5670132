#include "host/audit/ShownValues.h"

#include <vector>

namespace host {

std::string ShownValues::text() const {
  constexpr std::array<std::string_view, 6> names = {"place",   "orientation", "moment",
                                                     "latency", "fit error",   "label"};
  std::vector<std::string_view> ones;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (m_are[i]) {
      ones.push_back(names[i]);
    }
  }
  std::string text;
  for (std::size_t i = 0; i < ones.size(); ++i) {
    text.append(i == 0 ? "" : i + 1 < ones.size() ? ", " : " and ").append(ones[i]);
  }
  return text;
}

std::string ShownValues::ofOtherColumns() const {
  std::string sentence =
      " has other columns than the import takes for granted: values of others are shown as ";
  sentence += text() + ".";
  return has(ShownValue::place) ? sentence + " The dipoles are shown in wrong places." : sentence;
}

}  // namespace host
