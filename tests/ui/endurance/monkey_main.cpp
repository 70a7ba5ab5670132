// Lets a monkey use the windows:
//
//   dipole_ui_monkey SEED ACTIONS EXAMPLES      the folder of the examples, with a separator at its end
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/ui/endurance/Monkey.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 4) {
    std::fputs("usage: dipole_ui_monkey SEED ACTIONS EXAMPLES\n", stderr);
    return 2;
  }
  const ULONGLONG start = ::GetTickCount64();
  bool isRight = false;
  {
    Monkey monkey(static_cast<unsigned>(std::strtoul(argv[1], nullptr, 10)), argv[3]);
    isRight = monkey.run(std::atoi(argv[2]));
  }
  std::printf("seed %s: %s in %llu s\n", argv[1], isRight ? "everything as it must be" : "FAILED",
              (::GetTickCount64() - start) / 1000);
  return isRight ? 0 : 1;
}
