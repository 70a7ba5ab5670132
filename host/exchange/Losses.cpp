#include "host/exchange/Losses.h"

#include <algorithm>
#include <array>

#include "host/dipoles/HeaderText.h"

namespace host {

namespace {

// What a person calls a column; null: it is never lost alone.
const char* nameOf(std::size_t place) {
  switch (place) {
    case fieldId:
      return "identifier";
    case fieldFitTag:
      return "fit tag";
    case fieldLabel:
      return "label";
    case fieldMoment:
      return "moment";
    case fieldLatency:
      return "latency";
    case fieldFitError:
      return "fit error";
    case fieldOrientationX:
      return "orientation";
    case fieldColor:
      return "color";
    case fieldRed3D:
      return "color in 3D";
    case fieldShown:
      return "whether 3D shows it";
    case fieldOrientationShown:
      return "whether 3D shows its orientation";
    case fieldDisplay:
      return "whether slices show it";
    case fieldSelected:
      return "selection";
    case fieldGlyphSize:
      return "size on slices";
    default:
      return nullptr;
  }
}

// Members without a column in any table.
struct OtherMember {
  const char* name;
  double (*get)(const CDipoleszq& dipole);
};
constexpr std::array<OtherMember, 8> otherMembers = {{
    {"extra flag", [](const CDipoleszq& d) { return double{1.0} * d.m_extraFlag; }},
    {"extra value", [](const CDipoleszq& d) { return d.m_extraValue; }},
    {"segments", [](const CDipoleszq& d) { return double{1.0} * d.m_segments; }},
    {"size in 3D", [](const CDipoleszq& d) { return d.m_scale; }},
    {"scale of the orientation in 3D", [](const CDipoleszq& d) { return d.m_orientationScale; }},
    {"length of the orientation in 3D", [](const CDipoleszq& d) { return d.m_orientationLength; }},
    {"first import tag", [](const CDipoleszq& d) { return static_cast<double>(d.m_importTag1); }},
    {"second import tag", [](const CDipoleszq& d) { return static_cast<double>(d.m_importTag2); }},
}};

bool isOfThree(std::size_t place, std::size_t first) {
  return place >= first && place < first + 3;
}

// A direction or a colour is lost as one.
std::size_t firstOf(std::size_t place) {
  for (const std::size_t first : {fieldOrientationX, fieldRed3D}) {
    if (isOfThree(place, first)) {
      return first;
    }
  }
  return place;
}

bool isKnownFieldLost(std::size_t place, const CDipoleszq& dipole, const CDipoleszq& fresh,
                      std::uint8_t unknown) {
  const FieldValue value = fieldValue(place, dipole, unknown);
  return !std::holds_alternative<std::monostate>(value) && value != fieldValue(place, fresh, 0);
}

bool isSetPartThere(const CDipoleFace& set, SetPart part) {
  double place[3] = {};
  switch (part) {
    case SetPart::patient:
      return !patientOf(set).empty();
    case SetPart::version:
      return !versionOf(set).empty();
    case SetPart::mriFile:
      return !headerText(set.m_mriFile, "MRI_FILE:").empty();
    case SetPart::sphere:
      return set.m_bCtfSphereSet != 0;
    case SetPart::mriPoints:
      return set.m_fiducialMri.m_points[CFiducial::nasion].getPosition(place[0], place[1], place[2]) != 0;
  }
  return false;
}

const char* nameOf(SetPart part) {
  constexpr std::array<const char*, 5> names = {"patient", "version of the file", "name of the MRI",
                                                "head sphere", "fiducial points of the MRI"};
  return names.at(static_cast<std::size_t>(part));
}

}  // namespace

void Losses::add(const std::string& name, int dipoles) {
  if (dipoles == 0) {
    return;
  }
  const auto same = std::find_if(m_ofDipoles.begin(), m_ofDipoles.end(),
                                 [&](const auto& loss) { return loss.first == name; });
  (same != m_ofDipoles.end() ? *same : m_ofDipoles.emplace_back(name, 0)).second += dipoles;
}

void Losses::addOfSet(const std::string& name) {
  m_ofSet.push_back(name);
}

std::string Losses::sentence() const {
  std::string text;
  const auto add = [&text](const std::string& part) { text += (text.empty() ? "" : ", ") + part; };
  for (const auto& [name, count] : m_ofDipoles) {
    add(name + " of " + std::to_string(count) + (count == 1 ? " dipole" : " dipoles"));
  }
  for (const std::string& name : m_ofSet) {
    add(name);
  }
  return text.empty() ? text : "This file cannot hold: " + text + ".";
}

void addLostMembers(Losses& losses, const CDipoleFace& set, const UnknownValues& unknown,
                    std::initializer_list<std::size_t> held) {
  const CDipoleszq fresh;
  std::array<bool, fieldCount> isHeld{};
  for (const std::size_t place : held) {
    isHeld.at(place) = true;
  }
  for (std::size_t place = 0; place < fieldCount; ++place) {
    if (isHeld.at(firstOf(place)) || nameOf(place) == nullptr) {
      continue;
    }
    const std::size_t end = place == fieldOrientationX || place == fieldRed3D ? place + 3 : place + 1;
    int count = 0;
    for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
      const CDipoleszq* const dipole = set.m_dipoles[slot];
      bool isLost = false;
      for (std::size_t one = place; one < end && dipole != nullptr; ++one) {
        isLost = isLost || isKnownFieldLost(one, *dipole, fresh, unknown.of(slot));
      }
      count += isLost ? 1 : 0;
    }
    losses.add(nameOf(place), count);
  }
  for (const OtherMember& member : otherMembers) {
    int count = 0;
    for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
      const CDipoleszq* const dipole = set.m_dipoles[slot];
      count += dipole != nullptr && member.get(*dipole) != member.get(fresh) ? 1 : 0;
    }
    losses.add(member.name, count);
  }
}

void addLostParts(Losses& losses, const CDipoleFace& set, std::initializer_list<SetPart> lost) {
  for (const SetPart part : lost) {
    if (isSetPartThere(set, part)) {
      losses.addOfSet(nameOf(part));
    }
  }
}

}  // namespace host
