# Installation: the shared library, the header, a pkg-config file and a CMake
# package config so that users can `find_package(pxkcc)`.
include(CMakePackageConfigHelpers)

install(TARGETS pxkcc EXPORT pxkccTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/pxkcc.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT pxkccTargets NAMESPACE pxkcc:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/pxkcc)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/pxkccConfig.cmake.in
  ${PROJECT_BINARY_DIR}/pxkccConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/pxkcc)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/pxkccConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/pxkccConfig.cmake ${PROJECT_BINARY_DIR}/pxkccConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/pxkcc)

# The pkg-config file finds its prefix from its own place, so that an install with
# `cmake --install --prefix` elsewhere stays usable.
file(RELATIVE_PATH PXKCC_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" PXKCC_PC_TO_PREFIX "${PXKCC_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/pxkcc.pc.in ${PROJECT_BINARY_DIR}/pxkcc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/pxkcc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The strip helper (header-only, C++17) beside the header, and pxkconv where it is
# built; pxkconv finds the library in the prefix's library directory.
install(FILES ${PROJECT_SOURCE_DIR}/include/pxkcc_strips.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(TARGET pxkconv)
  set_target_properties(pxkconv PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS pxkconv RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
