#include "host/exchange/JsonPlaces.h"

#include <algorithm>

#include "host/text/Utf8.h"

namespace host {

void JsonPlaces::note() {
  m_last = (std::min)(m_text.find_first_not_of(" \t\r\n,:", m_behind), m_text.size());
  m_behind = m_read;
}

void JsonPlaces::noteNumber() {
  note();
  m_behind -= (std::min)(m_behind, std::size_t{1});
}

TableFault JsonPlaces::faultAt(std::size_t byte, const std::string& what) const {
  const std::string_view before = m_text.substr(0, (std::min)(byte, m_text.size()));
  const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
  const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
  return {line, utf8Characters(before.substr(lineStart)) + 1, what};
}

}  // namespace host
