#include "tool/ClusterReport.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "host/exchange/DelimitedText.h"
#include "host/exchange/DipoleFields.h"
#include "host/exchange/SetPlaces.h"
#include "host/head/NeuromagFrame.h"
#include "host/text/Numbers.h"
#include "host/text/TextTable.h"
#include "tool/Output.h"
#include "tool/Text.h"

namespace tool {
namespace {

using host::Cluster;
using host::fixed;
using host::OrientationSummary;
using host::SetFrame;
using host::TextTable;
using host::ValueSummary;
using host::Vector3;
using Align = TextTable::Align;

constexpr const char* unknownText = "-";

std::string momentUnit(const ClusterReport& report) {
  return report.session.isMomentInNAm() ? "nAm" : "";
}

// "scanner" of "scanner_": what a frame is called in a few letters.
std::string nameOf(const SetFrame& frame) {
  return frame.prefix.empty() ? "head" : frame.prefix.substr(0, frame.prefix.size() - 1);
}

// Of length 1 in the frame, also where that scales.
std::optional<Vector3> meanIn(const SetFrame& frame, const Cluster& cluster) {
  if (!cluster.orientation || !cluster.orientation->mean) {
    return std::nullopt;
  }
  const Vector3 mean = host::turned(frame.fromHost, *cluster.orientation->mean);
  return mean * (1.0 / host::length(mean));
}

std::string placeText(const ClusterReport& report, const Cluster& cluster) {
  return report.places->textAt(cluster.centroid);
}

std::string countText(int count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// Text.

std::string rangeText(const std::optional<ValueSummary>& values) {
  return values ? fixed(values->median, 1) + " (" + fixed(values->least, 1) + " to " +
                      fixed(values->most, 1) + ")"
                : unknownText;
}

// What each limit removed, in the order in which they count.
std::string removedText(const host::Clusters& found) {
  std::string text;
  const auto add = [&](int count, bool isSet, const char* what) {
    if (isSet) {
      text += (text.empty() ? "" : ", ") + std::to_string(count) + " by the " + what;
    }
  };
  add(found.beyondFitError, found.filter.fitError.isSet(), "fit error");
  add(found.beyondMoment, found.filter.moment.isSet(), "moment");
  add(found.beyondLatency, found.filter.latency.isSet(), "latency");
  return text.empty() ? "none, no limit is set" : text;
}

std::string joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) {
    all += (all.empty() ? "" : ", ") + text;
  }
  return all;
}

std::string headText(const ClusterReport& report) {
  const host::Clusters& found = report.found;
  const std::string limits = joined(host::filterTexts(found.filter, report.session.isMomentInNAm()));
  std::string text = "Clusters: " + ruleText(found.rule) + (limits.empty() ? "" : "; " + limits) + "\n";
  const auto line = [&](const char* name, const std::string& value) {
    text +=
        "  " + (name + std::string(value.empty() ? 0 : 14 - std::string(name).size(), ' ')) + value + "\n";
  };
  line("dipoles", std::to_string(found.total));
  line("in clusters", std::to_string(found.clustered()) + " in " +
                          countText(static_cast<int>(found.clusters.size()), "cluster"));
  line("scattered", std::to_string(found.scattered));
  line("removed", removedText(found));
  if (found.nowhere > 0) {
    line("nowhere", std::to_string(found.nowhere) + ": the place is no number, or beyond 100 m");
  }
  if (found.withoutOrientation > 0) {
    line("no direction", std::to_string(found.withoutOrientation) + ": nothing to compare by an angle");
  }
  return text;
}

std::string membersTable(const ClusterReport& report) {
  std::vector<TextTable::Column> columns = {{"No"},   {"Dipoles"},    {"rms mm"}, {"far mm"},
                                            {"cone"}, {"Latency ms"}, {"Err %"}};
  if (report.places) {
    columns.push_back({"Place", Align::left});
  }
  TextTable table(std::move(columns));
  int number = 0;
  for (const Cluster& cluster : report.found.clusters) {
    const bool hasCone = cluster.orientation && cluster.orientation->mean;
    std::vector<std::string> cells = {std::to_string(++number),
                                      std::to_string(cluster.count()),
                                      fixed(cluster.rmsDistance, 1),
                                      fixed(cluster.largestDistance, 1),
                                      hasCone ? fixed(cluster.orientation->cone, 1) : unknownText,
                                      rangeText(cluster.latency),
                                      rangeText(cluster.fitError)};
    if (report.places) {
      cells.push_back(printable(placeText(report, cluster)));
    }
    table.addRow(std::move(cells));
  }
  return table.aligned();
}

std::string framesTable(const ClusterReport& report) {
  TextTable table({{"No"}, {"Frame", Align::left}, {"x mm"}, {"y mm"}, {"z mm"}, {"ox"}, {"oy"}, {"oz"}});
  int number = 0;
  for (const Cluster& cluster : report.found.clusters) {
    ++number;
    for (const SetFrame& frame : report.frames) {
      const Vector3 place = frame.fromHost(cluster.centroid);
      const std::optional<Vector3> mean = meanIn(frame, cluster);
      const bool isFirst = &frame == &report.frames.front();
      std::vector<std::string> cells = {isFirst ? std::to_string(number) : "", nameOf(frame)};
      for (int axis = 0; axis < 3; ++axis) {
        cells.push_back(fixed(place[axis], 1));
      }
      for (int axis = 0; axis < 3; ++axis) {
        cells.push_back(mean ? fixed((*mean)[axis], 2) : unknownText);
      }
      table.addRow(std::move(cells));
    }
  }
  return table.aligned();
}

// Commas.

// Of a title in the frame, "x_left_mm" or "scanner_x_right_mm".
std::string titleOf(const SetFrame& frame, std::size_t field) {
  return host::titleIn(field, false, frame.titles());
}

class CsvLine {
 public:
  void add(const std::string& cell) {
    m_text += (m_isFirst ? "" : ",") + cell;
    m_isFirst = false;
  }
  void add(const std::optional<double>& number) { add(number ? host::exact(*number) : std::string()); }
  void addAll(const std::optional<Vector3>& values) {
    for (int axis = 0; axis < 3; ++axis) {
      add(values ? std::optional((*values)[axis]) : std::nullopt);
    }
  }
  void addAll(const std::optional<ValueSummary>& values) {
    add(values ? std::to_string(values->count) : "0");
    add(values ? std::optional(values->least) : std::nullopt);
    add(values ? std::optional(values->median) : std::nullopt);
    add(values ? std::optional(values->most) : std::nullopt);
  }
  std::string ended() const { return m_text + "\n"; }

 private:
  std::string m_text;
  bool m_isFirst = true;
};

std::string csvTitles(const ClusterReport& report) {
  CsvLine line;
  line.add("cluster");
  line.add("dipoles");
  for (const SetFrame& frame : report.frames) {
    for (std::size_t field = host::fieldX; field <= host::fieldZ; ++field) {
      line.add("centroid_" + titleOf(frame, field));
    }
  }
  line.add("rms_distance_mm");
  line.add("largest_distance_mm");
  line.add("orientations");
  for (const SetFrame& frame : report.frames) {
    for (std::size_t field = host::fieldOrientationX; field <= host::fieldOrientationZ; ++field) {
      line.add("mean_" + titleOf(frame, field));
    }
  }
  line.add("resultant_length");
  line.add("cone_degrees");
  const auto addValues = [&](const std::string& name, const std::string& unit) {
    line.add(name + "_values");
    for (const char* const which : {"_least", "_median", "_most"}) {
      line.add(name + which + (unit.empty() ? "" : "_" + unit));
    }
  };
  addValues("latency", "ms");
  addValues("fit_error", "percent");
  addValues("moment", momentUnit(report));
  if (report.places) {
    line.add("atlas_label");
    line.add("atlas_distance_mm");
  }
  return line.ended();
}

std::string csvRow(const ClusterReport& report, const Cluster& cluster, int number) {
  CsvLine line;
  line.add(std::to_string(number));
  line.add(std::to_string(cluster.count()));
  for (const SetFrame& frame : report.frames) {
    line.addAll(std::optional(frame.fromHost(cluster.centroid)));
  }
  line.add(std::optional(cluster.rmsDistance));
  line.add(std::optional(cluster.largestDistance));
  const std::optional<OrientationSummary>& orientation = cluster.orientation;
  line.add(orientation ? std::to_string(orientation->count) : "0");
  for (const SetFrame& frame : report.frames) {
    line.addAll(meanIn(frame, cluster));
  }
  line.add(orientation ? std::optional(orientation->resultant) : std::nullopt);
  line.add(orientation && orientation->mean ? std::optional(orientation->cone) : std::nullopt);
  line.addAll(cluster.latency);
  line.addAll(cluster.fitError);
  line.addAll(cluster.moment);
  if (report.places) {
    const std::optional<host::NamedPlace> place = report.places->at(cluster.centroid);
    line.add(place ? host::delimitedCell(host::guarded(place->name), ',', place->name.empty()) : "");
    line.add(place ? std::optional(place->distance) : std::nullopt);
  }
  return line.ended();
}

// JSON.

Json jsonVector(const Vector3& vector) {
  return Json::array({host::jsonNumber(vector.x), host::jsonNumber(vector.y), host::jsonNumber(vector.z)});
}

Json jsonLimits(const host::ValueLimits& limits) {
  const auto end = [](const std::optional<double>& value) {
    return value ? host::jsonNumber(*value) : Json();
  };
  return limits.isSet() ? Json::array({end(limits.least), end(limits.most)}) : Json();
}

Json jsonValues(const std::optional<ValueSummary>& values) {
  if (!values) {
    return nullptr;
  }
  return {{"values", values->count},
          {"least", host::jsonNumber(values->least)},
          {"median", host::jsonNumber(values->median)},
          {"most", host::jsonNumber(values->most)}};
}

Json jsonOrientation(const ClusterReport& report, const Cluster& cluster) {
  if (!cluster.orientation) {
    return nullptr;
  }
  const OrientationSummary& orientation = *cluster.orientation;
  Json json = {{"orientations", orientation.count},
               {"resultant_length", host::jsonNumber(orientation.resultant)},
               {"cone_degrees", orientation.mean ? host::jsonNumber(orientation.cone) : Json()},
               {"mean", Json::object()}};
  for (const SetFrame& frame : report.frames) {
    const std::optional<Vector3> mean = meanIn(frame, cluster);
    json["mean"][nameOf(frame)] = mean ? jsonVector(*mean) : Json();
  }
  return json;
}

// Where the dipoles stand in a list of all, from 1: numbers of several files may be the same.
Json rowsOf(const CDipoleFace& set, const Cluster& cluster) {
  Json rows = Json::array();
  int row = 0;
  auto next = cluster.slots.begin();
  for (int slot = 0; next != cluster.slots.end(); ++slot) {
    row += set.m_dipoles[slot] != nullptr ? 1 : 0;
    if (slot == *next) {
      rows.push_back(row);
      ++next;
    }
  }
  return rows;
}

Json jsonCluster(const ClusterReport& report, const Cluster& cluster, int number) {
  Json json = {{"cluster", number}, {"dipoles", cluster.count()}, {"centroid_mm", Json::object()}};
  for (const SetFrame& frame : report.frames) {
    json["centroid_mm"][nameOf(frame)] = jsonVector(frame.fromHost(cluster.centroid));
  }
  json["rms_distance_mm"] = host::jsonNumber(cluster.rmsDistance);
  json["largest_distance_mm"] = host::jsonNumber(cluster.largestDistance);
  json["orientation"] = jsonOrientation(report, cluster);
  json["latency_ms"] = jsonValues(cluster.latency);
  json["fit_error_percent"] = jsonValues(cluster.fitError);
  json["moment"] = jsonValues(cluster.moment);
  if (report.places) {
    const std::optional<host::NamedPlace> place = report.places->at(cluster.centroid);
    json["atlas_label"] = place ? Json(place->name) : Json();
    json["atlas_distance_mm"] = place ? host::jsonNumber(place->distance) : Json();
  }
  json["rows"] = rowsOf(report.session.collection(), cluster);
  return json;
}

}  // namespace

std::string textOf(const ClusterReport& report) {
  std::string text = headText(report);
  if (report.found.clusters.empty()) {
    return text;
  }
  text += "\n" + membersTable(report) + "\nCentroids and mean orientations:\n";
  for (const SetFrame& frame : report.frames) {
    text += "  " + frame.description + "\n";
  }
  return text + framesTable(report);
}

std::string csvOf(const ClusterReport& report) {
  std::string text = csvTitles(report);
  int number = 0;
  for (const Cluster& cluster : report.found.clusters) {
    text += csvRow(report, cluster, ++number);
  }
  return text;
}

std::string jsonOf(const ClusterReport& report) {
  const host::Clusters& found = report.found;
  Json frames = Json::object();
  for (const SetFrame& frame : report.frames) {
    frames[nameOf(frame)] = frame.description;
  }
  Json document = {{"files", report.files},
                   {"patient", host::jsonText(report.session.patient())},
                   {"rule",
                    {{"text", ruleText(found.rule)},
                     {"distance_mm", found.rule.distance},
                     {"angle_degrees", found.rule.angle ? Json(*found.rule.angle) : Json()},
                     {"members", found.rule.members}}},
                   {"limits",
                    {{"fit_error_percent", jsonLimits(found.filter.fitError)},
                     {"moment", jsonLimits(found.filter.moment)},
                     {"latency_ms", jsonLimits(found.filter.latency)}}},
                   {"moment_unit", host::jsonText(momentUnit(report))},
                   {"dipoles", found.total},
                   {"in_clusters", found.clustered()},
                   {"scattered", found.scattered},
                   {"removed",
                    {{"fit_error", found.beyondFitError},
                     {"moment", found.beyondMoment},
                     {"latency", found.beyondLatency}}},
                   {"nowhere", found.nowhere},
                   {"without_orientation", found.withoutOrientation},
                   {"cone_share", OrientationSummary::coneShare},
                   {"frames", std::move(frames)}};
  if (report.places) {
    document["atlas"] = {{"name", report.places->atlas().name()},
                         {"about", report.places->atlas().about()},
                         {"space", host::jsonText(report.places->atlas().space())},
                         {"space_of_places", host::jsonText(report.places->space())},
                         {"reach_mm", host::Atlas::reach}};
  }
  document["clusters"] = Json::array();
  return host::withItems(host::indented(document), "clusters", [&](const host::AddItem& add) {
    int number = 0;
    for (const Cluster& cluster : found.clusters) {
      add("    " + host::inOneLine(jsonCluster(report, cluster, ++number)));
    }
  });
}

}  // namespace tool
