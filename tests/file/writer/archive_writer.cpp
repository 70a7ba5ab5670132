// archive_writer OUTDIR: writes one archive of every form that the module writes, NAME.bin, and beside each
// what its objects held, NAME.txt, a member a line. read_archives.py reads them back.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

#include "platform/Utf.h"
#include "tests/file/SetFixture.h"

namespace {

double nanWithPayload() {
  return std::bit_cast<double>(std::uint64_t{0x7FF4000000ABCDEF});
}

CString longLabel(int units) {
  CString label;
  for (int i = 0; i < units; ++i) {
    label += static_cast<TCHAR>(_T('a') + i % 26);
  }
  return label;
}

// Values and labels that a careless writer or reader would lose.
void makeOdd(CDipoleszq& dipole, int which) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  switch (which) {
    case 0:
      dipole.m_location[0] = nanWithPayload();
      dipole.m_location[1] = -infinite;
      dipole.m_location[2] = -0.0;
      dipole.m_label = CString();
      break;
    case 1:
      dipole.m_colorF[1] = std::bit_cast<float>(std::uint32_t{0x7FA00123});
      dipole.m_latency = std::numeric_limits<double>::denorm_min();
      dipole.m_label = _T("a \"quote\", a comma,\ta tab\r\nand a line");
      break;
    case 2:
      dipole.m_moment = infinite;
      dipole.m_label = fromUtf8("\xC3\xA4\xE2\x82\xAC\xF0\x9F\xA7\xA0");
      dipole.m_label += static_cast<TCHAR>(0xD800);  // half of a pair
      break;
    default:
      dipole.m_color = 0xFFFFFFFF;
      dipole.m_label = longLabel(which == 3 ? 255 : 70000);
      break;
  }
}

Set oddSet() {
  Set set = filledSet(6);
  for (int slot = 0; slot < 5; ++slot) {
    makeOdd(*set->m_dipoles[slot], slot);
  }
  return set;
}

// Gives numbers with a fraction values that a careless writer or reader would change: both kinds of NaN with
// a payload that is each number's own, infinities, denormals and negative zeros, in turn.
class OddValues {
 public:
  template <typename... Numbers>
  void operator()(Numbers&... numbers) {
    (one(numbers), ...);
  }

 private:
  template <typename Number, std::size_t count>
  void one(Number (&numbers)[count]) {
    for (Number& number : numbers) {
      one(number);
    }
  }

  void one(double& number) {
    const std::uint64_t made = ++m_made;
    const std::uint64_t kinds[] = {0x7FF4000000000000 + made, 0xFFF0000000000000, made, 0x8000000000000000,
                                   0xFFF8000000000000 + made};
    number = std::bit_cast<double>(kinds[made % std::size(kinds)]);
  }

  void one(float& number) {
    ++m_made;
    const std::uint32_t kinds[] = {0x7FA00000 + m_made, 0x7F800000, m_made, 0x80000000, 0xFFC00000 + m_made};
    number = std::bit_cast<float>(kinds[m_made % std::size(kinds)]);
  }

  void one(CSpherezq& sphere) { (*this)(sphere.m_center, sphere.m_radius); }

  void one(CFiducialzq& set) {
    for (CFiduciaryPtzq& point : set.m_points) {
      (*this)(point.m_values, point.m_values2);
    }
  }

  void one(CDipoleszq& d) {
    (*this)(d.m_colorF, d.m_latency, d.m_extraValue, d.m_fitError, d.m_location, d.m_size, d.m_orientation);
    (*this)(d.m_moment, d.m_scale, d.m_orientationScale, d.m_orientationLength);
  }

  std::uint32_t m_made = 0;
};

// A set in which no number with a fraction is an ordinary one.
Set setOfOddValues() {
  Set set = filledSet(3);
  OddValues make;
  make(*set->m_dipoles[0], *set->m_dipoles[1], *set->m_dipoles[2]);
  make(set->m_space, set->m_mergeRadius, set->m_faceValue, set->m_allDipoleRange);
  make(set->m_sphereLocational, set->m_sphereCtf, set->m_sphereRotation);
  make(set->m_fiducialMri, set->m_fiducialCtf);
  set->m_skipFiducialSetup = false;
  return set;
}

class Folder {
 public:
  explicit Folder(std::string path) : m_path(std::move(path)) {}

  template <typename Write>
  void write(const char* name, const Lines& lines, Write serialize) {
    const std::string bytes = storedBytes([&](CArchive& archive) { m_ok &= serialize(archive) == 1; });
    std::ofstream archive(m_path + "/" + name + ".bin", std::ios::binary);
    archive << bytes;
    std::ofstream list(m_path + "/" + name + ".txt", std::ios::binary);
    for (const std::string& line : lines) {
      list << line << '\n';
    }
    m_ok = m_ok && archive.flush() && list.flush();
  }

  bool ok() const { return m_ok; }

 private:
  std::string m_path;
  bool m_ok = true;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    static_cast<void>(std::fputs("usage: archive_writer OUTDIR\n", stderr));
    return 2;
  }
  Folder folder(argv[1]);
  const Set set = oddSet();
  const auto storeObsolete = [&](CArchive& archive) { return set->serializeObsolete20050630(archive); };
  folder.write("set_20011118", linesOf(*set), storeObsolete);
  set->deleteDipole(1, 0);  // only the current form knows empty slots
  const auto store = [&](CArchive& archive) { return set->serializeDipolesFace(archive); };
  folder.write("set_20050629", linesOf(*set), store);
  CDipoleszq& dipole = *set->m_dipoles[2];
  folder.write("record_20061206", linesOf(dipole),
               [&](CArchive& archive) { return dipole.serializeDipole(archive); });
  folder.write("record_20011118", linesOf(dipole),
               [&](CArchive& archive) { return dipole.serializeObsolete20050629(archive); });
  const Set odd = setOfOddValues();
  folder.write("set_20011118_odd", linesOf(*odd),
               [&](CArchive& archive) { return odd->serializeObsolete20050630(archive); });
  folder.write("set_20050629_odd", linesOf(*odd),
               [&](CArchive& archive) { return odd->serializeDipolesFace(archive); });
  folder.write("record_20061206_odd", linesOf(*odd->m_dipoles[1]),
               [&](CArchive& archive) { return odd->m_dipoles[1]->serializeDipole(archive); });
  return folder.ok() ? 0 : 1;
}
