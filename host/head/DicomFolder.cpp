#include "host/head/DicomFolder.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/head/NiftiReader.h"
#include "host/text/Blanks.h"
#include "host/text/EndingHeldBack.h"
#include "host/text/Letters.h"
#include "host/text/PathText.h"
#include "host/text/Program.h"
#include "host/text/TemporaryFolder.h"
#include "host/text/Utf8.h"

namespace host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const std::string& cause) {
  throw std::runtime_error(cause);
}

fs::path converter() {
  fs::path program = programNamed("dcm2niix");
  if (program.empty()) {
    refuse(
        "a folder of DICOM files needs the program dcm2niix"
#ifdef _WIN32
        ".exe"
#endif
        " to be read, and it is in no folder of PATH (Debian has it as the package dcm2niix)");
  }
  return program;
}

// What it says that is no news of its work, as texts that anybody takes.
std::vector<std::string> complaintsIn(const std::string& said) {
  std::vector<std::string> complaints;
  std::istringstream lines(said);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t at = (std::min)(line.find("Warning:"), line.find("Error:"));
    if (at != std::string::npos) {
      complaints.push_back(utf8Of(fromUtf8(withoutBlanks(std::string_view(line).substr(at)))));
    }
  }
  return complaints;
}

// Whether it is about where in the patient the pictures lie, or that some are missing.
bool isAboutPlace(const std::string& complaint) {
  const std::string text = lowered(complaint);
  constexpr std::array<std::string_view, 13> words = {
      "slice",    "missing", "orientation", "position", "gantry", "tilt",  "spacing",
      "distance", "spatial", "dimension",   "geometr",  "rotat",  "matrix"};
  const bool isAboutTime = text.find("timing") != std::string::npos;  // of slices
  return !isAboutTime && std::any_of(words.begin(), words.end(), [&](std::string_view word) {
    return text.find(word) != std::string::npos;
  });
}

std::vector<fs::path> picturesIn(const fs::path& folder) {
  std::vector<fs::path> pictures;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".nii") {
      pictures.push_back(entry.path());
    }
  }
  std::sort(pictures.begin(), pictures.end());
  return pictures;
}

std::string listOf(const std::vector<fs::path>& pictures) {
  constexpr std::size_t most = 20;
  std::string list;
  for (std::size_t i = 0; i < (std::min)(pictures.size(), most); ++i) {
    list += (i == 0 ? "" : ", ") + utf8Of(textOf(pictures[i].stem()));
  }
  return list + (pictures.size() > most ? ", ..." : "");
}

fs::path pictureOf(const fs::path& folder, const ProgramEnd& end,
                   const std::vector<std::string>& complaints) {
  if (!end.ending.empty()) {
    refuse("dcm2niix was ended by " + end.ending);
  }
  const std::vector<fs::path> pictures = picturesIn(folder);
  if (pictures.empty() && end.said.find("Unable to find any DICOM") != std::string::npos) {
    refuse("the folder holds no DICOM images");
  }
  if (pictures.size() > 1) {
    refuse("the folder holds " + std::to_string(pictures.size()) + " series or pictures (" +
           listOf(pictures) + "); give a folder with one of them");
  }
  for (const std::string& complaint : complaints) {
    if (isAboutPlace(complaint)) {
      refuse("dcm2niix is not sure where the pictures lie: " + complaint);
    }
  }
  if (end.code != 0 || pictures.empty()) {
    refuse("dcm2niix made no picture of it (it returned " + std::to_string(end.code) + ")" +
           (complaints.empty() ? "" : ": " + complaints.back()));
  }
  return pictures.front();
}

}  // namespace

ReadHead readDicomFolder(const fs::path& folder) {
  const fs::path program = converter();
  const EndingHeldBack heldBack;
  const TemporaryFolder made;
  // Not compressed, no other files, named by number and description of the series; an absolute name is no
  // option.
  const ProgramEnd end = runProgram(program, {"-b", "n", "-z", "n", "-w", "2", "-x", "n", "-f", "%s_%d", "-o",
                                              made.path(), fs::absolute(folder)});
  const std::vector<std::string> complaints = complaintsIn(end.said);
  ReadHead head = readNifti(pictureOf(made.path(), end, complaints));
  head.source.format = "DICOM, by dcm2niix";
  head.source.sides = "the DICOM files' orientation, by way of dcm2niix";
  for (const std::string& complaint : complaints) {
    head.source.remarks.push_back(
        {Doubt::note, "dcm2niix: " + complaint.substr(0, complaint.find_last_not_of('.') + 1)});
  }
  return head;
}

}  // namespace host
