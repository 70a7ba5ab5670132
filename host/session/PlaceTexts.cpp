#include "host/session/PlaceTexts.h"

#include <algorithm>
#include <cmath>

#include "host/exchange/PlaceNames.h"
#include "host/text/Numbers.h"

namespace host {

namespace {

// One coordinate with the side that it lies on.
std::string sided(double mm, const char* positive, const char* negative) {
  const std::string size = fixed(std::abs(mm), 1);
  return std::string(mm < 0.0 && size != "0.0" ? negative : positive) + " " + size;
}

// Names of an atlas are of any characters; a bar has one line.
std::string inOneLine(std::string text) {
  constexpr char lastControl = 0x1F;
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c >= 0 && c <= lastControl; }, ' ');
  return text;
}

std::string labelText(const Session& session) {
  const std::string& name = session.atlas()->name();
  const KnownHead head = session.knownHead();
  if (!head.points || !head.mni) {
    return name + ": needs a registered head and its MNI coordinates";
  }
  const PlaceNames names(session.atlas(), head);
  const bool areSpacesKnown = !names.space().empty() && !names.atlas().space().empty();
  const char* const why = areSpacesKnown ? "of another space" : "its space is not known to be the same";
  return name + ": " + names.textAt(session.crosshair()) +
         (names.doubt().empty() ? "" : std::string(" (") + why + ", may be some mm off)");
}

}  // namespace

std::string headPlaceText(const Vector3& head) {
  return sided(head.x, "L", "R") + "  " + sided(head.y, "S", "I") + "  " + sided(head.z, "A", "P") + " mm";
}

std::string mniName(const MniMap& map) {
  return map.space.empty() ? "MNI (which one is not known)" : map.space;
}

PlaceTexts placeTexts(const Session& session) {
  PlaceTexts texts;
  texts.head = headPlaceText(session.crosshair());
  texts.label = session.atlas() ? inOneLine(labelText(session)) : "";
  if (!session.head().isRegistered()) {
    texts.head += " from the middle of the MRI";
  }
  if (!session.hasScannerFrame()) {
    return texts;
  }
  texts.scannerName = session.head().source.space == MriSpace::scanner ? "Scanner" : "MRI";
  const Vector3 scanner = session.head().frame.toScanner(session.crosshair());
  texts.scanner = sided(scanner.x, "R", "L") + "  " + sided(scanner.y, "A", "P") + "  " +
                  sided(scanner.z, "S", "I") + " mm";
  if (const std::optional<MniMap>& map = session.mni()) {
    const Vector3 mni = map->fromScanner(scanner);
    texts.mni =
        mniName(*map) + "  " + fixed(mni.x, 1) + "  " + fixed(mni.y, 1) + "  " + fixed(mni.z, 1) + " mm";
  }
  return texts;
}

}  // namespace host
