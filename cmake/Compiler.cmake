# Every target of the project links this: warnings are errors, text is UTF-16, sources start at the root.
add_library(dipole_options INTERFACE)
target_include_directories(dipole_options INTERFACE ${PROJECT_SOURCE_DIR})
if(MSVC)
  # MFC's own headers are not ours to judge. C4251: exported classes have members of standard types; a host
  # has the compiler and the runtime of the module in any case, as MFC wants it.
  target_compile_options(dipole_options INTERFACE /permissive- /W4 /WX /wd4251 /external:anglebrackets /external:W0 /utf-8)
else()
  target_compile_options(dipole_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  # GCC 12 sees overlapping copies inside std::string where there are none (GCC bug 105651), and where it
  # merges neighbouring statements into vectors it drops the rounding of a double to float and back.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(dipole_options INTERFACE -Wno-restrict -fno-tree-slp-vectorize)
  endif()
endif()
if(WIN32)
  target_compile_definitions(dipole_options INTERFACE
    UNICODE _UNICODE NOMINMAX WINVER=0x0601 _WIN32_WINNT=0x0601)
endif()
