// dipole.dll as a program loads and frees it: its resources come and go with it, and nothing else happens.
#include <afxwin.h>

#include <gtest/gtest.h>
#include <utility>

#include "tests/support/FailingNew.h"

namespace {

class Library {
 public:
  Library() : m_module(::LoadLibraryW(L"dipole.dll")) {}
  ~Library() {
    if (m_module != nullptr) {
      ::FreeLibrary(m_module);
    }
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  HMODULE module() const { return m_module; }

 private:
  HMODULE m_module;
};

HINSTANCE whereIs(int number, LPCTSTR type) {
  return AfxFindResourceHandle(MAKEINTRESOURCEW(number), type);
}

TEST(DipoleLibrary, BringsItsDialogsMenuAndIconsAndTakesThemAlong) {
  const std::pair<int, LPCTSTR> resources[] = {
      {20000, RT_DIALOG}, {20001, RT_DIALOG},     {20007, RT_DIALOG},     {20042, RT_DIALOG},
      {20004, RT_MENU},   {20049, RT_GROUP_ICON}, {20050, RT_GROUP_ICON},
  };
  const Library library;
  ASSERT_NE(library.module(), nullptr);
  for (const auto& [number, type] : resources) {
    EXPECT_EQ(whereIs(number, type), library.module()) << number;
  }
}

TEST(DipoleLibrary, IsGoneWhenItIsFreed) {
  { const Library library; }
  EXPECT_EQ(::GetModuleHandleW(L"dipole.dll"), nullptr);
  EXPECT_EQ(whereIs(20007, RT_DIALOG), AfxGetInstanceHandle());
}

TEST(DipoleLibrary, LoadingMakesNothingButTheEntryOfItsResources) {
  { const Library library; }
  const long long before = liveAllocations();
  {
    const Library library;
    EXPECT_EQ(liveAllocations(), before + 1);
  }
  EXPECT_EQ(liveAllocations(), before);
}

TEST(DipoleLibrary, LoadsAndGoesHundredTimes) {
  for (int i = 0; i < 100; ++i) {
    const Library library;
    ASSERT_EQ(whereIs(20007, RT_DIALOG), library.module());
  }
  EXPECT_EQ(whereIs(20007, RT_DIALOG), AfxGetInstanceHandle());
}

TEST(DipoleLibrary, RefusesToBeLoadedWithoutMemory) {
  {
    const FailingNew failing(1);
    const Library library;
    EXPECT_TRUE(failing.failed());
    EXPECT_EQ(library.module(), nullptr);
  }
  const Library library;
  EXPECT_EQ(whereIs(20007, RT_DIALOG), library.module());
}

}  // namespace
