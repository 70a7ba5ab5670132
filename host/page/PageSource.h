// What a page is made of.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/audit/Finding.h"
#include "host/dipoles/UnknownValues.h"
#include "host/dipoles/ViewSettings.h"
#include "host/exchange/PlaceNames.h"
#include "host/exchange/SetFrame.h"
#include "host/head/Head.h"
#include "module/dipole.h"

namespace host {

struct PageFileText {
  std::string name;    // without folders, UTF-8
  std::string format;  // "CTF"
  int dipoles = 0;     // that came from it
};

// Dipoles are told whatever their switches and the limits say: the limits are only what a page begins with.
struct PageSource {
  CDipoleFace9File& set;  // as in PaneContents; in the host's head frame
  const Head& head;       // absent or not registered: the page is in the head frame
  KnownHead known;        // of that head
  const ViewSettings& settings;
  const UnknownValues& unknown;        // by slot, the same as those of the settings
  const PlaceNames* places = nullptr;  // null: nobody knows names of places
  bool areArrowsShown = true;

  std::string program = {};  // "dipole 1.0.0"
  std::string made = {};     // ISO 8601, UTC
  std::string title = {};
  std::string patient = {};  // empty: not known
  std::vector<PageFileText> files = {};
  std::string registeredBy = {};  // by which points, a sentence without its full stop
  std::vector<Finding> findings = {};
  std::vector<FileText> repaired = {};
  std::vector<std::string> warnings = {};  // of who imported the files, to stand on every picture

  bool isAnonymous = false;  // no name of a patient, file or dipole is told, nor when the page was made
  bool isFull = false;       // the head is told as it is, neither cropped nor with 8 bits
};

}  // namespace host
