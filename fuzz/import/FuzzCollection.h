// A collection that starts every import with the same dipoles and nothing else, and can tell whether an
// import kept them and left the collection in order.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <string>

#include "fuzz/Check.h"
#include "fuzz/FuzzUser.h"
#include "import/DipoleFace8Import01_CTF.h"

// Also for values that are no numbers.
inline bool sameBits(const double (&left)[3], const double (&right)[3]) {
  return std::equal(std::begin(left), std::end(left), std::begin(right), [](double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
  });
}

template <typename Importer>
class FuzzCollection : public Importer {
 public:
  explicit FuzzCollection(int earlier) : m_earlier(earlier) {
    for (int i = 0; i < earlier; ++i) {
      this->addDipoleF(static_cast<float>(i), -1.0F, 0.5F);
    }
  }

  // `most` dipoles may have come in since the last time.
  void restart(int most) {
    const int end = (std::min)(m_earlier + most, static_cast<int>(DipoleTable::capacity));
    for (int slot = m_earlier; slot < end; ++slot) {
      this->m_dipoles.clear(slot);
    }
    this->m_totalDipoles = m_earlier;
    this->m_currentDipole = m_earlier - 1;
    this->m_importFirst = this->m_importEnd = 0;
    this->m_bCtfSphereSet = this->m_megOnly = this->m_coordinateType = this->m_momentInNAm = 0;
    this->m_skipFiducialSetup = false;
    this->m_fileVersion = this->m_patient = this->m_mriFile = _T("non");
    this->m_sphereCtf = this->m_sphereLocational = CSpherezq();
    this->m_fiducialMri = this->m_fiducialCtf = CFiducialzq();
  }

  // What holds behind every import, whatever the file.
  void checkImport(const FuzzUser& user) const {
    check(this->m_totalDipoles >= m_earlier && this->m_totalDipoles <= DipoleTable::capacity,
          "the count fits the table");
    check(this->m_importFirst == m_earlier, "the import began behind the earlier dipoles");
    check(this->m_importEnd == this->m_totalDipoles, "the import ended at the count");
    for (const int slot : {0, m_earlier / 2, m_earlier - 1}) {
      const CDipoleszq* dipole = this->m_dipoles[slot];
      check(dipole != nullptr && dipole->m_location[0] == slot && dipole->m_location[1] == -1.0 &&
                dipole->m_label == _T("Non") && dipole->m_rawLocation.m_radius == 0.0,
            "an earlier dipole is as it was");
    }
    for (int slot = this->m_importFirst; slot < this->m_importEnd; ++slot) {
      checkImported(slot);
    }
    const std::string total =
        "Total imported dipoles:" + std::to_string(this->m_importEnd - this->m_importFirst) + " (" +
        std::to_string(this->m_importFirst) + "-" + std::to_string(this->m_importEnd) + ")\n";
    check(!user.messages.empty() && user.messages.back() == total, "the total is the last message");
  }

 private:
  void checkImported(int slot) const {
    const CDipoleszq* dipole = this->m_dipoles[slot];
    check(dipole != nullptr, "no slot of the set is empty");
    check(dipole->m_number == slot + 1, "a dipole is numbered by its place");
    check(
        dipole->m_rawLocation.m_radius == 1.0 && sameBits(dipole->m_rawLocation.m_center, dipole->m_location),
        "the raw location is backed up");
    check(dipole->m_rawOrientation.m_radius == 1.0 &&
              sameBits(dipole->m_rawOrientation.m_center, dipole->m_orientation),
          "the raw orientation is backed up");
    check(!dipole->m_label.IsEmpty(), "every dipole has a label");
  }

  int m_earlier;
};
