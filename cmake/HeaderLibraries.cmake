# Libraries of headers alone serve every system. Debian has them where its own C library's headers stand too,
# which a compiler for Windows must not see: it gets a folder that holds nothing but a link to the one library.
#
# add_header_library(TARGET HEADER): HEADER, such as nlohmann/json.hpp, is found beside the system's headers.
function(add_header_library target header)
  find_path(${target}_folder ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  string(REGEX REPLACE "/.*" "" name ${header})
  set(folder ${PROJECT_BINARY_DIR}/headers/${target})
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${${target}_folder}/${name} ${folder}/${name} SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
