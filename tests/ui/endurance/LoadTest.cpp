// dipole.dll in a host that was not linked with it: loaded, used and freed again and again, it leaves no
// window class, no window, no handle and no memory behind.
#include <afxwin.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <set>

#include "module/dipole.h"
#include "tests/platform/windows/HandleCount.h"
#include "tests/platform/windows/Robot.h"
#include "tests/ui/endurance/MemoryCount.h"
#include "ui/resource.h"

namespace {

constexpr int warmingUp = 10;  // rounds in which the system's own stores fill
constexpr int rounds = 100;

class Library {
 public:
  Library() : m_module(::LoadLibraryW(L"dipole.dll")) {}
  ~Library() { ::FreeLibrary(m_module); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  HMODULE module() const { return m_module; }

  template <typename Function>
  Function find(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(m_module, name)));
  }

 private:
  HMODULE m_module;
};

// The facade through its exports, as the compiler names them.
class Facade {
 public:
  explicit Facade(const Library& library) : m_library(library) {
    void* const memory = ::operator new(sizeof(CDipoleFacezq));
    library.find<void (*)(void*)>("_ZN13CDipoleFacezqC1Ev")(memory);
    m_face.reset(static_cast<CDipoleFacezq*>(memory));
  }

  HWND showList(CWnd* host) {
    using Show = CDialog* (*)(CDipoleFacezq*, CWnd*, int (*)(double, double, double, double));
    const auto show = m_library.find<Show>("_ZN13CDipoleFacezq14showDipoleListEP4CWndPFiddddE");
    return show(m_face.get(), host, nullptr)->m_hWnd;
  }
  void showEditor(CWnd* host) { call("_ZN13CDipoleFacezq10dipoleEditEP4CWnd", host); }
  void showCoordinates(CWnd* host) { call("_ZN13CDipoleFacezq19setDipoleCoordinateEP4CWnd", host); }
  int addDipole() {
    return m_library.find<int (*)(CDipoleFace*)>("_ZN11CDipoleFace9addDipoleEv")(m_face.get());
  }

 private:
  void call(const char* name, CWnd* host) {
    EXPECT_EQ(m_library.find<int (*)(CDipoleFacezq*, CWnd*)>(name)(m_face.get(), host), 1);
  }

  const Library& m_library;
  std::unique_ptr<CDipoleFacezq> m_face;
};

// The window classes that a module can use.
std::set<ATOM> classesOf(HINSTANCE module) {
  std::set<ATOM> classes;
  for (unsigned atom = MAXINTATOM; atom <= 0xFFFF; ++atom) {
    WNDCLASSW description = {};
    if (::GetClassInfoW(module, MAKEINTATOM(atom), &description) != FALSE) {
      classes.insert(static_cast<ATOM>(atom));
    }
  }
  return classes;
}

void useWindows(const Library& library) {
  Facade facade(library);
  EXPECT_EQ(facade.addDipole(), 1);
  EXPECT_EQ(facade.addDipole(), 2);
  const HWND manager = facade.showList(nullptr);
  facade.showEditor(nullptr);
  facade.showCoordinates(nullptr);
  pump();
  EXPECT_TRUE(::IsWindowVisible(manager));
  EXPECT_EQ(::SendDlgItemMessageW(manager, IDC_MANAGER_LIST, LVM_GETITEMCOUNT, 0, 0), 2);
}

void loadUseAndFree() {
  const Library library;
  ASSERT_NE(library.module(), nullptr);
  useWindows(library);
  pump();
}

// A dialog of the library's template as the system alone makes it.
void usePlainDialog(HINSTANCE module, int id) {
  const HWND dialog = ::CreateDialogParamW(
      module, MAKEINTRESOURCEW(id), nullptr, [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
  ASSERT_NE(dialog, nullptr);
  ::ShowWindow(dialog, SW_SHOWNORMAL);
  pump();
  ::DestroyWindow(dialog);
  pump();
}

void loadAndUsePlainDialogs() {
  const Library library;
  for (const int id : {IDD_DIPOLE_MANAGER, IDD_DIPOLE_EDITOR, IDD_DIPOLE_COORDINATE}) {
    usePlainDialog(library.module(), id);
  }
}

// What a number of rounds leave behind.
struct Growth {
  int windows = windowHandles();
  int drawing = gdiHandles();
  HeapUse heap = heapUse();
  long long privateUse = static_cast<long long>(privateBytes());

  void end() {
    const Growth now;
    windows = now.windows - windows;
    drawing = now.drawing - drawing;
    heap = {now.heap.blocks - heap.blocks, now.heap.bytes - heap.bytes};
    privateUse = now.privateUse - privateUse;
  }
};

Growth growthOf(void (*round)(), int count) {
  for (int i = 0; i < warmingUp; ++i) {
    round();
  }
  Growth growth;
  for (int i = 0; i < count; ++i) {
    round();
  }
  growth.end();
  return growth;
}

std::ostream& operator<<(std::ostream& out, const Growth& growth) {
  return out << growth.windows << " window and " << growth.drawing << " drawing handles, "
             << growth.heap.blocks << " blocks, " << growth.heap.bytes << " bytes in heaps, "
             << growth.privateUse << " bytes in all";
}

TEST(LoadedLibrary, IsNotThereBefore) {
  EXPECT_EQ(::GetModuleHandleW(L"dipole.dll"), nullptr);
}

TEST(LoadedLibrary, BringsItsResourcesForAsLongAsItIsLoaded) {
  const auto whereTheManagerIs = [] {
    return AfxFindResourceHandle(MAKEINTRESOURCEW(IDD_DIPOLE_MANAGER), RT_DIALOG);
  };
  for (int i = 0; i < 3; ++i) {
    const Library library;
    EXPECT_EQ(whereTheManagerIs(), library.module());
  }
  EXPECT_EQ(whereTheManagerIs(), AfxGetInstanceHandle());
}

// Windows keeps the classes of a library that went without taking them back.
TEST(LoadedLibrary, LeavesNoWindowClassBehind) {
  loadUseAndFree();
  HINSTANCE module = nullptr;
  std::set<ATOM> before;
  {
    const Library library;
    module = library.module();
    before = classesOf(module);
    useWindows(library);
    EXPECT_EQ(classesOf(module), before);
  }
  EXPECT_EQ(classesOf(module), before);
}

TEST(LoadedLibrary, ClassesAreSeen) {
  const Library library;
  const std::set<ATOM> before = classesOf(library.module());
  WNDCLASSW description = {};
  description.lpfnWndProc = &::DefWindowProcW;
  description.hInstance = library.module();
  description.lpszClassName = L"of the library";
  const ATOM atom = ::RegisterClassW(&description);
  std::set<ATOM> after = classesOf(library.module());
  EXPECT_EQ(after.erase(atom), 1U);
  EXPECT_EQ(after, before);
  ::UnregisterClassW(description.lpszClassName, library.module());
}

// Objects of handles that somebody asked for stay a while in the platform, at most 64, each in two blocks of
// 24 bytes. What the system's own dialogs leave behind, some bytes for every label under Wine, is not the
// library's.
TEST(LoadedLibrary, LeavesNeitherHandlesNorMemoryBehind) {
  constexpr int fewerRounds = 30;
  constexpr int share = (rounds - warmingUp) / fewerRounds;
  const Growth plain = growthOf(&loadAndUsePlainDialogs, fewerRounds);
  const Growth growth = growthOf(&loadUseAndFree, rounds - warmingUp);
  std::cout << fewerRounds << " rounds of plain dialogs leave " << plain << '\n'
            << rounds - warmingUp << " rounds of the library's leave " << growth << '\n';
  EXPECT_EQ(growth.windows, 0);
  EXPECT_EQ(growth.drawing, 0);
  EXPECT_LE(growth.heap.blocks, share * plain.heap.blocks + 2LL * 64 + 10);
  EXPECT_LE(growth.heap.bytes, share * plain.heap.bytes + 2LL * 64 * 24 + 500);
  EXPECT_LT(growth.privateUse, share * (std::max)(plain.privateUse, 0LL) + 20LL * 1024 * 1024);
}

}  // namespace
