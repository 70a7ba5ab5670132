// A CTF dipole file as this program reads it, with what the module's import takes of it.
//
// The reading follows the import from section to section, so that it knows which row came into which slot,
// but it also keeps every row that looks like a dipole and did not come.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "host/audit/FileAudit.h"
#include "host/audit/Heading.h"
#include "host/audit/RowFields.h"
#include "host/audit/RowScan.h"
#include "host/audit/TextLines.h"

namespace host {

enum class CtfKind : std::uint8_t {
  fileInfo,
  model,
  sphere,
  dipoles,
  moving,
  flags,
  fitInfo,
  fiducials,
  mriFiducials  // which the import does not know
};

struct CtfSection {
  CtfKind kind = CtfKind::dipoles;
  std::string_view name;  // as the format spells it
  int line = 0;
  bool isRead = true;         // by the module; else its name was lost by the encoding
  bool isAccepted = true;     // moving dipoles that were declined are not
  bool isUnitBefore = false;  // no unit stands in it, but one right before its name
  Heading heading;
};

enum class RowFate : std::uint8_t {
  arrived,
  declined,   // by an answer
  replaced,   // by moving dipoles
  unread,     // its section was lost by the encoding
  refused,    // its fields are not those that the import expects
  marked,     // it holds { } // or (cm), which mean something else to the import
  behindEnd,  // a row before it holds a }, which ended the section
  unclosed,   // the last line of the file, without a line end
  noRoom      // the set was full
};

struct CtfRow {
  std::string_view fields;  // behind the number and its colon
  int line = 0;
  int number = 0;
  int section = 0;
  float place[3] = {};  // as the import reads it, file axes, unscaled
  RowFate fate = RowFate::arrived;
  bool isCentimetre = false;  // what the import took it for
  bool isSecond = false;
  bool isForeign = false;  // a row of another section, whose beginning was swallowed
  bool isPlain = false;    // every reader reads its numbers alike
  std::uint8_t count = 0;  // of fields; those beyond the usual ones and one more are not counted
};

// A row of the flags or of the fit information.
struct CtfFollower {
  std::string_view fields;
  int line = 0;
  int number = 0;
  int section = 0;
};

enum class CtfProblemKind : std::uint8_t { swallowed, endsInside, misspelt, stopped };
struct CtfProblem {
  CtfProblemKind kind = CtfProblemKind::swallowed;
  int line = 0;
  int section = -1;       // the one that is open, or that stopped the import
  std::string_view text;  // the name that was swallowed or misspelt
};

struct CtfHeaderLine {
  std::string_view text;
  int line = 0;
  bool isRead = true;
};

struct CtfPoints {
  std::array<std::optional<std::array<float, 3>>, 3> points;  // nasion, left ear, right ear: voxels
  std::array<bool, 3> areTaken = {};                          // by the import
  int line = 0;                                               // of the section; 0: there is none
  bool isRead = true;
  bool isOfMri = false;  // of MRI_Fid_Points

  bool isComplete() const { return points[0] && points[1] && points[2]; }
};

struct CtfSphere {
  std::array<std::optional<float>, 4> meant;  // x, y, z, radius: cm
  std::array<float, 4> taken = {};            // by the import
  int count = 0;                              // of the lines with a key
  int line = 0;                               // of the section; 0: there is none
  bool isRead = true;
};

class CtfReading {
 public:
  // The file's text must outlive this; `encoding` too.
  CtfReading(const ImportedText& file, const TextEncoding& encoding);

  std::vector<CtfSection> sections;
  std::vector<CtfRow> rows;
  std::vector<int> slots;          // the row of each dipole that came, in order
  std::vector<int> repairedSlots;  // the same, with the rows that only the encoding kept away
  std::vector<CtfFollower> followers;
  std::vector<CtfProblem> problems;
  CtfHeaderLine patient;
  int otherPatientLine = 0;  // that names another one than a line before it
  CtfHeaderLine version;
  CtfHeaderLine mriFile;
  CtfSphere sphere;                    // the first one, which the import takes
  std::vector<CtfSphere> moreSpheres;  // behind it
  CtfPoints fiducials;                 // the last ones, which the import takes
  CtfPoints mriFiducials;
  std::vector<CtfPoints> earlierPoints;  // of both names
  bool namesNanoamperemetre = false;     // a unit header of a section of dipoles
};

// The columns that the import takes for granted in the rows of a section, behind the number.
const ColumnPlaces& expectedPlaces(CtfKind kind);

}  // namespace host
