# Where things go when they are installed, and the packages that CPack makes of them: a zip for Windows, a
# Debian package for Linux. Programs are the component `program`; what a host needs is the component `library`.
set(DIPOLE_INSTALL_INCLUDE include/dipole)     # where "module/dipole.h" is found
set(DIPOLE_INSTALL_CMAKE lib/cmake/dipole)
if(WIN32)
  set(DIPOLE_INSTALL_DOC .)                    # in sight of who unpacks the zip
else()
  set(DIPOLE_INSTALL_DOC share/doc/dipole)
endif()

# install_headers(FOLDER PATTERN...): headers of a folder of the repository, under the path by which they are
# included.
function(install_headers folder)
  foreach(pattern IN LISTS ARGN)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/${pattern})
    install(FILES ${headers} DESTINATION ${DIPOLE_INSTALL_INCLUDE}/${folder} COMPONENT library)
  endforeach()
endfunction()

# To be called when every target is there.
function(install_package_files)
  add_custom_target(packaged)                  # builds what a package holds
  foreach(target IN ITEMS dipole platform dipole_program dipole_tool manual viewer page)
    if(TARGET ${target})
      add_dependencies(packaged ${target})
    endif()
  endforeach()

  if(TARGET viewer)
    install(TARGETS viewer COMPONENT program RUNTIME DESTINATION bin)
  endif()

  include(CMakePackageConfigHelpers)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/package/dipoleConfig.cmake.in
    ${PROJECT_BINARY_DIR}/package/dipoleConfig.cmake INSTALL_DESTINATION ${DIPOLE_INSTALL_CMAKE})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/dipoleConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/package/dipoleConfig.cmake
                ${PROJECT_BINARY_DIR}/package/dipoleConfigVersion.cmake
          DESTINATION ${DIPOLE_INSTALL_CMAKE} COMPONENT library)
  install(EXPORT dipoleTargets NAMESPACE dipole:: DESTINATION ${DIPOLE_INSTALL_CMAKE} COMPONENT library)

  if(WIN32)
    install(FILES cmake/package/README-windows.md DESTINATION ${DIPOLE_INSTALL_DOC} RENAME README.md
            COMPONENT library)
  else()
    install(FILES README.md DESTINATION ${DIPOLE_INSTALL_DOC} COMPONENT library)
  endif()
  install(FILES ARCHITECTURE.md DESTINATION ${DIPOLE_INSTALL_DOC} COMPONENT library)
  install(DIRECTORY docs DESTINATION ${DIPOLE_INSTALL_DOC} COMPONENT library)
  install(DIRECTORY examples DESTINATION ${DIPOLE_INSTALL_DOC} COMPONENT library PATTERN __pycache__ EXCLUDE)
endfunction()

set(CPACK_PACKAGE_NAME dipole)
set(CPACK_PACKAGE_VENDOR "dipole developers")
set(CPACK_PACKAGE_CONTACT "dipole developers <dipole@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "equivalent current dipoles over MRI slices")
set(CPACK_PACKAGE_DESCRIPTION
"Reads the dipole files of CTF and 4D/MSI systems, lists and converts them, registers
them to an MRI and draws them on slices and in 3D.
.
This package holds the command line tool, and the library with headers and CMake
package files for programs that embed it: find_package(dipole), target dipole::core.")
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)      # a package is made of what was built, tests are no part of it
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_SYSTEM_NAME windows-x86_64)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION science)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS "g++, cmake (>= 3.16)")
  set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endif()
include(CPack)
