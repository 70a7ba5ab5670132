#include "host/page/PageClusters.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/dipoles/Clusters.h"
#include "host/dipoles/DipoleFilter.h"
#include "host/head/NeuromagFrame.h"

namespace host {

namespace {

// "fit error at most 10 %", of a filter that has this limit alone; empty: it has none.
std::string limitText(const PageSource& source, const DipoleFilter& filter) {
  const std::vector<std::string> texts = filterTexts(filter, source.set.m_momentInNAm != 0);
  return texts.empty() ? std::string() : texts.front();
}

Json removedJson(const PageSource& source, const Clusters& found) {
  const DipoleFilter& filter = source.settings.filter;
  Json list = Json::array();
  const auto add = [&](const std::string& limit, int count) {
    if (!limit.empty()) {
      list.push_back({{"limit", limit}, {"count", count}});
    }
  };
  add(limitText(source, {filter.fitError, {}, {}}), found.beyondFitError);
  add(limitText(source, {{}, filter.moment, {}}), found.beyondMoment);
  add(limitText(source, {{}, {}, filter.latency}), found.beyondLatency);
  add(found.nowhere == 0 ? "" : "having no place", found.nowhere);
  add(found.withoutOrientation == 0 ? "" : "having no orientation", found.withoutOrientation);
  return list;
}

Json rangeJson(const std::optional<ValueSummary>& values) {
  return values ? Json::array({singleDigits(values->least), singleDigits(values->most)}) : Json();
}

Json clusterJson(const PageSource& source, const PageWorld& world, const Cluster& cluster) {
  Json places = Json::array();
  for (const PageFrame& known : world.frames) {
    places.push_back({{"frame", known.name}, {"place", jsonVector(known.frame.fromHost(cluster.centroid))}});
  }
  const bool isDirected = cluster.orientation && cluster.orientation->mean;
  return {{"count", cluster.count()},
          {"centroid", jsonVector(world.fromHost(cluster.centroid))},
          {"rms", singleDigits(cluster.rmsDistance)},
          {"farthest", singleDigits(cluster.largestDistance)},
          {"direction", isDirected ? jsonVector(turned(world.fromHost, *cluster.orientation->mean)) : Json()},
          {"cone", isDirected ? Json(singleDigits(cluster.orientation->cone)) : Json()},
          {"places", std::move(places)},
          {"label", source.places == nullptr ? Json() : jsonText(source.places->textAt(cluster.centroid))},
          {"latency", rangeJson(cluster.latency)},
          {"fitError", rangeJson(cluster.fitError)}};
}

}  // namespace

Json pageClusters(const PageSource& source, const PageWorld& world, Json& dipoles) {
  const Clusters found =
      clustersOf(source.set, source.settings.filter, source.settings.clusters, source.settings.unknown);
  Json rows = Json::array();
  for (int slot = 0; slot < source.set.m_totalDipoles; ++slot) {
    if (source.set.m_dipoles[slot] != nullptr) {
      rows.push_back(found.of(slot) + 1);
    }
  }
  static_assert(Clusters::none == -1);  // 0 in a page
  dipoles["clusters"] = std::move(rows);
  Json clusters = Json::array();
  for (const Cluster& cluster : found.clusters) {
    clusters.push_back(clusterJson(source, world, cluster));
  }
  return {{"text", ruleText(source.settings.clusters)},
          {"scattered", found.scattered},
          {"removed", removedJson(source, found)},
          {"clusters", std::move(clusters)}};
}

}  // namespace host
