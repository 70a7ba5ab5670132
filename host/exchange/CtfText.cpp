#include "host/exchange/CtfText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "host/audit/TextLines.h"
#include "host/text/Blanks.h"

namespace host {

namespace {

constexpr int longestLine = 2000;  // the import cuts lines of more than 2048 bytes
constexpr const char* noLabel = "Non";

// The shortest text of a number in single precision, which any reader of numbers takes.
std::string digitsOf(float value) {
  if (std::isnan(value)) {
    return "nan";
  }
  std::array<char, 64> buffer{};
  const float size = std::abs(value);
  const bool isPlain = value == 0.0F || (size >= 1e-4F && size < 1e9F);
  const auto end =
      isPlain ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed)
              : std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end.ptr};
}

// The number that becomes `member` when it is multiplied by `factor` in single precision, or the nearest to
// it.
float writtenFor(double member, float factor) {
  const auto wanted = static_cast<float>(member);
  const float first = static_cast<float>(member / static_cast<double>(factor));
  if (!std::isfinite(wanted) || !std::isfinite(first)) {
    return wanted / factor;
  }
  // Of several that do, the one that a person would have written.
  const auto isBetter = [&](float one, float other) {
    const double distance = std::abs(static_cast<double>(one * factor) - member);
    const double otherDistance = std::abs(static_cast<double>(other * factor) - member);
    return distance < otherDistance ||
           (distance == otherDistance && digitsOf(one).size() < digitsOf(other).size());
  };
  float best = first;
  constexpr float infinite = std::numeric_limits<float>::infinity();
  for (const float one : {std::nextafter(first, -infinite), std::nextafter(first, infinite)}) {
    best = isBetter(one, best) ? one : best;
  }
  return best;
}

bool isSame(double member, float read) {
  return static_cast<double>(read) == member || (std::isnan(member) && std::isnan(read));
}

// 8-bit text in the system's code page: a unit that it does not have is a question mark.
class CodePage {
 public:
  CodePage() {
    for (int byte = 0x80; byte < 0x100; ++byte) {
      const char text = static_cast<char>(byte);
      const CString unit = TextEncoding::asAnsi({&text, 1});
      if (unit.GetLength() == 1) {
        m_bytes.emplace(unit.GetAt(0), text);
      }
    }
  }

  // False: a unit was not there.
  bool add(std::string& bytes, const CString& text) const {
    bool isWhole = true;
    for (int i = 0; i < text.GetLength(); ++i) {
      const auto unit = text.GetAt(i);
      const auto found = m_bytes.find(unit);
      const bool isAsciiUnit = unit > 0 && unit < 0x80;
      isWhole = isWhole && (isAsciiUnit || found != m_bytes.end());
      bytes += isAsciiUnit ? static_cast<char>(unit) : found != m_bytes.end() ? found->second : '?';
    }
    return isWhole;
  }

 private:
  std::map<TCHAR, char> m_bytes;
};

// What the import reads back as `member`. It cuts as many characters off a line's front as the keyword has:
// an indented keyword leaves its end in the member, which belongs to the keyword again.
std::string keyedLine(const std::string& keyword, const std::string& member) {
  for (std::size_t kept = keyword.size(); kept > 0; --kept) {
    if (member.starts_with(keyword.substr(keyword.size() - kept))) {
      return std::string(kept, '\t') + keyword + member.substr(kept) + "\n";
    }
  }
  return keyword + member + "\n";
}

struct Color {
  float red;
  float green;
  float blue;
};
// By their codes; the last one is what every other code is.
constexpr std::array<Color, 8> colors = {
    {{1, 1, 0}, {0, 1, 0}, {1, 0, 0}, {0, 1, 1}, {1, 0, 1}, {1, 1, 1}, {0, 0, 0}, {0, 0, 1}}};

float distance(const Color& color, const float (&wanted)[3]) {
  const float red = color.red - wanted[0];
  const float green = color.green - wanted[1];
  const float blue = color.blue - wanted[2];
  return red * red + green * green + blue * blue;
}

int codeOf(const float (&wanted)[3]) {
  const auto* const nearest = std::min_element(
      colors.begin(), colors.end(),
      [&](const Color& one, const Color& other) { return distance(one, wanted) < distance(other, wanted); });
  return static_cast<int>(nearest - colors.begin());
}

class Writer {
 public:
  Writer(const CDipoleFace9File& set, const UnknownValues& unknown) : m_set(set), m_unknown(unknown) {
    for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
      if (set.m_dipoles[slot] != nullptr) {
        m_slots.push_back(slot);
      }
    }
  }

  CtfText run() {
    addFileInfo();
    addModel();
    addSphere();
    addPoints();
    addDipoles();
    addFlags();
    addFitInfo();
    addLostMembers(m_result.losses, m_set, m_unknown,
                   {fieldId, fieldFitTag, fieldLabel, fieldOrientationX, fieldMoment, fieldLatency,
                    fieldFitError, fieldRed3D, fieldDisplay});
    return std::move(m_result);
  }

 private:
  using Lines = std::string;

  void addSection(const char* name, const Lines& body) {
    if (!body.empty()) {
      m_result.text += std::string(m_result.text.empty() ? "" : "\n") + name + "\n{\n" + body + "}\n";
    }
  }

  // A line of a header, when the member can stand there.
  Lines headerLine(const char* keyword, const char* name, const CString& member) {
    std::string text;
    if (member.IsEmpty() || member == _T("non")) {
      return {};
    }
    const bool isWhole = m_codePage.add(text, member);
    const bool isLine = text.find_first_of("\r\n{}") == std::string::npos &&
                        text.find("//") == std::string::npos &&
                        text.size() < static_cast<std::size_t>(longestLine);
    if (!isWhole || !isLine) {
      m_result.losses.addOfSet(std::string("the text of the ") + name);
    }
    return isLine ? keyedLine(keyword, text) : Lines();
  }

  void addFileInfo() {
    addSection("File_Info", headerLine("VERSION:", "version", m_set.m_fileVersion) +
                                headerLine("PATIENT:", "patient", m_set.m_patient));
  }

  void addModel() {
    const Lines type = m_set.m_megOnly != 0 ? "\tMODEL_TYPE:\tMEG_ONLY\n" : "";
    addSection("Model", type + headerLine("MRI_FILE:", "name of the MRI", m_set.m_mriFile));
  }

  // The number in front of the import's factor; what does not come back is told.
  std::string scaled(double member, float factor, const char* name) {
    const float written = writtenFor(member, factor);
    if (!isSame(member, written * factor)) {
      m_rounded = name;
    }
    return digitsOf(written);
  }

  void countRounded() {
    if (m_rounded != nullptr) {
      m_result.losses.add(std::string("digits of the ") + m_rounded + " beyond single precision");
      m_rounded = nullptr;
    }
  }

  void addSphere() {
    if (m_set.m_bCtfSphereSet == 0) {
      return;
    }
    const CSpherezq& sphere = m_set.m_sphereCtf;
    if (sphere.m_radius == 0.0) {  // a set file keeps that there was one, and not where
      m_result.losses.addOfSet("that there was a head sphere");
      return;
    }
    const std::array<std::pair<const char*, double>, 4> values = {{{"ORIGIN_X", sphere.m_center[2]},
                                                                   {"ORIGIN_Y", sphere.m_center[0]},
                                                                   {"ORIGIN_Z", sphere.m_center[1]},
                                                                   {"RADIUS", sphere.m_radius}}};
    Lines body;
    for (const auto& [key, value] : values) {
      body += std::string("\t") + key + ":\t" + scaled(value, 10.0F, "head sphere") + "\n";
    }
    addSection("MEG_Sphere", body);
    if (m_rounded != nullptr) {
      m_result.losses.addOfSet("digits of the head sphere beyond single precision");
      m_rounded = nullptr;
    }
  }

  // Slices counted from the other end; whole numbers alone.
  void addPoints() {
    constexpr std::array<std::pair<const char*, int>, 3> names = {{{"NASION", CFiducial::nasion},
                                                                   {"LEFT_EAR", CFiducial::leftEar},
                                                                   {"RIGHT_EAR", CFiducial::rightEar}}};
    Lines body;
    bool isRounded = false;
    for (const auto& [name, index] : names) {
      double place[3] = {};
      if (m_set.m_fiducialMri.m_points[index].getPosition(place[0], place[1], place[2]) == 0) {
        continue;
      }
      body += std::string("\t") + name + ":";
      for (const int axis : {0, 2, 1}) {  // sagittal, coronal, axial
        const double slice = 256.0 - place[axis];
        const bool fits = std::abs(slice) < 1e6;
        const long whole = fits ? std::lround(slice) : 0;
        isRounded = isRounded || !fits || static_cast<double>(whole) != slice;
        body += "\t" + std::to_string(whole);
      }
      body += "\n";
    }
    addSection("Fid_Points", body.empty() ? body : "\t// Fid. Points\tSag\tCor\tAxi\n" + body);
    if (isRounded) {
      m_result.losses.addOfSet("fractions of the fiducial points of the MRI");
    }
  }

  void addDipoles() {
    Lines body = "\t// Dipole parameters ...\n\t// xp (cm)\typ (cm)\tzp (cm)\txo\tyo\tzo\t" +
                 std::string(m_set.m_momentInNAm != 0 ? "Mom(nAm)" : "Mom") + "\tLabel\n";
    int number = 0;
    bool hasLabel = false;
    for (const int slot : m_slots) {
      const CDipoleszq& dipole = *m_set.m_dipoles[slot];
      body += "\t" + std::to_string(++number) + ":";
      for (const int axis : {2, 0, 1}) {
        body += "\t" + scaled(dipole.m_location[axis], 10.0F, "position");
      }
      countRounded();
      for (const int axis : {2, 0, 1}) {
        body += "\t" + scaled(dipole.m_orientation[axis], 1.0F, "orientation");
      }
      countRounded();
      body += "\t" + scaled(dipole.m_moment, 1.0F, "moment");
      countRounded();
      const std::string label = labelOf(slot, dipole);
      // A row without a label takes that of the row before it.
      hasLabel = hasLabel || label != noLabel;
      body += hasLabel ? "\t" + label + "\n" : "\n";
      tellUnknown(slot, DipoleValue::moment, "that the moment is unknown");
      tellUnknown(slot, DipoleValue::orientation, "that the orientation is unknown");
      if (hasLabel) {
        tellUnknown(slot, DipoleValue::label, "that the label is unknown");
      }
    }
    addSection("Dipoles", body);
  }

  void tellUnknown(int slot, DipoleValue value, const char* name) {
    m_result.losses.add(name, m_unknown.isUnknown(slot, value) ? 1 : 0);
  }

  // One word, without what ends a section or begins a comment.
  std::string labelOf(int slot, const CDipoleszq& dipole) {
    if (m_unknown.isUnknown(slot, DipoleValue::label)) {
      return noLabel;
    }
    std::string bytes;
    bool isWhole = m_codePage.add(bytes, dipole.m_label);
    const bool isUnitHeader = bytes.find("(cm)") != std::string::npos;
    std::string label;
    for (const char c : bytes) {
      const bool isSecondSlash = c == '/' && label.ends_with('/');
      const bool isMark = c == '{' || c == '}' || (c == '(' && isUnitHeader);
      label += isBlank(c) || isSecondSlash || isMark ? '_' : c;
      isWhole = isWhole && label.back() == c;
    }
    if (label.size() > static_cast<std::size_t>(longestLine) / 2) {
      label.resize(static_cast<std::size_t>(longestLine) / 2);
      isWhole = false;
    }
    isWhole = isWhole && !label.empty();
    m_result.losses.add("spelling of the label", isWhole ? 0 : 1);
    return label.empty() ? noLabel : label;
  }

  void addFlags() {
    Lines body = "\t// Colour\tShape\tshow dir.\tshowlabel\tshow err\n";
    int number = 0;
    for (const int slot : m_slots) {
      const CDipoleszq& dipole = *m_set.m_dipoles[slot];
      const int color = codeOf(dipole.m_colorF);
      const Color& written = colors.at(static_cast<std::size_t>(color));
      m_result.losses.add("shade of the color in 3D", distance(written, dipole.m_colorF) == 0.0F ? 0 : 1);
      // The shapes of displayed dipoles, of those in display state 2, and of hidden ones.
      const int shape = dipole.m_display == 1 ? 0 : dipole.m_display == 2 ? 1 : 2;
      const bool isState = dipole.m_display >= 0 && dipole.m_display <= 2;
      m_result.losses.add("display state", isState ? 0 : 1);
      body += "\t" + std::to_string(++number) + ":\t" + std::to_string(color) + "\t" + std::to_string(shape) +
              "\t" + (dipole.m_showOrientation != 0 ? "1" : "0") + "\t1\t1\n";
    }
    addSection("Dipole_Flags", number == 0 ? Lines() : body);
  }

  // A set of which the file gave no fit has none to write.
  bool hasFit() const {
    return std::any_of(m_slots.begin(), m_slots.end(), [this](int slot) {
      const CDipoleszq& dipole = *m_set.m_dipoles[slot];
      return dipole.m_id != 0 || dipole.m_fitTag != 0 || !m_unknown.isUnknown(slot, DipoleValue::latency) ||
             !m_unknown.isUnknown(slot, DipoleValue::fitError);
    });
  }

  void addFitInfo() {
    if (!hasFit()) {
      return;
    }
    Lines body =
        "\t//\tTrial\tStart\tLatency "
        "(s)\tN_Pts\tError\tMEG_Error\tEEG_Error\tErrType\tFitType\tGood\tDataset\n";
    int number = 0;
    for (const int slot : m_slots) {
      const CDipoleszq& dipole = *m_set.m_dipoles[slot];
      body += "\t" + std::to_string(++number) + ":\t" + std::to_string(dipole.m_id) + "\t" +
              std::to_string(dipole.m_fitTag) + "\t" + scaled(dipole.m_latency, 1000.0F, "latency");
      countRounded();
      const std::string error = scaled(dipole.m_fitError, 1.0F, "fit error");
      countRounded();
      // The import takes whole numbers alone behind the error; other programs take the first of them for it.
      const bool isError = std::abs(dipole.m_fitError) < 1e6;
      const long rounded = isError ? std::lround(dipole.m_fitError) : 0;
      body += "\t1\t" + error + "\t" + std::to_string(rounded) + "\t0\t0\t0\t1\t-\n";
      tellUnknown(slot, DipoleValue::latency, "that the latency is unknown");
      tellUnknown(slot, DipoleValue::fitError, "that the fit error is unknown");
    }
    addSection("Dipole_FitInfo", body);
  }

  const CDipoleFace9File& m_set;
  const UnknownValues& m_unknown;
  std::vector<int> m_slots;
  CodePage m_codePage;
  CtfText m_result;
  const char* m_rounded = nullptr;
};

}  // namespace

CtfText ctfText(const CDipoleFace9File& set, const UnknownValues& unknown) {
  return Writer(set, unknown).run();
}

}  // namespace host
