// Where a library brings the C++ runtime, it has operators new and delete of its own. They are made to jump
// to the test program's, so that failing allocations and logs reach what the library allocates too.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <windows.h>

namespace {

using New = void* (*)(std::size_t);
using NewOrNull = void* (*)(std::size_t, const std::nothrow_t&);
using Delete = void (*)(void*);
using SizedDelete = void (*)(void*, std::size_t);
using DeleteOrNull = void (*)(void*, const std::nothrow_t&);

// mov rax, target; jmp rax
void redirect(HMODULE library, const char* name, void* target) {
  void* const place = reinterpret_cast<void*>(::GetProcAddress(library, name));
  std::array<unsigned char, 12> jump = {0x48, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xE0};
  std::memcpy(jump.data() + 2, &target, sizeof target);
  DWORD before = 0;
  if (place == nullptr || ::VirtualProtect(place, jump.size(), PAGE_EXECUTE_READWRITE, &before) == FALSE) {
    std::fprintf(stderr, "%s of platform.dll cannot be redirected\n", name);
    std::abort();
  }
  std::memcpy(place, jump.data(), jump.size());
  ::VirtualProtect(place, jump.size(), before, &before);
}

template <class Function>
void* address(Function function) {
  return reinterpret_cast<void*>(function);
}

bool redirectAll() {
  const HMODULE library = ::GetModuleHandleW(L"platform.dll");
  redirect(library, "_Znwy", address<New>(&operator new));
  redirect(library, "_Znay", address<New>(&operator new[]));
  redirect(library, "_ZnwyRKSt9nothrow_t", address<NewOrNull>(&operator new));
  redirect(library, "_ZnayRKSt9nothrow_t", address<NewOrNull>(&operator new[]));
  redirect(library, "_ZdlPv", address<Delete>(&operator delete));
  redirect(library, "_ZdaPv", address<Delete>(&operator delete[]));
  redirect(library, "_ZdlPvy", address<SizedDelete>(&operator delete));
  redirect(library, "_ZdaPvy", address<SizedDelete>(&operator delete[]));
  redirect(library, "_ZdlPvRKSt9nothrow_t", address<DeleteOrNull>(&operator delete));
  redirect(library, "_ZdaPvRKSt9nothrow_t", address<DeleteOrNull>(&operator delete[]));
  return true;
}

const bool redirected = redirectAll();

}  // namespace
