// A dipole set as a table of text, .csv or .tsv: a line of titles, then a line for each dipole; empty slots
// are left out. The columns are those of host/exchange/DipoleFields.h, the text that of DelimitedText.h.
//
// Numbers are the shortest text that reads back to the same number, with a point in every locale; nan, inf or
// -inf for what is none. An unknown value is an empty cell, a label that is known and empty "".
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/dipoles/UnknownValues.h"
#include "host/exchange/DipoleFields.h"
#include "host/exchange/SetPlaces.h"
#include "module/dipole.h"

namespace host {

// A set that was read from a table, and what of it the table left open.
struct TableSet {
  std::unique_ptr<CDipoleFace9File> dipoles;
  UnknownValues unknown;  // by slot
};

// `titles`: of another frame than the host's, in which the set is; `places`: two columns more, empty where no
// label is near. Tables with the one or the other are not read back.
std::string tableOf(const CDipoleFace& set, const UnknownValues& unknown, bool isMomentInNAm, char separator,
                    const FrameTitles& titles = {}, const SetPlaces* places = nullptr);

// The columns may come in any order. Those of the position must be there; latency, fit error, moment,
// orientation and label are unknown where their column is missing or their cell empty, other members are
// those of a new dipole then, and the numbers count on. An unknown value has a new dipole's member. Whatever
// is wrong with the text ends with a std::runtime_error that names the file by `name`, the line and the
// column, counted in cells. Throws what an allocation throws too.
TableSet readTable(std::string_view text, char separator, const std::string& name);

}  // namespace host
