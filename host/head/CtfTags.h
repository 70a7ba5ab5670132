// The tags of a CTF MRI 4.x, one after the other.
//
// A tag is the length of its name, the name, the number of its type, and the value; big-endian. Texts and
// images give their length before them. The last tag, EndOfParameters, has neither type nor value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/head/ByteSource.h"

namespace host {

class CtfTags {
 public:
  // The longest text that is kept, bytes.
  static constexpr std::size_t longestText = 65536;

  // Behind the file's mark of four bytes.
  explicit CtfTags(ByteSource& source) : m_source(source) {}

  // Goes to the next tag; what was not read of the one before is left out. False behind the last one. Throws
  // std::runtime_error with the cause when the file is cut off or has a tag that nothing is known of.
  bool next();

  const std::string& name() const { return m_name; }
  // The value, when it is of that type; else throws. A list of numbers is a text.
  int smallNumber();
  std::string text();
  std::vector<std::byte> image(std::size_t most);

 private:
  [[noreturn]] void refuse(const std::string& cause) const;
  void take(std::span<std::byte> target);
  std::int32_t takeNumber();
  void expect(int type, const char* what) const;

  ByteSource& m_source;
  std::uint64_t m_done = 4;
  std::string m_name;
  int m_type = 0;
  std::uint64_t m_left = 0;  // bytes of the value that were not read
};

}  // namespace host
