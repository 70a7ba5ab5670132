#include "host/exchange/VtpFile.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "host/dipoles/HeaderText.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr float none = std::numeric_limits<float>::quiet_NaN();

class Bytes {
 public:
  void addWord(std::uint32_t word) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
      m_bytes += static_cast<char>(word >> shift & 0xFFU);
    }
  }
  void add(float value) { addWord(std::bit_cast<std::uint32_t>(value)); }
  void add(double value) { add(static_cast<float>(value)); }
  void add(std::int32_t value) { addWord(static_cast<std::uint32_t>(value)); }
  void add(const std::string& text) { m_bytes += text + '\0'; }

  // As VTK has it inline: the length in front, all in base64.
  std::string inlined() const {
    Bytes whole;
    whole.addWord(static_cast<std::uint32_t>(m_bytes.size()));
    whole.m_bytes += m_bytes;
    return base64Of(whole.m_bytes);
  }

 private:
  static std::string base64Of(std::string_view bytes) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
      std::uint32_t group = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        group = group << 8U | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
      }
      for (unsigned i = 0; i < 4; ++i) {
        text += at + i <= bytes.size() ? letters[group >> (18U - 6U * i) & 0x3FU] : '=';
      }
    }
    return text;
  }

  std::string m_bytes;
};

std::string arrayOf(const char* type, const std::string& name, int components, const Bytes& bytes) {
  return "        <DataArray type=\"" + std::string(type) + "\" Name=\"" + name + "\" NumberOfComponents=\"" +
         std::to_string(components) + "\" format=\"binary\">" + bytes.inlined() + "</DataArray>\n";
}

// Texts are arrays of their own kind, in codes of their bytes.
std::string textsOf(const std::string& name, const std::vector<std::string>& texts, bool isField) {
  std::string codes;
  for (const std::string& text : texts) {
    for (const char c : text) {
      codes += std::to_string(static_cast<unsigned char>(c)) + " ";
    }
    codes += "0 ";
  }
  const std::string tuples = isField ? " NumberOfTuples=\"" + std::to_string(texts.size()) + "\"" : "";
  return "        <Array type=\"String\" Name=\"" + name + "\"" + tuples + " format=\"ascii\">" + codes +
         "</Array>\n";
}

class Writer {
 public:
  Writer(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
         const SetPlaces* places)
      : m_source(set), m_set(inFrame(set, frame)), m_unknown(unknown), m_frame(frame), m_places(places) {
    for (int slot = 0; slot < m_set->m_totalDipoles; ++slot) {
      if (m_set->m_dipoles[slot] != nullptr) {
        m_slots.push_back(slot);
      }
    }
  }

  VtpFile run() {
    const std::string count = std::to_string(m_slots.size());
    std::string xml =
        "<?xml version=\"1.0\"?>\n<VTKFile type=\"PolyData\" version=\"1.0\" byte_order=\"LittleEndian\" "
        "header_type=\"UInt32\">\n  <PolyData>\n    <FieldData>\n" +
        fieldData() + "    </FieldData>\n    <Piece NumberOfPoints=\"" + count + "\" NumberOfVerts=\"" +
        count +
        "\" NumberOfLines=\"0\" NumberOfStrips=\"0\" NumberOfPolys=\"0\">\n      <PointData "
        "Vectors=\"moment\">\n" +
        pointData() + "      </PointData>\n      <Points>\n" +
        arrayOf("Float32", "Points", 3,
                triples([](const CDipoleszq& dipole, int axis) { return dipole.m_location[axis]; })) +
        "      </Points>\n      <Verts>\n" + verts() +
        "      </Verts>\n    </Piece>\n  </PolyData>\n</VTKFile>\n";
    addLostMembers(m_losses, m_source, m_unknown,
                   {fieldId, fieldFitTag, fieldLabel, fieldOrientationX, fieldMoment, fieldLatency,
                    fieldFitError, fieldColor, fieldRed3D, fieldShown});
    addLostParts(m_losses, m_source,
                 {SetPart::version, SetPart::mriFile, SetPart::sphere, SetPart::mriPoints});
    return {std::move(xml), std::move(m_losses)};
  }

 private:
  bool isUnknown(int slot, DipoleValue value) const { return m_unknown.isUnknown(slot, value); }

  std::string fieldData() const {
    std::string data = textsOf("FRAME", {m_frame.description + "; mm"}, true);
    if (m_frame.isRightFrontUp()) {
      data += textsOf("SPACE", {"RAS"}, true);
    }
    if (m_frame.points) {
      std::string points;
      for (const auto& [name, point] :
           {std::pair("nasion", m_frame.points->nasion), std::pair("left", m_frame.points->leftEar),
            std::pair("right", m_frame.points->rightEar)}) {
        points += std::string(points.empty() ? "" : "; ") + name;
        for (int axis = 0; axis < 3; ++axis) {
          points += " " + exact(point[axis]);
        }
      }
      data += textsOf(m_frame.space == MriSpace::scanner ? "FIDUCIALS_SCANNER_MM" : "FIDUCIALS_MRI_MM",
                      {points}, true);
    }
    if (m_places != nullptr) {
      data += textsOf("ATLAS", {m_places->atlas + ": " + m_places->about}, true);
    }
    const std::string patient = patientOf(m_source);
    return patient.empty() ? data : data + textsOf("PATIENT", {patient}, true);
  }

  template <typename Get>
  Bytes triples(Get get) const {
    Bytes bytes;
    for (const int slot : m_slots) {
      for (int axis = 0; axis < 3; ++axis) {
        bytes.add(get(*m_set->m_dipoles[slot], axis));
      }
    }
    return bytes;
  }

  // By slot; what is unknown is no number.
  template <typename Get>
  Bytes vectors(std::uint8_t needed, Get get) const {
    Bytes bytes;
    for (const int slot : m_slots) {
      const bool isKnown = (m_unknown.of(slot) & needed) == 0;
      for (int axis = 0; axis < 3; ++axis) {
        bytes.add(isKnown ? static_cast<float>(get(*m_set->m_dipoles[slot], axis)) : none);
      }
    }
    return bytes;
  }

  std::string scalars(const char* name, DipoleValue value, double CDipoleszq::*member) const {
    Bytes bytes;
    for (const int slot : m_slots) {
      bytes.add(isUnknown(slot, value) ? none : static_cast<float>(m_set->m_dipoles[slot]->*member));
    }
    return arrayOf("Float32", name, 1, bytes);
  }

  std::string wholes(const char* name, int CDipoleszq::*member) const {
    Bytes bytes;
    for (const int slot : m_slots) {
      bytes.add(static_cast<std::int32_t>(m_set->m_dipoles[slot]->*member));
    }
    return arrayOf("Int32", name, 1, bytes);
  }

  std::string pointData() const {
    const auto orientation = [](const CDipoleszq& dipole, int axis) { return dipole.m_orientation[axis]; };
    const auto moment = [](const CDipoleszq& dipole, int axis) {
      return dipole.m_orientation[axis] * dipole.m_moment;
    };
    constexpr auto direction = static_cast<std::uint8_t>(DipoleValue::orientation);
    constexpr auto both =
        static_cast<std::uint8_t>(direction | static_cast<std::uint8_t>(DipoleValue::moment));
    const char* const size = m_set->m_momentInNAm != 0 ? "moment_nAm" : "moment_size";
    std::vector<std::string> labels;
    Bytes colors;
    for (const int slot : m_slots) {
      const CDipoleszq& dipole = *m_set->m_dipoles[slot];
      labels.push_back(isUnknown(slot, DipoleValue::label) ? std::string() : utf8Of(dipole.m_label));
      for (const float part : dipole.m_colorF) {
        colors.add(part);
      }
    }
    return arrayOf("Float32", "moment", 3, vectors(both, moment)) +
           arrayOf("Float32", "orientation", 3, vectors(direction, orientation)) +
           scalars(size, DipoleValue::moment, &CDipoleszq::m_moment) +
           scalars("latency_ms", DipoleValue::latency, &CDipoleszq::m_latency) +
           scalars("fit_error_percent", DipoleValue::fitError, &CDipoleszq::m_fitError) +
           wholes("number", &CDipoleszq::m_number) + wholes("id", &CDipoleszq::m_id) +
           wholes("fit_tag", &CDipoleszq::m_fitTag) + wholes("shown", &CDipoleszq::m_show) +
           arrayOf("Float32", "color", 3, colors) + textsOf("label", labels, false) + placeData();
  }

  std::string placeData() const {
    if (m_places == nullptr) {
      return {};
    }
    std::vector<std::string> names;
    Bytes distances;
    for (const int slot : m_slots) {
      const std::optional<NamedPlace>& place = m_places->of(slot);
      names.push_back(place ? place->name : std::string());
      distances.add(place ? static_cast<float>(place->distance) : none);
    }
    return textsOf(m_places->labelTitle, names, false) +
           arrayOf("Float32", m_places->distanceTitle, 1, distances);
  }

  std::string verts() const {
    Bytes connectivity;
    Bytes offsets;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(m_slots.size()); ++i) {
      connectivity.add(i);
      offsets.add(i + 1);
    }
    return arrayOf("Int32", "connectivity", 1, connectivity) + arrayOf("Int32", "offsets", 1, offsets);
  }

  const CDipoleFace9File& m_source;
  std::unique_ptr<CDipoleFace9File> m_set;  // in the frame
  const UnknownValues& m_unknown;
  const SetFrame& m_frame;
  const SetPlaces* m_places;  // null: there are none
  std::vector<int> m_slots;
  Losses m_losses;
};

}  // namespace

VtpFile vtpFile(const CDipoleFace9File& set, const UnknownValues& unknown, const SetFrame& frame,
                const SetPlaces* places) {
  return Writer(set, unknown, frame, places).run();
}

}  // namespace host
