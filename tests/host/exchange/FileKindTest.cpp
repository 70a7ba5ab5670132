#include <gtest/gtest.h>
#include <optional>

#include "host/exchange/FileKind.h"
#include "tests/host/head/CtfFile.h"
#include "tests/support/TempFolder.h"

namespace {

using host::FileKind;
using host::kindOf;

TEST(FileKind, EndingsTellInAnyCase) {
  EXPECT_EQ(kindOf(_T("head.nii")), FileKind::mri);
  EXPECT_EQ(kindOf(_T("C:\\a.dipset\\HEAD.NII.GZ")), FileKind::mri);
  EXPECT_EQ(kindOf(_T("monday.DipSet")), FileKind::set);
  for (const LPCTSTR path :
       {_T("a.mri"), _T("a.MGH"), _T("a.mgz"), _T("a.hdr"), _T("a.img"), _T("a.img.gz")}) {
    EXPECT_EQ(kindOf(path), FileKind::mri);
  }
}

TEST(FileKind, AHeadWithoutAnEndingIsKnownByItsContent) {
  const TempFolder folder;
  EXPECT_EQ(kindOf(folder.write("head", CtfFile().bytes())), FileKind::mri);
  EXPECT_EQ(kindOf(folder.write("head.old", NiftiFile().version1())), FileKind::mri);
  EXPECT_EQ(kindOf(folder.write("other", "nothing of that")), FileKind::dipoles);
  EXPECT_EQ(kindOf(folder.write("head.dip", CtfFile().bytes())), FileKind::dipoles);
}

TEST(FileKind, EverythingElseIsForTheImporters) {
  for (const LPCTSTR path :
       {_T("spikes.dip"), _T("median.txt"), _T(""), _T("nii"), _T("head.nii.txt"), _T("head.gz")}) {
    EXPECT_EQ(kindOf(path), FileKind::dipoles);
  }
}

TEST(FileKind, AFolderIsAHeadOfDicomFiles) {
  const TempFolder folder;
  folder.makeFolder("series.dip");
  EXPECT_EQ(kindOf(folder.path("series.dip")), FileKind::mri);
  EXPECT_EQ(kindOf(folder.path("none.dip")), FileKind::dipoles);
}

TEST(FileKind, FilesOfDipolesTellTheirFormatInAnyCase) {
  EXPECT_EQ(host::dipoleFormatOf(_T("a.DIP")), host::DipoleFormat::ctf);
  EXPECT_EQ(host::dipoleFormatOf(_T("folder.dip/a.Txt")), host::DipoleFormat::msi);
  EXPECT_EQ(host::dipoleFormatOf(_T("a.dip.dipSET")), host::DipoleFormat::set);
  EXPECT_EQ(host::dipoleFormatOf(_T("a.Csv")), host::DipoleFormat::csv);
  EXPECT_EQ(host::dipoleFormatOf(_T("a.TSV")), host::DipoleFormat::tsv);
  EXPECT_EQ(host::dipoleFormatOf(_T("a.json")), host::DipoleFormat::json);
  for (const LPCTSTR path : {_T("a.png"), _T("dip"), _T(".dip"), _T("a.dip/b"), _T("")}) {
    EXPECT_EQ(host::dipoleFormatOf(path), std::nullopt);
  }
}

TEST(FileKind, HeadsComeFirstAndDipolesLast) {
  EXPECT_LT(FileKind::mri, FileKind::set);
  EXPECT_LT(FileKind::set, FileKind::dipoles);
}

}  // namespace
