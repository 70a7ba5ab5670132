// The answers for a 3D view of a full collection, each beside a bare loop that reads the same members.
#include <memory>
#include <string>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "module/dipole.h"

namespace {

constexpr int rounds = 101;

// Reads one member of every dipole.
template <typename Read>
void bareLoop(const CDipoleFace& face, Read read) {
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    if (const CDipoleszq* dipole = face.m_dipoles[slot]) {
      keep(read(*dipole));
    }
  }
}

}  // namespace

bool benchView3D() {
  auto face = std::make_unique<CDipoleFace9File>();
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipole();
  }
  const std::string title = std::to_string(DipoleTable::capacity) + " dipoles, ";
  bool allMet =
      compare(title + "counting the shown ones",
              {{"getTotalDipolesShowed", {}, [&] { keep(face->getTotalDipolesShowed()); }},
               {"bare loop", {}, [&] { bareLoop(*face, [](const CDipoleszq& d) { return d.m_show; }); }}},
              {{1, 2.0, false}}, rounds);
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  allMet &=
      compare(title + "looking for a latency that none has",
              {{"getDipoleXYZ4Latency", {}, [&] { keep(face->getDipoleXYZ4Latency(5.0, 6.0, x, y, z)); }},
               {"bare loop", {}, [&] { bareLoop(*face, [](const CDipoleszq& d) { return d.m_latency; }); }}},
              {{1, 2.0, false}}, rounds);
  const double point[3] = {10.0, 0.0, 0.0};
  float color[3];
  allMet &= compare(
      title + "picking",
      {{"getDipolePtColorF", {}, [&] { keep(face->getDipolePtColorF(point, color)); }},
       {"bare loop", {}, [&] { bareLoop(*face, [](const CDipoleszq& d) { return d.m_location[0]; }); }}},
      {{1, 2.0, false}}, rounds);
  return allMet;
}
