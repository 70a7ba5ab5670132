#include "host/head/CtfTags.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <stdexcept>

#include "host/head/ByteReader.h"

namespace host {

namespace {

constexpr int image = 3;
constexpr int int16 = 6;
constexpr int text = 10;
constexpr std::int32_t longestName = 256;
constexpr std::string_view lastName = "EndOfParameters";

bool givesLength(int type) {
  return type == image || type == text;
}

// Bytes; nothing for a type whose length nobody knows for sure.
std::optional<std::uint64_t> lengthOf(int type) {
  switch (type) {
    case 4:
      return 8;
    case 5:
    case 17:
      return 4;
    case int16:
    case 7:
      return 2;
    case 8:
      return 1;
    case 9:
      return 32;
    default:
      return std::nullopt;
  }
}

// A name as a user may read it: file contents are no text until proved.
std::string printed(const std::string& name) {
  std::string result = name;
  std::replace_if(
      result.begin(), result.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
  return result;
}

}  // namespace

void CtfTags::refuse(const std::string& cause) const {
  throw std::runtime_error((m_name.empty() ? "" : "the tag " + printed(m_name) + ": ") + cause);
}

void CtfTags::take(std::span<std::byte> target) {
  const std::size_t found = m_source.read(target);
  m_done += found;
  if (found < target.size()) {
    refuse("the file is cut off after " + std::to_string(m_done) + " bytes");
  }
}

std::int32_t CtfTags::takeNumber() {
  std::array<std::byte, sizeof(std::int32_t)> bytes;
  take(bytes);
  return numberAt<std::int32_t>(bytes, 0, std::endian::big);
}

bool CtfTags::next() {
  if (const std::uint64_t skipped = m_source.skip(m_left); skipped < m_left) {
    refuse("the file is cut off after " + std::to_string(m_done + skipped) + " bytes");
  }
  m_done += m_left;
  m_left = 0;
  const std::int32_t length = takeNumber();
  if (length <= 0 || length > longestName) {
    refuse("a name of " + std::to_string(length) + " bytes stands behind it");
  }
  std::string name(static_cast<std::size_t>(length), '\0');
  take(std::as_writable_bytes(std::span(name)));
  m_name = name;
  if (m_name == lastName) {
    return false;
  }
  m_type = takeNumber();
  if (!givesLength(m_type)) {
    const std::optional<std::uint64_t> known = lengthOf(m_type);
    if (!known) {
      refuse("its type " + std::to_string(m_type) + " is not known");
    }
    m_left = *known;
    return true;
  }
  const std::int32_t count = takeNumber();
  const auto plain = m_source.plainSize();
  if (count < 0 || (plain && static_cast<std::uint64_t>(count) > *plain - (std::min)(*plain, m_done))) {
    refuse("its length of " + std::to_string(count) + " bytes goes beyond the file");
  }
  m_left = static_cast<std::uint64_t>(count);
  return true;
}

void CtfTags::expect(int type, const char* what) const {
  if (m_type != type) {
    refuse("its type is " + std::to_string(m_type) + ", not that of " + what);
  }
}

int CtfTags::smallNumber() {
  expect(int16, "a small number (6)");
  std::array<std::byte, sizeof(std::int16_t)> bytes;
  take(bytes);
  m_left = 0;
  return numberAt<std::int16_t>(bytes, 0, std::endian::big);
}

std::string CtfTags::text() {
  expect(host::text, "a text (10)");
  if (m_left > longestText) {
    refuse("its text is " + std::to_string(m_left) + " bytes long");
  }
  std::string value(static_cast<std::size_t>(m_left), '\0');
  take(std::as_writable_bytes(std::span(value)));
  m_left = 0;
  value.resize(value.find_last_not_of(std::string_view(" \0", 2)) + 1);
  return value;
}

std::vector<std::byte> CtfTags::image(std::size_t most) {
  expect(host::image, "an image (3)");
  if (m_left > most) {
    refuse("its image is " + std::to_string(m_left) + " bytes long");
  }
  std::vector<std::byte> value(static_cast<std::size_t>(m_left));
  take(value);
  m_left = 0;
  return value;
}

}  // namespace host
