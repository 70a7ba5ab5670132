#include "host/page/PageData.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "host/dipoles/DipolePlace.h"
#include "host/dipoles/DipoleScene.h"
#include "host/dipoles/SetFiducials.h"
#include "host/head/HeadBoxOf.h"
#include "host/page/PageClusters.h"
#include "host/page/PageColours.h"
#include "host/page/PageDipoles.h"
#include "host/page/PageTexts.h"
#include "host/page/PageWorld.h"
#include "host/panes/PaneContents.h"
#include "host/panes/PaneFiducials.h"
#include "host/panes/ShownDipoles.h"

namespace host {

namespace {

constexpr std::array<std::pair<char, const char*>, 3> pointNames{
    {{'N', "nasion"}, {'L', "left ear"}, {'R', "right ear"}}};

PaneContents contentsOf(const PageSource& source) {
  return {source.set, source.head, source.settings, {}, source.head.volume->window()};
}

Json filesJson(const PageSource& source) {
  Json list = Json::array();
  for (const PageFileText& file : source.files) {
    list.push_back({{"name", source.isAnonymous ? Json() : Json(file.name)},
                    {"format", file.format},
                    {"dipoles", file.dipoles}});
  }
  return list;
}

// The name of an atlas that is nobody's own may be told.
Json atlasJson(const PageSource& source) {
  if (source.places == nullptr) {
    return nullptr;
  }
  const Atlas& atlas = source.places->atlas();
  const bool isNamed = !source.isAnonymous || atlas.isKnown();
  const std::string doubt = source.places->doubt();
  Json names = Json::object();
  std::vector<bool> isThere(std::size_t{1} << 16U);
  for (const Label label : atlas.grid().labels()) {
    isThere[label] = true;
  }
  for (std::size_t label = 1; label < isThere.size(); ++label) {
    if (isThere[label]) {
      names[std::to_string(label)] = atlas.nameOf(static_cast<Label>(label));
    }
  }
  return {{"name", isNamed ? atlas.name() : "atlas"},
          {"space", jsonText(atlas.space())},
          {"placesSpace", jsonText(source.places->space())},
          {"doubt", isNamed         ? jsonText(doubt)
                    : doubt.empty() ? Json()
                                    : Json("labels may be some mm off")},
          {"reach", Atlas::reach},
          {"names", std::move(names)}};
}

Json sphereJson(const DipoleScene& scene, const PageWorld& world) {
  if (!scene.sphere) {
    return nullptr;
  }
  return {{"centre", jsonVector(world.fromHost(scene.sphere->centre))},
          {"radius", singleDigits(scene.sphere->radius)}};
}

void addPoints(Json& list, const char* whose, const std::vector<SceneFiducial>& points,
               const PageWorld& world) {
  for (const SceneFiducial& point : points) {
    for (const auto& [letter, name] : pointNames) {
      if (letter == point.letter) {
        list.push_back({{"of", whose},
                        {"name", name},
                        {"letter", std::string(1, letter)},
                        {"place", jsonVector(world.fromHost(point.place))}});
      }
    }
  }
}

// Without a head those of the dipole files stand alone.
Json pointsJson(const PageSource& source, const DipoleScene& scene, const PageWorld& world) {
  Json list = Json::array();
  if (world.hasHead) {
    const PaneContents contents = contentsOf(source);
    addPoints(list, "head", headFiducials(contents), world);
    addPoints(list, "file", fileFiducials(contents), world);
  } else if (measuredPoints(source.set)) {
    addPoints(list, "file", scene.fiducials, world);
  }
  return list;
}

// How far the head's points are from those of the first file in the head frame.
Json registrationJson(const PageSource& source, const PageWorld& world) {
  if (!world.hasHead) {
    return nullptr;
  }
  Json residuals = Json::array();
  const std::optional<Fiducials> file =
      source.head.arePointsAssumed ? std::nullopt : pointsOfSetIn(source.head, source.set);
  if (file) {
    const HeadFrame& frame = source.head.frame;
    const Fiducials& head = source.head.fiducials.value();
    const std::array<std::pair<Vector3, Vector3>, 3> pairs = {
        {{file->nasion, head.nasion}, {file->leftEar, head.leftEar}, {file->rightEar, head.rightEar}}};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      residuals.push_back(
          {{"name", pointNames.at(i).second},
           {"mm", singleDigits(length(pairs[i].first - frame.fromScanner(pairs[i].second)))}});
    }
  }
  return {{"text",
           source.isAnonymous ? "by points or a transform whose source is left out" : source.registeredBy},
          {"residuals", std::move(residuals)}};
}

Json limitsJson(const ValueLimits& limits) {
  const auto end = [](const std::optional<double>& limit) { return limit ? Json(*limit) : Json(); };
  return {{"least", end(limits.least)}, {"most", end(limits.most)}};
}

const char* colourBy(const ViewSettings& settings) {
  switch (settings.colourBy) {
    case ColourBy::latency:
      return "latency";
    case ColourBy::fitError:
      return "fitError";
    case ColourBy::moment:
      return "moment";
    case ColourBy::cluster:
      return "cluster";
    case ColourBy::own:
      break;
  }
  return "own";
}

// Through the strongest dipole that is shown, else the middle of the head, else that of the sphere.
Vector3 crosshairOf(const PageSource& source, const DipoleScene& scene, const PageWorld& world) {
  const PaneContents contents = contentsOf(source);
  if (const int strongest = strongestSlot(contents); strongest >= 0) {
    return placeOf(*source.set.m_dipoles[strongest]);
  }
  if (world.hasHead) {
    const HeadBox box = headBoxOf(source.head);
    return (box.low + box.high) * 0.5;
  }
  return scene.sphere ? scene.sphere->centre : Vector3();
}

Json settingsJson(const PageSource& source, const DipoleScene& scene, const PageWorld& world) {
  const ViewSettings& chosen = source.settings;
  Json settings = {{"colourBy", colourBy(chosen)},
                   {"toleranceMm", chosen.toleranceMm ? Json(*chosen.toleranceMm) : Json()},
                   {"fitError", limitsJson(chosen.filter.fitError)},
                   {"moment", limitsJson(chosen.filter.moment)},
                   {"latency", limitsJson(chosen.filter.latency)},
                   {"crosshair", jsonVector(world.fromHost(crosshairOf(source, scene, world)))},
                   {"areArrowsByMoment", chosen.arrowsByMoment},
                   {"areArrowsShown", source.areArrowsShown},
                   {"areLabelsShown", chosen.showLabels},
                   {"glyphPixels", chosen.glyphPixels},
                   {"ballRadius", chosen.ballRadius}};
  addColours(settings, source);
  return settings;
}

}  // namespace

Json pageData(const PageSource& source, const PageHead& head) {
  const PageWorld world(source);
  const DipoleScene scene = sceneOf(source.set);
  Json dipoles = pageDipoles(source, world);
  Json clusters = pageClusters(source, world, dipoles);
  return {{"program", source.program},
          {"made", source.isAnonymous ? std::string() : source.made},
          {"isAnonymous", source.isAnonymous},
          {"title", source.isAnonymous ? "Dipoles" : source.title},
          {"patient", source.isAnonymous ? Json() : jsonText(source.patient)},
          {"files", filesJson(source)},
          {"world", world.json},
          {"frames", world.framesJson()},
          {"head", head.json},
          {"atlas", atlasJson(source)},
          {"sphere", sphereJson(scene, world)},
          {"points", pointsJson(source, scene, world)},
          {"registration", registrationJson(source, world)},
          {"dipoles", std::move(dipoles)},
          {"clusters", std::move(clusters)},
          {"settings", settingsJson(source, scene, world)},
          {"findings", findingsJson(source)},
          {"repaired", repairedJson(source)},
          {"warnings", warningsJson(source, world)},
          {"conventions", conventionsJson(source, world, head.about)}};
}

}  // namespace host
