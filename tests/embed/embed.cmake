# Installs the library into an empty folder, builds examples/embed there and runs the program on an example.
set(folder ${BUILD}/embedding)
file(REMOVE_RECURSE ${folder})
file(COPY ${SOURCE}/embed ${SOURCE}/auditory.dip DESTINATION ${folder})

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${folder} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE said)
  set(said "${said}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${folder}/installed --component library)
run(${CMAKE_COMMAND} -S embed -B build -G Ninja -D dipole_ROOT=${folder}/installed -D CMAKE_SYSTEM_NAME=${SYSTEM}
    -D CMAKE_CXX_COMPILER=${COMPILER} -D "CMAKE_CXX_FLAGS=${FLAGS} -Wall -Wextra -Wpedantic -Werror")
run(${CMAKE_COMMAND} --build build)

if(PROGRAM STREQUAL "core")
  run(build/core table.txt auditory.dip)
  set(expected
"N100m_left   left     52.00   58.00   10.00 mm    96.20 ms   4.70 %
N100m_right  right   -51.00   56.00   13.00 mm    92.40 ms   3.90 %
")
  if(NOT said STREQUAL expected)
    message(FATAL_ERROR "The program said\n${said}instead of\n${expected}")
  endif()
  set(written table.txt)
else()
  run(${EMULATOR} build/${PROGRAM} auditory.dip set.dipset --once)
  set(written set.dipset)
endif()

# Both files hold the labels as UTF-16.
file(READ ${folder}/${written} bytes HEX)
if(NOT bytes MATCHES "4e003100300030006d005f006c00650066007400.*4e003100300030006d005f0072006900670068007400")
  message(FATAL_ERROR "${written} does not hold both dipoles.")
endif()
