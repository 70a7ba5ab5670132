#include "host/page/PageWorld.h"

#include <array>
#include <charconv>

namespace host {

namespace {

Json matrixJson(const Affine& map) {
  Json numbers = Json::array();
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      numbers.push_back(map.column(column)[row]);
    }
    numbers.push_back(map.shift()[row]);
  }
  for (const double last : {0.0, 0.0, 0.0, 1.0}) {
    numbers.push_back(last);
  }
  return numbers;
}

Json worldJson(bool hasHead, MriSpace space) {
  if (!hasHead) {
    return {{"kind", "head"},
            {"title", "Head"},
            {"description",
             "There is no MRI: places are in the head frame, turned to right, anterior, superior."}};
  }
  if (space == MriSpace::scanner) {
    return {{"kind", "scanner"},
            {"title", "Scanner"},
            {"description", "Millimetres of the MRI's scanner: right, anterior, superior."}};
  }
  return {{"kind", "mri"},
          {"title", "MRI"},
          {"description",
           "Millimetres of the MRI, not a scanner's: " + textOf(space) + "; right, anterior, superior."}};
}

}  // namespace

PageWorld::PageWorld(const PageSource& source)
    : hasHead(source.head.isRegistered() && !source.head.isAbsent && !source.head.isPhantom) {
  const KnownHead known = hasHead ? source.known : KnownHead();
  fromHost = patientFrame(known).fromHost;
  json = worldJson(hasHead, known.space);
  frames.push_back({"host", "Head", frameNamed(FrameName::host, known)});
  frames.push_back({"ctf", "CTF head", frameNamed(FrameName::ctf, known)});
  if (known.points || known.neuromagToScanner) {
    frames.push_back({"neuromag", "Neuromag head", frameNamed(FrameName::neuromag, known)});
  }
  if (known.isPlaced()) {
    const bool isScanner = known.space == MriSpace::scanner;
    frames.push_back({isScanner ? "scanner" : "mri", isScanner ? "Scanner" : "MRI", patientFrame(known)});
  }
  if (known.isPlaced() && known.mni) {
    frames.push_back(
        {"mni", known.mni->space.empty() ? "MNI" : known.mni->space, frameNamed(FrameName::mni, known)});
  }
}

Json PageWorld::framesJson() const {
  const Affine toHost = fromHost.inverse().value();
  Json list = Json::array();
  for (const PageFrame& known : frames) {
    list.push_back({{"name", known.name},
                    {"title", known.title},
                    {"description", known.frame.description},
                    {"axes", known.frame.axes},
                    {"fromWorld", matrixJson(known.frame.fromHost.after(toHost))}});
  }
  return list;
}

double singleDigits(double value) {
  constexpr int digits = 6;  // behind the first
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, digits);
  double rounded = value;
  (void)std::from_chars(text.data(), end.ptr, rounded);
  return rounded;
}

Json jsonVector(const Vector3& vector) {
  return Json::array({jsonNumber(singleDigits(vector.x)), jsonNumber(singleDigits(vector.y)),
                      jsonNumber(singleDigits(vector.z))});
}

}  // namespace host
