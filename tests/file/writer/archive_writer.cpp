// archive_writer OUTDIR: writes one archive of every form that the module writes, NAME.bin, and beside each
// what its objects held, NAME.txt, a member a line. read_archives.py reads them back.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <fstream>
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
    std::fputs("usage: archive_writer OUTDIR\n", stderr);
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
  return folder.ok() ? 0 : 1;
}
