# Reading headers is half of what a source costs: the MFC names bring all of Windows, and GoogleTest much of the
# standard library. A target has them precompiled, or shares those of another target that is compiled alike. The
# preset `native` builds without, so that a source which forgot an include does not compile there.
set(precompiled_names <afxwin.h> <afxdlgs.h> <algorithm> <array> <cmath> <cstdint> <memory> <optional> <string>
                      <vector>)

# GCC forgets of a precompiled header that it is the system's, and then reports what it believes to see inside
# std::string (GCC bug 105651 and its like). The preset `native` has these warnings.
function(quieten_precompiled target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow
                           -Wno-stringop-overread)
  endif()
endfunction()

# precompile(TARGET [HEADER...]): the MFC names, and these headers.
function(precompile target)
  if(DIPOLE_PRECOMPILED AND NOT MSVC)
    target_precompile_headers(${target} PRIVATE ${precompiled_names} ${ARGN})
    quieten_precompiled(${target})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      # The build knows what has changed; headers of a fresh checkout are as good as those that were precompiled.
      target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
  endif()
endfunction()

# precompiled_as(TARGET OTHER): what OTHER has precompiled.
function(precompiled_as target other)
  if(DIPOLE_PRECOMPILED AND NOT MSVC)
    target_precompile_headers(${target} REUSE_FROM ${other})
    quieten_precompiled(${target})
  endif()
endfunction()
