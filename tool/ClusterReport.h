// Clusters of dipoles as text, as a table of commas and as JSON.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dipoles/Clusters.h"
#include "host/exchange/PlaceNames.h"
#include "host/exchange/SetFrame.h"
#include "tool/ImportSession.h"

namespace tool {

// All of it outlives what is made of it.
struct ClusterReport {
  const ImportSession& session;
  const std::vector<std::string>& files;  // as the user wrote them
  const host::Clusters& found;
  const std::vector<host::SetFrame>& frames;      // in which centroids and mean orientations are told
  const std::optional<host::PlaceNames>& places;  // of centroids
};

// Rounded for the eye; what files say is printable.
std::string textOf(const ClusterReport& report);
// A line for each cluster, numbers in full; empty cells are what is not known.
std::string csvOf(const ClusterReport& report);
std::string jsonOf(const ClusterReport& report);

}  // namespace tool
