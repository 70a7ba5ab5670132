// Turning a full set in 3D beside a plain loop that clears and fills the same buffers. A viewer wants 20
// pictures a second, 50 ms each; the plain loop takes about a quarter of a millisecond where that is met.
#include <afxwin.h>

#include <cstdio>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "host/picture/ScenePainter.h"

namespace {

constexpr int side = 800;  // pixels
constexpr int rounds = 36;
constexpr double turnPerPicture = 10.0;  // degrees: all around in the rounds

// Dipoles all over a head, each with an arrow of 30 mm.
std::unique_ptr<CDipoleFace8Import01_CTF> fullSet() {
  auto face = std::make_unique<CDipoleFace8Import01_CTF>();
  std::mt19937 random(11);
  std::uniform_real_distribution<float> place(-75.0F, 75.0F);
  std::uniform_real_distribution<double> direction(-1.0, 1.0);
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipoleF(place(random), place(random), place(random));
    face->getDipole(i)->setDipoleOrientation(direction(random), direction(random), direction(random));
  }
  face->m_sphereCtf.m_radius = 80.0;
  return face;
}

// Bright all over, so that its slices are full.
host::Volume volume() {
  constexpr int extent = 90;
  std::vector<float> voxels(std::size_t{extent} * extent * extent);
  for (std::size_t i = 0; i < voxels.size(); ++i) {
    voxels[i] = static_cast<float>(100 + i % 90);
  }
  return {{extent, extent, extent}, std::move(voxels), {{-2, 0, 0}, {0, 2, 0}, {0, 0, 2}, {89, -89, -89}}};
}

// The least that a picture of these buffers takes: once emptied, once filled.
struct PlainBuffers {
  std::vector<host::Rgb> colours{std::size_t{side} * side};
  std::vector<float> depths = std::vector<float>(std::size_t{side} * side);

  void clearAndFill() {
    for (const float depth : {std::numeric_limits<float>::infinity(), 10.0F}) {
      const auto grey = static_cast<std::uint8_t>(depth > 10.0F ? 14 : 90);
      std::fill(colours.begin(), colours.end(), host::Rgb{grey, grey, grey});
      std::fill(depths.begin(), depths.end(), depth);
      keep(colours);
      keep(depths);
    }
  }
};

bool benchView(const std::string& what, const host::DipoleScene& scene,
               const std::vector<host::SlicePlane>& planes, double scale) {
  host::ScenePainter painter;
  host::SceneCamera camera(side, side);
  camera.setScale(scale);
  camera.turn(30.0, 20.0);
  host::DepthPicture picture(side, side, {});
  PlainBuffers plain;
  const auto turn = [&] { camera.turn(turnPerPicture, 0.0); };
  const auto paint = [&] { painter.paint(picture, scene, planes, camera, {}); };
  const std::string title = "3D picture of 800 x 800, 30000 dipoles with arrows, " + what;
  return compare(title,
                 {{"paint", turn, paint}, {"clear and fill the buffers", {}, [&] { plain.clearAndFill(); }}},
                 {{1, 300.0, false}}, rounds);
}

}  // namespace

bool benchScene() {
  const auto face = fullSet();
  const host::DipoleScene scene = host::sceneOf(*face);
  const host::Volume head = volume();
  const host::HeadFrame frame({{0, 90, 0}, {-75, 0, 0}, {75, 0, 0}});
  std::vector<host::SlicePlane> planes;
  for (const host::View view : {host::View::axial, host::View::coronal, host::View::sagittal}) {
    planes.emplace_back(head, frame, findHead(head, frame), view, 0.0);
  }
  bool allMet = benchView("whole head", scene, {}, 3.0);
  allMet &= benchView("whole head, three slices", scene, planes, 3.0);
  allMet &= benchView("enlarged ten times", scene, planes, 30.0);
  allMet &= benchView("far away", scene, planes, 0.3);
  return allMet;
}
