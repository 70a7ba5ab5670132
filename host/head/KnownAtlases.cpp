#include "host/head/KnownAtlases.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <zlib.h>

#include "host/text/Letters.h"

namespace host {

namespace {

constexpr const char* mirrored =
    "this white matter atlas is mirrored: by its sform each of its labels of the left lies on the right, and "
    "the other way round";
constexpr const char* unchecked =
    "this atlas has no names, and nothing tells which of its numbers are of the left and which of the right";
constexpr const char* monkey = "this is the brain of a monkey";

struct Known {
  std::string_view start;  // of the name, small letters
  const char* title;
  const char* space;
  bool isOfAreas;
  bool isWholeName;  // others of that beginning are other atlases
};
constexpr std::array<Known, 4> knownOnes = {
    {{"aal", "AAL (Tzourio-Mazoyer et al., NeuroImage 2002)", "Colin27", false, true},
     {"brodmann", "Brodmann areas (after Brodmann 1909; as drawn for MRIcro)", "Colin27", true, true},
     {"harvardoxford", "Harvard-Oxford (Desikan et al., NeuroImage 2006)", "MNI152", false, false},
     {"aicha", "AICHA (Joliot et al., J Neurosci Methods 2015)", "MNI152", false, false}}};

struct Refused {
  std::string_view start;
  const char* why;
};
constexpr std::array<Refused, 3> refusedNames = {
    {{"jhu-whitematter", mirrored}, {"jhu189", unchecked}, {"inia19", monkey}}};

// CRC-32 of the labels, two bytes each, the low one first. The mirrored ones hold right labels under a wrong
// sform, whose first axis runs to the right.
struct RefusedContent {
  std::uint32_t check;
  const char* why;
  bool isOfSform;
};
constexpr std::array<RefusedContent, 4> refusedContents = {{{0xF4AA2AD9, mirrored, true},
                                                            {0x3837A8FC, mirrored, true},
                                                            {0xA7F24A07, unchecked, false},
                                                            {0xDCFAC0BE, monkey, false}}};

std::uint32_t checkOf(const std::vector<Label>& labels) {
  std::array<Bytef, 8192> piece{};
  uLong check = crc32(0, nullptr, 0);
  for (std::size_t done = 0; done < labels.size();) {
    uInt size = 0;
    for (; size < piece.size() && done < labels.size(); ++done) {
      piece.at(size++) = static_cast<Bytef>(labels[done] & 0xFFU);
      piece.at(size++) = static_cast<Bytef>(labels[done] >> 8U);
    }
    check = crc32(check, piece.data(), size);
  }
  return static_cast<std::uint32_t>(check);
}

}  // namespace

KnownAtlas knownAtlas(const std::string& name) {
  const std::string lower = lowered(name);
  for (const Known& known : knownOnes) {
    if (known.isWholeName ? lower == known.start : lower.starts_with(known.start)) {
      return {known.title, known.space, known.isOfAreas};
    }
  }
  return {};
}

std::string refusalOfName(const std::string& name) {
  const std::string lower = lowered(name);
  const auto* const found = std::find_if(refusedNames.begin(), refusedNames.end(),
                                         [&](const Refused& one) { return lower.starts_with(one.start); });
  return found == refusedNames.end() ? std::string() : found->why;
}

std::string refusalOfContent(const std::vector<Label>& labels, const Affine& toMm) {
  const std::uint32_t check = checkOf(labels);
  for (const RefusedContent& one : refusedContents) {
    if (one.check == check && (!one.isOfSform || toMm.column(0).x > 0.0)) {
      return one.why;
    }
  }
  return {};
}

}  // namespace host
