// Drawing one slice of a full collection beside a bare loop over the same dipoles.
#include <afxwin.h>

#include <memory>
#include <random>
#include <string>

#include "bench/Benchmarks.h"
#include "bench/Comparison.h"
#include "module/dipole.h"

namespace {

constexpr int voxels = 256;
constexpr int rounds = 101;

// A memory picture to draw into.
struct Picture {
  CBitmap bitmap;
  CDC dc;
  CBitmap* previous;

  Picture() {
    const std::vector<BYTE> black(std::size_t{4} * voxels * voxels);
    bitmap.CreateBitmap(voxels, voxels, 1, 32, black.data());
    dc.CreateCompatibleDC(nullptr);
    previous = dc.SelectObject(&bitmap);
  }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  ~Picture() { dc.SelectObject(previous); }
};

// The least that any drawing does: write the extents of each dipole and look whether it is in the slab.
template <typename InSlab>
void bareLoop(const CDipoleFace& face, double min, double max, InSlab inSlab) {
  for (int slot = 0; slot < face.m_totalDipoles; ++slot) {
    CDipoleszq* dipole = face.m_dipoles[slot];
    dipole->m_dimX = dipole->m_dimY = dipole->m_dimZ = voxels;
    const double z = dipole->m_location[2];
    if (min <= z && z <= max) {
      inSlab(*dipole);
    }
  }
}

}  // namespace

bool benchSliceDrawing() {
  auto face = std::make_unique<CDipoleFace8Import01_CTF>();
  face->setDimensionXYZ(voxels, voxels, voxels);
  face->setSpaceXYZ(1.0, 1.0, 1.0);
  std::mt19937 random(7);
  std::uniform_real_distribution<float> place(-90.0F, 90.0F);
  for (int i = 0; i < DipoleTable::capacity; ++i) {
    face->addDipoleF(place(random), place(random), 10.0F);
  }
  Picture picture;
  constexpr int sliceAt10 = voxels / 2 + 10;
  int hits = 0;

  const std::string title = "coronal slice, " + std::to_string(DipoleTable::capacity) + " dipoles, ";
  bool allMet =
      compare(title + "none in the slab",
              {{"drawDipoleCoronal", {}, [&] { face->drawDipoleCoronal(&picture.dc, sliceAt10 + 20, 1); }},
               {"bare loop", {}, [&] { bareLoop(*face, 29.5, 30.5, [&](CDipoleszq&) { ++hits; }); }}},
              {{1, 2.0, false}}, rounds);
  keep(hits);

  const auto fill = [&](const CDipoleszq& dipole) {
    picture.dc.FillSolidRect(static_cast<int>(dipole.m_location[0]) + voxels / 2,
                             voxels / 2 - static_cast<int>(dipole.m_location[1]), 3, 3, dipole.m_color);
  };
  allMet &= compare(title + "all in the slab",
                    {{"drawDipoleCoronal", {}, [&] { face->drawDipoleCoronal(&picture.dc, sliceAt10, 1); }},
                     {"bare loop and the fills alone", {}, [&] { bareLoop(*face, 9.5, 10.5, fill); }}},
                    {{1, 2.0, false}}, rounds);
  return allMet;
}
