#include <afxwin.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  const CWinApp program;  // messages need one
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
