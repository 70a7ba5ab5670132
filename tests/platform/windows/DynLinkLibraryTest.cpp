// An extension library, loaded and freed as a host does it.
#include <afxwin.h>

#include <gtest/gtest.h>
#include <stdexcept>

#include "tests/platform/windows/Robot.h"
#include "tests/platform/windows/extension/Extension.h"
#include "tests/platform/windows/extension/ids.h"
#include "tests/support/FailingNew.h"

namespace {

class Library {
 public:
  Library() : m_module(::LoadLibraryW(L"test_extension.dll")) { EXPECT_NE(m_module, nullptr); }
  ~Library() { ::FreeLibrary(m_module); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  template <class Function>
  Function find(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(m_module, name)));
  }
  HMODULE module() const { return m_module; }

 private:
  HMODULE m_module;
};

HINSTANCE whereTheDialogIs() {
  return AfxFindResourceHandle(MAKEINTRESOURCEW(IDD_EXTENSION), RT_DIALOG);
}

TEST(ExtensionLibrary, BringsItsDialogs) {
  EXPECT_EQ(whereTheDialogIs(), AfxGetInstanceHandle());
  {
    const Library library;
    EXPECT_EQ(whereTheDialogIs(), library.module());
    Robot robot;
    robot.when("Extension", [](HWND window) {
      EXPECT_EQ(::GetMenuItemCount(::GetMenu(window)), 1) << "the menu of its template";
      press(window, IDC_SEVEN);
    });
    EXPECT_EQ(library.find<RunDialog>(runDialogName)(), 7);
  }
  EXPECT_EQ(::GetModuleHandleW(L"test_extension.dll"), nullptr);
  EXPECT_EQ(whereTheDialogIs(), AfxGetInstanceHandle());
}

TEST(ExtensionLibrary, ItsExceptionsAreCaughtByTheHost) {
  const Library library;
  const auto raise = library.find<Throw>(throwName);
  try {
    raise(1);
    ADD_FAILURE() << "no exception";
  } catch (CUserException* exception) {
    exception->Delete();
  }
  EXPECT_THROW(raise(2), std::runtime_error);
  EXPECT_EQ(std::uncaught_exceptions(), 0);
}

TEST(ExtensionLibrary, LeavesNoMemoryBehind) {
  { const Library library; }
  const long long before = liveAllocations();
  for (int i = 0; i < 100; ++i) {
    const Library library;
  }
  EXPECT_EQ(liveAllocations(), before);
  EXPECT_EQ(whereTheDialogIs(), AfxGetInstanceHandle());
}

}  // namespace
