// Files of dipoles for other programs, in one place: what they are called, and a set as the bytes of one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/UnknownValues.h"
#include "host/head/HeadFrame.h"
#include "module/dipole.h"

namespace host {

enum class ForeignFormat { neuromag, bdip, ctf };

struct ForeignFile {
  std::string bytes;
  std::vector<std::string> told;  // UTF-8, sentences: what the file cannot hold, what had to be assumed
};

// `points`: fiducial points of the head, in any frame that HeadFrame takes, if they are known.
ForeignFile foreignFile(ForeignFormat format, const CDipoleFace9File& set, const UnknownValues& unknown,
                        const std::optional<Fiducials>& points);

}  // namespace host
