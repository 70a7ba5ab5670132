// Lets a user without a plan use the viewer:
//
//   dipole_viewer_monkey SEED ACTIONS MINUTES EXAMPLES [HEAD]
//
// EXAMPLES is the folder of the example files, with a separator at its end, HEAD a NIfTI file.
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/host/viewer/endurance/ViewerMonkey.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 5 && argc != 6) {
    std::fputs("usage: dipole_viewer_monkey SEED ACTIONS MINUTES EXAMPLES [HEAD]\n", stderr);
    return 2;
  }
  const ULONGLONG start = ::GetTickCount64();
  bool isRight = false;
  {
    ViewerMonkey monkey(static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10)), argv[4],
                        argc == 6 ? argv[5] : std::string(argv[4]) + "no head.nii");
    isRight = monkey.run(std::atoi(argv[2]), std::atoi(argv[3]));
  }
  std::printf("seed %s: %s in %llu s\n", argv[1], isRight ? "everything as it must be" : "FAILED",
              (::GetTickCount64() - start) / 1000);
  return isRight ? 0 : 1;
}
