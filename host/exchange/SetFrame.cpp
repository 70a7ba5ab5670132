#include "host/exchange/SetFrame.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/dipoles/DipolePlace.h"
#include "host/exchange/NeuromagText.h"
#include "host/exchange/TableFile.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/Blanks.h"
#include "host/text/Letters.h"
#include "host/text/Numbers.h"
#include "host/text/PathText.h"

namespace host {

namespace {

constexpr std::size_t mostMapBytes = 65536;

// Of all words of a text that is nothing but numbers; the last may end in a semicolon.
std::vector<double> numbersOf(std::string_view text) {
  std::vector<double> numbers;
  while (true) {
    text.remove_prefix((std::min)(text.find_first_not_of(" \t\r\n\v\f"), text.size()));
    if (text.empty()) {
      return numbers;
    }
    std::string_view word = text.substr(0, text.find_first_of(" \t\r\n\v\f"));
    text.remove_prefix(word.size());
    if (word.ends_with(';')) {
      word.remove_suffix(1);
    }
    const std::optional<double> number = numberOf(word);
    if (!number && !word.empty()) {
      throw std::invalid_argument("\"" + std::string(word.substr(0, 40)) + "\" is no number");
    }
    if (number) {
      numbers.push_back(*number);
    }
  }
}

// Three rows of four numbers.
Affine affineOf(const std::vector<double>& rows) {
  const auto column = [&](std::size_t index) {
    return Vector3{rows[index], rows[index + 4], rows[index + 8]};
  };
  return {column(0), column(1), column(2), column(3)};
}

// A map of one head to another turns, shears, scales and shifts it by a little. One that mirrors it, or is in
// millimetres to the left and back, would show the left as the right.
void checkMapOfHeads(const Affine& map) {
  constexpr double least = 0.3;  // of the length of a direction
  constexpr double most = 3.0;
  if (dot(map.column(0), cross(map.column(1), map.column(2))) < 0.0) {
    throw std::invalid_argument("the matrix mirrors the head: it exchanges left and right");
  }
  for (int axis = 0; axis < 3; ++axis) {
    const double size = length(map.column(axis));
    if (size < least || size > most) {
      throw std::invalid_argument("the matrix makes " + fixed(size, 3) +
                                  " mm of a mm, which maps no head in mm to another");
    }
    if (map.column(axis)[axis] <= 0.5 * size) {  // more than 60 degrees
      throw std::invalid_argument(
          "the matrix turns the head round: right, front and up do not stay where they are");
    }
  }
  constexpr double farthest = 500.0;  // mm
  if (!(length(map.shift()) <= farthest)) {
    throw std::invalid_argument("the matrix shifts the head by more than 500 mm");
  }
}

Affine inverted(const Affine& map) {
  const std::optional<Affine> inverse = map.inverse();
  if (!inverse) {
    throw std::invalid_argument("the matrix has no inverse");
  }
  return *inverse;
}

// The statements of an MNI transform, which end in semicolons; a % begins a comment.
std::vector<std::string> statementsOf(std::string_view text) {
  std::string whole;
  TextRows rows(text);
  std::string_view line;
  for (rows.next(line); rows.next(line);) {  // the first line is the file's mark
    whole += std::string(line.substr(0, line.find('%'))) + " ";
  }
  std::vector<std::string> statements;
  for (std::string_view rest = whole; !withoutBlanks(rest).empty();) {
    const std::size_t end = (std::min)(rest.find(';'), rest.size());
    statements.emplace_back(withoutBlanks(rest.substr(0, end)));
    rest.remove_prefix((std::min)(end + 1, rest.size()));
  }
  return statements;
}

// One linear transform and nothing that turns it round or follows it.
MniMap mniTextMap(std::string_view text) {
  std::optional<std::vector<double>> numbers;
  for (const std::string& statement : statementsOf(text)) {
    const std::size_t equal = (std::min)(statement.find('='), statement.size());
    const std::string_view name = withoutBlanks(std::string_view(statement).substr(0, equal));
    const std::string_view value =
        withoutBlanks(std::string_view(statement).substr((std::min)(equal + 1, statement.size())));
    if (name == "Linear_Transform" && !numbers) {
      numbers = numbersOf(value);
    } else if (!name.ends_with("ransform_Type") || value != "Linear" ||
               numbers) {  // MNE writes Ttransform_Type
      throw std::invalid_argument("the MNI transform is not one linear map: it says \"" +
                                  statement.substr(0, 40) + "\"");
    }
  }
  if (!numbers) {
    throw std::invalid_argument("the MNI transform is not linear");
  }
  if (numbers->size() != 12) {
    throw std::invalid_argument("the MNI transform has " + std::to_string(numbers->size()) +
                                " numbers, not 12");
  }
  return {affineOf(*numbers), "MNI305"};
}

// What stands behind a word at the start of a line, of each such line.
std::vector<std::string_view> textsBehind(std::string_view text, std::string_view word) {
  std::vector<std::string_view> texts;
  TextRows rows(text);
  for (std::string_view line; rows.next(line);) {
    if (line.starts_with(word)) {
      texts.push_back(withoutBlanks(line.substr(word.size())));
    }
  }
  return texts;
}

// The types that are a matrix and a centre: AffineTransform_double_3_3 and its kin.
bool isItkAffine(std::string_view type) {
  constexpr std::array<std::string_view, 4> types = {
      "AffineTransform_double_3_3", "AffineTransform_float_3_3", "MatrixOffsetTransformBase_double_3_3",
      "MatrixOffsetTransformBase_float_3_3"};
  return std::find(types.begin(), types.end(), type) != types.end();
}

// p' = M (p - c) + c + t, to the left and back.
MniMap itkMap(std::string_view text) {
  const auto types = textsBehind(text, "Transform:");
  const auto parameters = textsBehind(text, "Parameters:");
  const auto centres = textsBehind(text, "FixedParameters:");
  const bool isOne = types.size() == 1 && parameters.size() == 1 && centres.size() == 1;
  const std::vector<double> values = isOne ? numbersOf(parameters.front()) : std::vector<double>();
  const std::vector<double> centre = isOne ? numbersOf(centres.front()) : std::vector<double>();
  if (!isOne || !isItkAffine(types.front()) || values.size() != 12 || centre.size() != 3) {
    throw std::invalid_argument("the ITK transform is not one affine map of 12 parameters");
  }
  const Affine matrix({values[0], values[3], values[6]}, {values[1], values[4], values[7]},
                      {values[2], values[5], values[8]}, {});
  const Vector3 c = {centre[0], centre[1], centre[2]};
  const Vector3 shift = Vector3{values[9], values[10], values[11]} + c - matrix(c);
  const Affine leftBack({-1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {});
  const Affine toHead =
      leftBack.after(Affine(matrix.column(0), matrix.column(1), matrix.column(2), shift).after(leftBack));
  return {inverted(toHead),
          {},
          "it was taken as that of the head (moving) to MNI (fixed), which it does not say"};
}

MniMap matrixMap(std::string_view text) {
  const std::vector<double> numbers = numbersOf(text);
  if (numbers.size() != 16) {
    throw std::invalid_argument("it is neither an MNI transform nor one of ITK, and has " +
                                std::to_string(numbers.size()) + " numbers, not 16");
  }
  if (numbers[12] != 0.0 || numbers[13] != 0.0 || numbers[14] != 0.0 || numbers[15] != 1.0) {
    throw std::invalid_argument("the last row of the matrix is not 0 0 0 1");
  }
  return {affineOf(numbers),
          {},
          "it was taken from the scanner's mm to MNI's mm, which it does not say; FSL's flirt writes the "
          "like of voxels"};
}

// Axes of the head frame named right, front, up.
Affine rightFrontUp() {
  return headToSymmetricNeuromag();
}

Affine hostToScanner(const KnownHead& head, const char* frame) {
  if (!head.isPlaced()) {
    throw std::runtime_error(std::string("the ") + frame + " frame needs the fiducial points of the head" +
                             (head.points ? " in its MRI: --mri gives it" : ", which are not known"));
  }
  return head.points ? HeadFrame(*head.points).toScanner()
                     : head.neuromagToScanner->after(headToSymmetricNeuromag());
}

// Those that a file may tell.
std::optional<Fiducials> placedPoints(const KnownHead& head) {
  return head.arePointsUnplaced ? std::nullopt : head.points;
}

constexpr std::array<const char*, 3> rightFrontUpAxes = {"right", "front", "up"};

SetFrame neuromagFrame(const KnownHead& head) {
  const bool isKnown = head.points.has_value();
  return {FrameName::neuromag,
          isKnown ? headToNeuromag(*head.points) : headToSymmetricNeuromag(),
          isKnown ? "Neuromag head: x right, y front, z up"
                  : "Neuromag head, ears taken as symmetric: x right, y front, z up",
          "neuromag_",
          rightFrontUpAxes,
          placedPoints(head),
          !isKnown};
}

std::string nameOf(MriSpace space) {
  switch (space) {
    case MriSpace::scanner:
      return "scanner";
    case MriSpace::middle:
      return "MRI, around its middle, not the scanner's";
    default:
      return "MRI, " + textOf(space) + " as its file says, not the scanner's";
  }
}

// The scanner's, or that of an MRI whose millimetres are others.
SetFrame mriFrame(const KnownHead& head) {
  return {FrameName::scanner,
          hostToScanner(head, "scanner"),
          nameOf(head.space) + ": x right, y front, z up",
          head.space == MriSpace::scanner ? "scanner_" : "mri_",
          rightFrontUpAxes,
          placedPoints(head)};
}

SetFrame scannerFrame(const KnownHead& head) {
  if (head.space == MriSpace::middle) {
    throw std::runtime_error(
        "the MRI has no scanner coordinates, only millimetres around its middle; fiducial points in the "
        "scanner's, without the MRI, lead there");
  }
  return mriFrame(head);
}

SetFrame mniFrame(const KnownHead& head) {
  if (!head.mni) {
    throw std::runtime_error(
        "the MNI frame needs a transform to it, or the word that the head is in it (--mni)");
  }
  if (head.space == MriSpace::middle && head.mni->fromScanner == Affine()) {
    throw std::runtime_error("the MRI has millimetres around its middle: it is not in MNI space as it is");
  }
  const Affine toScanner = hostToScanner(head, "MNI");
  const std::string space = head.mni->space.empty() ? "MNI, nobody said which" : head.mni->space;
  const std::string prefix = head.mni->space.empty() ? "mni_" : lowered(head.mni->space) + "_";
  return {FrameName::mni,
          head.mni->fromScanner.after(toScanner),
          space +
              (head.space != MriSpace::middle
                   ? ""
                   : ", by a transform taken as from the MRI's own mm around its middle") +
              ": x right, y front, z up",
          prefix,
          rightFrontUpAxes,
          placedPoints(head)};
}

SetFrame frameOf(FrameName name, const KnownHead& head) {
  switch (name) {
    case FrameName::ctf:
      return {name,
              Affine({0, 1, 0}, {0, 0, 1}, {1, 0, 0}, {}),
              "CTF head: x front, y left, z up",
              "ctf_",
              {"front", "left", "up"}};
    case FrameName::neuromag:
      return neuromagFrame(head);
    case FrameName::scanner:
      return scannerFrame(head);
    case FrameName::mni:
      return mniFrame(head);
    case FrameName::host:
      break;
  }
  return {FrameName::host, {}, "head: x left, y up, z front", "", {"left", "up", "front"}};
}

}  // namespace

FrameTitles SetFrame::titles() const {
  FrameTitles names;
  if (!prefix.empty()) {
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
      const std::string axisName = std::string(1, "xyz"[axis]) + "_" + axes.at(axis);
      names.at(axis) = prefix + axisName + "_mm";
      names.at(axis + 3) = prefix + "orientation_" + axisName;
    }
  }
  return names;
}

MniMap mniMapOf(std::string_view text) {
  MniMap map;
  if (text.starts_with("MNI Transform File")) {
    map = mniTextMap(text);
  } else if (text.starts_with("#Insight Transform File")) {
    map = itkMap(text);
  } else {
    map = matrixMap(text);
  }
  (void)inverted(map.fromScanner);
  checkMapOfHeads(map.fromScanner);
  return map;
}

MniMap readMniMap(const std::filesystem::path& path) {
  const std::string name = utf8Of(textOf(path));
  const std::string text = textOfFile(path, name);
  if (text.size() > mostMapBytes) {
    throw std::runtime_error(name + ": there are more than 64 KiB of it");
  }
  try {
    return mniMapOf(text);
  } catch (const std::invalid_argument& error) {
    throw std::runtime_error(name + ": " + error.what());
  }
}

SetFrame frameNamed(FrameName name, const KnownHead& head) {
  SetFrame frame = frameOf(name, head);
  frame.space = head.space;
  return frame;
}

SetFrame patientFrame(const KnownHead& head) {
  if (!head.isPlaced()) {
    return {FrameName::host, rightFrontUp(), "head, not the scanner's: x right, y front, z up", "head_",
            rightFrontUpAxes};
  }
  SetFrame frame = mriFrame(head);
  frame.space = head.space;
  return frame;
}

std::unique_ptr<CDipoleFace9File> inFrame(const CDipoleFace9File& set, const SetFrame& frame) {
  auto copy = std::make_unique<CDipoleFace9File>();
  copy->m_momentInNAm = set.m_momentInNAm;
  for (int slot = 0; slot < set.m_totalDipoles; ++slot) {
    std::unique_ptr<CDipoleszq> dipole;
    if (set.m_dipoles[slot] != nullptr) {
      dipole = std::make_unique<CDipoleszq>(*set.m_dipoles[slot]);
      const Vector3 place = frame.fromHost(placeOf(*dipole));
      const Vector3 own = orientationOf(*dipole);
      Vector3 direction = turned(frame.fromHost, own);
      if (const double size = length(direction); size > 0.0 && std::isfinite(size)) {
        direction = direction * (length(own) / size);
      }
      for (int axis = 0; axis < 3; ++axis) {
        dipole->m_location[axis] = place[axis];
        dipole->m_orientation[axis] = direction[axis];
      }
    }
    copy->m_dipoles.store(copy->m_totalDipoles++, std::move(dipole));
  }
  return copy;
}

}  // namespace host
