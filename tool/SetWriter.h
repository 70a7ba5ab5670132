// Writes a dipole set as a file of any of the output formats.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/exchange/SetPlaces.h"
#include "tool/FrameOptions.h"
#include "tool/ImportOptions.h"
#include "tool/ImportSession.h"
#include "tool/Output.h"
#include "tool/OutputOptions.h"

namespace tool {

// Imports what is to be written. Throws std::runtime_error when a name tells no format, before anything is
// asked, when a file brought nothing, and as refuseWrong; otherwise as OutputOptions::check does.
// `headFor` is asked what is known of the head, see ImportChoices.
using HeadFor = std::function<host::CarryingHead(const std::vector<InputFile>&)>;
ImportSession importToWrite(const ImportOptions& input, const OutputOptions& output, const HeadFor& headFor);

// Throws std::runtime_error when something stands that is wrong and neither repaired nor accepted.
void refuseWrong(const ImportSession& session, const OutputOptions& output);

// Where the dipoles lie by an atlas; nothing without one.
std::optional<host::SetPlaces> placesOf(const ImportSession& session,
                                        const std::optional<host::PlaceNames>& names);

// The set as JSON, see host/exchange/SetJson.h, in a frame, with places when there are some, and with the
// members of `beside` before the dipoles.
std::string jsonOf(const ImportSession& session, const std::vector<std::string>& files,
                   const host::SetFrame& frame = {}, const std::optional<host::SetPlaces>& places = {},
                   const Json& beside = Json::object());
// The same as a table.
std::string tableOf(const ImportSession& session, char separator, const host::SetFrame& frame,
                    const std::optional<host::SetPlaces>& places = {});

// .dipset and .txt are the module's own set file and text export; for the others see host/exchange/SetTable.h
// and SetJson.h. The target is afterwards either the whole new file or what it was before, see
// host/text/SafeFile.h. Throws std::runtime_error that names the target and the cause.
// Files for other programs (host/exchange/ForeignFile.h) tell what they cannot hold. `frame`: which one
// places are written in; formats that have one of their own refuse others. `names`: of an atlas; formats
// without room for them refuse.
void writeSet(ImportSession& session, const std::vector<std::string>& files, const OutputOptions& output,
              const FrameOptions& frame, const std::optional<host::PlaceNames>& names);

// A set file of version 20011118, in the same way.
void writeOldSet(CDipoleFace9File& set, const OutputOptions& output);

// A text as a file, in the same way.
void writeText(const OutputOptions& output, const std::string& text);

}  // namespace tool
