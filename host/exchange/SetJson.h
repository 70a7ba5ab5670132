// A dipole set as JSON: an object that says where the dipoles come from, and "dipoles", a list with an object
// for each, one a line; empty slots are left out. Their members are the columns of
// host/exchange/DipoleFields.h. Numbers
// are as in host/exchange/Json.h; null is an unknown value.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/exchange/Json.h"
#include "host/exchange/SetTable.h"
#include "host/head/HeadFrame.h"

namespace host {

// What a document says beside the dipoles, UTF-8; an empty text is null.
struct SetTexts {
  std::vector<std::string> files;  // that the dipoles come from
  std::string version;
  std::string patient;
  bool isMomentInNAm = false;
  // Of another frame than the host's, in which the set is; such a document is not read back.
  std::string frame = {};
  FrameTitles titles = {};
  std::optional<Fiducials> points = {};  // that the frame was made with, mm
  const SetPlaces* places = nullptr;     // by an atlas; such a document is not read back either
  Json beside = Json::object();          // what else is known of the whole set
  const char* pointsTitle = "fiducials_scanner_mm";
};

std::string setJson(const CDipoleFace& set, const UnknownValues& unknown, const SetTexts& texts);

// Patient, version and the unit of the moments come back too. Of an object's members those of the position
// must be there, see readTable; others than the columns are refused. What the document holds beside is passed
// over, but for another frame and another unit. Failures are as in readTable; the column is a character.
TableSet readSetJson(std::string_view text, const std::string& name);

}  // namespace host
