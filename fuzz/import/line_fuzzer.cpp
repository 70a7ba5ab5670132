// Reads all lines of the input in both ways that the importers have; each must agree with a plain model.
#include <afx.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/Check.h"
#include "fuzz/import/LineModel.h"
#include "import/AnsiLine.h"
#include "import/AnsiLineReader.h"
#include "import/DipoleFace8Import01_CTF.h"

namespace {

void checkText(const CString& text, const std::string& bytes) {
  check(text == CString(bytes.c_str()), "a line is its bytes up to the first zero, widened");
}

void checkWords(const AnsiLine& line, const std::string& bytes) {
  const CString text(bytes.c_str());
  check(line.isNamed("Dipoles") == (text.CompareNoCase(_T("Dipoles")) == 0), "a name is the whole line");
  check(line.contains("VERSION:") == (text.Find(_T("VERSION:")) >= 0), "a keyword stands anywhere");
  check(line.isUnitHeader() == (text.Find(_T("(cm)")) >= 0), "a unit header names (cm)");
  check(line.isPassedOver() == (text.Find(_T("{")) >= 0 || text.Find(_T("//")) >= 0), "braces and comments");
  check(line.isEnd() == (text.Find(_T("}")) >= 0), "a closing brace ends a section");
}

CDipoleFace8Import01_CTF& collection() {
  static const auto only = std::make_unique<CDipoleFace8Import01_CTF>();
  return *only;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<BYTE> bytes(data, data + size);
  bytes.push_back(0);  // a file in memory needs some memory
  CMemFile whole(bytes.data(), static_cast<UINT>(size));
  CMemFile single(bytes.data(), static_cast<UINT>(size));
  CArchive wholeArchive(&whole, CArchive::load);
  CArchive singleArchive(&single, CArchive::load, 128);
  AnsiLineReader reader(wholeArchive);
  std::string expected;
  std::size_t at = 0;
  for (bool more = true; more;) {
    more = modelLine(data, size, at, expected);
    AnsiLine line;
    check(reader.next(line) == more, "the reader gives as many lines as the model");
    checkText(line.text(), expected);
    checkWords(line, expected);
    CString text;
    check(collection().readANSI(singleArchive, text) == (more ? 1 : 0), "readANSI gives as many lines");
    checkText(text, expected);
  }
  return 0;
}
