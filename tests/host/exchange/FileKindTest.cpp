#include <gtest/gtest.h>

#include "host/exchange/FileKind.h"

namespace {

using host::FileKind;
using host::kindOf;

TEST(FileKind, EndingsTellInAnyCase) {
  EXPECT_EQ(kindOf(_T("head.nii")), FileKind::mri);
  EXPECT_EQ(kindOf(_T("C:\\a.dipset\\HEAD.NII.GZ")), FileKind::mri);
  EXPECT_EQ(kindOf(_T("monday.DipSet")), FileKind::set);
}

TEST(FileKind, EverythingElseIsForTheImporters) {
  for (const LPCTSTR path :
       {_T("spikes.dip"), _T("median.txt"), _T(""), _T("nii"), _T("head.nii.txt"), _T("head.gz")})
    EXPECT_EQ(kindOf(path), FileKind::dipoles);
}

TEST(FileKind, HeadsComeFirstAndDipolesLast) {
  EXPECT_LT(FileKind::mri, FileKind::set);
  EXPECT_LT(FileKind::set, FileKind::dipoles);
}

}  // namespace
