// Which values of which dipoles a file did not give. The module has no way to keep that: it shows a default
// (latency 0, fit error 0.2) as if it had been fitted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace host {

// The values that a file may leave out; those that colours stand for are the first three.
enum class DipoleValue : std::uint8_t { latency = 1, fitError = 2, moment = 4, orientation = 8, label = 16 };

class UnknownValues {
 public:
  void mark(int slot, DipoleValue value) { markAll(slot, static_cast<std::uint8_t>(value)); }
  // `values`: a sum of DipoleValues; 0 changes nothing.
  void markAll(int slot, std::uint8_t values) {
    const auto place = static_cast<std::size_t>(slot);
    if (values == 0) {
      return;
    }
    if (place >= m_bySlot.size()) {
      m_bySlot.resize(place + 1);
    }
    m_bySlot[place] = static_cast<std::uint8_t>(m_bySlot[place] | values);
  }
  bool isUnknown(int slot, DipoleValue value) const {
    return (of(slot) & static_cast<std::uint8_t>(value)) != 0;
  }
  // The sum of the DipoleValues of a slot, 0 when all are known.
  std::uint8_t of(int slot) const {
    const auto place = static_cast<std::size_t>(slot);
    return place < m_bySlot.size() ? m_bySlot[place] : std::uint8_t{0};
  }
  // One past the last slot of which a value is unknown.
  int end() const { return static_cast<int>(m_bySlot.size()); }
  bool isEmpty() const { return m_bySlot.empty(); }

  bool operator==(const UnknownValues&) const = default;

 private:
  std::vector<std::uint8_t> m_bySlot;
};

}  // namespace host
