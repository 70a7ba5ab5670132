#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/head/CtfMriReader.h"
#include "host/head/CtfMriVolume.h"
#include "host/head/CtfTags.h"
#include "host/head/FiducialFile.h"
#include "host/text/Blanks.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

constexpr std::size_t markSize = 4;
constexpr std::string_view versionMark = "CTF_MRI_FORMAT VER ";
constexpr std::string_view slicePrefix = "_CTFMRI_SLICE_DATA#";
constexpr std::size_t sliceDigits = 5;
constexpr std::size_t mostSliceBytes = std::size_t{CtfMri::most} * std::size_t{CtfMri::most} * 2;
constexpr std::string_view nasionName = "_HDM_NASION";
constexpr std::string_view leftEarName = "_HDM_LEFTEAR";
constexpr std::string_view rightEarName = "_HDM_RIGHTEAR";
constexpr char separator = '\\';

// The number of a slice; nothing when the name is none of a slice.
std::optional<int> sliceNumber(std::string_view name) {
  if (!name.starts_with(slicePrefix) || name.size() != slicePrefix.size() + sliceDigits) {
    return std::nullopt;
  }
  int number = 0;
  const char* const end = name.data() + name.size();
  const auto [last, error] = std::from_chars(name.data() + slicePrefix.size(), end, number);
  return error == std::errc() && last == end ? std::optional(number) : std::nullopt;
}

class Reader {
 public:
  explicit Reader(ByteSource& source) : m_tags(source) {}

  ReadHead read() {
    while (m_tags.next()) {
      take();
    }
    return result();
  }

 private:
  void take() {
    const std::string& name = m_tags.name();
    if (const std::optional<int> number = sliceNumber(name)) {
      once();
      m_slices[*number] = slice(*number);
    } else if (name == "_CTFMRI_VERSION") {
      once();
      takeVersion(m_tags.text());
    } else if (name == "_CTFMRI_SIZE") {
      once();
      m_mri.size = m_tags.smallNumber();
    } else if (name == "_CTFMRI_DATASIZE") {
      once();
      m_mri.bytesPerVoxel = m_tags.smallNumber();
    } else if (name == "_CTFMRI_MMPERPIXEL") {
      once();
      m_mri.spacing = triple();
    } else if (name == nasionName || name == leftEarName || name == rightEarName) {
      once();
      m_points[name] = triple();
    } else if (name == "_CTFMRI_TRANSFORMMATRIX") {
      once();
      takeMatrix(m_tags.text());
    }
  }

  // Some tags stand there once for each slice of the source. None that is used here does.
  void once() {
    if (!m_seen.insert(m_tags.name()).second) {
      refuse("stands there twice");
    }
  }

  [[noreturn]] void refuse(const std::string& cause) const {
    throw std::runtime_error("the tag " + m_tags.name() + " " + cause);
  }

  std::vector<std::byte> slice(int number) {
    if (number < 1 || number > CtfMri::most) {
      refuse("is the slice of no picture");
    }
    return m_tags.image(mostSliceBytes);
  }

  Vector3 triple() {
    const std::optional<Vector3> value = readCoordinates(m_tags.text(), separator);
    if (!value) {
      refuse("does not hold three numbers");
    }
    return *value;
  }

  void takeVersion(const std::string& text) {
    if (!text.starts_with(versionMark) || !text.substr(versionMark.size()).starts_with("4.")) {
      refuse("names no version 4.x");
    }
    m_mri.version = text.substr(versionMark.size());
  }

  void takeMatrix(std::string_view text) {
    std::array<double, 16> matrix{};
    for (std::size_t i = 0; i < matrix.size(); ++i) {
      const std::size_t end = i + 1 < matrix.size() ? text.find(separator) : text.size();
      const std::optional<double> value =
          end == std::string_view::npos ? std::nullopt : numberOf(withoutBlanks(text.substr(0, end)));
      if (!value) {
        refuse("does not hold 16 numbers");
      }
      matrix[i] = *value;
      text.remove_prefix((std::min)(end + 1, text.size()));
    }
    m_mri.matrix = matrix;
  }

  Vector3 pointNamed(std::string_view name) const { return m_points.find(name)->second; }

  void checkSeen(const char* name) const {
    if (!m_seen.contains(name)) {
      throw std::runtime_error(std::string("the tag ") + name + " is missing");
    }
  }

  ReadHead result() {
    for (const char* const name :
         {"_CTFMRI_VERSION", "_CTFMRI_SIZE", "_CTFMRI_DATASIZE", "_CTFMRI_MMPERPIXEL"}) {
      checkSeen(name);
    }
    checkCtfPicture(m_mri);
    if (m_points.size() == 3) {
      m_mri.points = Fiducials{pointNamed(nasionName), pointNamed(leftEarName), pointNamed(rightEarName)};
    }
    const std::size_t wanted = CtfMriVolume::sliceBytes(m_mri);
    if (!m_slices.empty() && m_slices.rbegin()->first > m_mri.size) {
      throw std::runtime_error("slice " + std::to_string(m_slices.rbegin()->first) +
                               " is there, of a picture of " + std::to_string(m_mri.size));
    }
    CtfMriVolume volume(m_mri, ctfPlaces(m_mri));
    for (int number = 1; number <= m_mri.size; ++number) {
      const auto found = m_slices.find(number);
      if (found == m_slices.end()) {
        throw std::runtime_error("slice " + std::to_string(number) + " of " + std::to_string(m_mri.size) +
                                 " is missing");
      }
      if (found->second.size() != wanted) {
        throw std::runtime_error("slice " + std::to_string(number) + " has " +
                                 std::to_string(found->second.size()) + " bytes instead of " +
                                 std::to_string(wanted));
      }
      volume.append(found->second);
      found->second = {};
    }
    return volume.finish();
  }

  CtfTags m_tags;
  CtfMri m_mri;
  std::map<std::string, Vector3, std::less<>> m_points;
  std::map<int, std::vector<std::byte>> m_slices;
  std::set<std::string, std::less<>> m_seen;
};

}  // namespace

ReadHead readCtfMri4(ByteSource& source) {
  (void)source.skip(markSize);
  ReadHead head = Reader(source).read();
  source.finish();
  return head;
}

}  // namespace host
