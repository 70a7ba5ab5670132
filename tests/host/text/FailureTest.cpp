// A failure of the framework or of memory reaches the user as one text.
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>

#include "host/text/Failure.h"
#include "tests/host/text/Failing.h"
#include "tests/support/FailingNew.h"

TEST(Failure, ExhaustedMemoryIsToldWithoutMemory) {
  std::string text;
  try {
    const FailingNew memory(1, Lasting::fromThenOn);
    host::withinMemory([] { throw std::bad_alloc(); });
  } catch (const std::runtime_error& error) {
    text = error.what();
  }
  EXPECT_EQ(text, "not enough memory");
  EXPECT_EQ(failureOf([] { host::withinMemory([] { AfxThrowMemoryException(); }); }), "not enough memory");
}

TEST(Failure, FaultOfTheFrameworkIsToldWithTheFile) {
  const CString path = _T("folder/a.set");
  const std::string failure = failureOf([&] {
    host::withFile("read", path, [&] { AfxThrowFileException(CFileException::diskFull, 0, path); });
  });
  EXPECT_TRUE(failure.starts_with("cannot read folder/a.set: ")) << failure;
  EXPECT_GT(failure.size(), std::string("cannot read folder/a.set: ").size());
  EXPECT_EQ(failureOf([&] { host::withFile("read", path, [] { AfxThrowMemoryException(); }); }),
            "not enough memory");
}
