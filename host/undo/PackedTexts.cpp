#include "host/undo/PackedTexts.h"

#include <algorithm>
#include <cstdint>

#include "host/undo/MemberImage.h"

namespace host {

PackedTexts::PackedTexts(const std::vector<const CString*>& texts) : m_count(texts.size()) {
  const bool areSame = std::all_of(texts.begin(), texts.end(),
                                   [&](const CString* text) { return isSameText(*text, *texts.front()); });
  const std::size_t kept = areSame ? (std::min)(m_count, std::size_t{1}) : m_count;
  std::vector<std::uint32_t> lengths;
  std::vector<TCHAR> units;
  lengths.reserve(kept);
  for (std::size_t i = 0; i < kept; ++i) {
    const LPCTSTR first = texts[i]->GetString();
    lengths.push_back(static_cast<std::uint32_t>(texts[i]->GetLength()));
    units.insert(units.end(), first, first + texts[i]->GetLength());
  }
  m_lengths = PackedColumn::of(lengths);
  m_units = PackedColumn::of(units);
}

std::vector<CString> PackedTexts::texts() const {
  const std::vector<std::uint32_t> lengths = m_lengths.values<std::uint32_t>();
  const std::vector<TCHAR> units = m_units.values<TCHAR>();
  std::vector<CString> texts;
  texts.reserve(m_count);
  const TCHAR* from = units.data();
  for (const std::uint32_t length : lengths) {
    texts.emplace_back(from, static_cast<int>(length));
    from += length;
  }
  if (!texts.empty() && texts.size() < m_count) {
    texts.resize(m_count, CString(texts.front()));
  }
  return texts;
}

}  // namespace host
