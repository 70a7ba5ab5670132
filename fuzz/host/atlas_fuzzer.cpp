// Reads the input as an atlas: refused with a text, or labels and names that hold together.
//
// The first byte decides which of both is read: with bit 0 names, else the image; with bit 1 names come with
// the image. Two places follow in the next four bytes.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Check.h"
#include "fuzz/FuzzFile.h"
#include "host/head/AtlasFile.h"
#include "host/text/Utf8.h"

namespace {

void checkNames(std::string_view text) {
  const host::LabelNames names = host::labelNamesOf(text);
  for (const auto& [label, name] : names) {
    check(label != 0, "0 has no name");
    check(!name.empty() && name.size() <= 200, "a name has 1 to 200 bytes");
    check(host::utf8Length(name) == name.size(), "a name is UTF-8");
    check(name.find('\n') == std::string::npos, "a name is of one line");
  }
}

void checkPlace(const host::Atlas& atlas, const host::Vector3& place) {
  const std::optional<host::NamedPlace> found = atlas.at(place);
  if (found) {
    check(found->distance >= 0.0 && found->distance <= host::Atlas::reach, "a label told is within reach");
    check(!found->text().empty(), "a label has a name");
    const std::optional<host::NamedPlace> again = atlas.at(place);
    check(again && again->name == found->name && again->distance == found->distance, "twice is the same");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FuzzFile image("image");
  static const FuzzFile names("names");
  if (size < 5) {
    return 0;
  }
  const bool isText = (data[0] & 1U) != 0;
  const std::vector<std::uint8_t> bytes(data + 5, data + size);
  try {
    if (isText) {
      checkNames({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
      return 0;
    }
    image.write(bytes.data(), bytes.size());
    constexpr std::string_view some = "1 One_L 1\n2 One_R 2\n";
    names.write(reinterpret_cast<const std::uint8_t*>(some.data()), some.size());
    const bool hasNames = (data[0] & 2U) != 0;
    const host::Atlas atlas =
        host::readAtlas({image.path(), std::filesystem::path(hasNames ? names.path() : std::string())});
    const auto mm = [data](std::size_t at) { return static_cast<double>(data[at]) - 128.0; };
    checkPlace(atlas, {mm(1), mm(2), mm(3)});
    checkPlace(atlas, {mm(4) / 7.0, mm(1) / 3.0, mm(2) * 1e300});
    checkPlace(atlas, {std::nan(""), mm(1), mm(2)});
  } catch (const std::runtime_error& error) {
    check(error.what()[0] != '\0', "a refusal has a text");
  }
  return 0;
}
