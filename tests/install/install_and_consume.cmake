# Script run by CTest: install, then build the consumer both ways and run it.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  message(STATUS "${out}")
endfunction()

file(REMOVE_RECURSE ${PREFIX} ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX})

# The strip helper: installed beside the header, usable from C++17 with the library.
file(GLOB_RECURSE installed_library ${PREFIX}/lib*/libpxkcc.so)
list(GET installed_library 0 installed_library)
get_filename_component(installed_libdir ${installed_library} DIRECTORY)
file(MAKE_DIRECTORY ${WORK_DIR}/strips)
run(${CXX} -std=c++17 -I${PREFIX}/include ${CONSUMER_DIR}/strips_consumer.cpp -L${installed_libdir} -lpxkcc
    -Wl,-rpath,${installed_libdir} -pthread -o ${WORK_DIR}/strips/consumer)
run(${WORK_DIR}/strips/consumer)

# pxkconv, where the build has it: installed, and finding the installed library.
if(WITH_PXKCONV)
  run(${PREFIX}/bin/pxkconv --version)
  execute_process(COMMAND ${PREFIX}/bin/pxkconv --list OUTPUT_VARIABLE listed RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0 OR NOT listed MATCHES "pxkiRGBToYCbCr_8u_C3R")
    message(FATAL_ERROR "the installed pxkconv does not list the exports")
  endif()
endif()

# find_package(pxkcc)
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake -DCMAKE_PREFIX_PATH=${PREFIX}
    -DCMAKE_BUILD_RPATH=${PREFIX}/lib)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake)
run(${WORK_DIR}/cmake/consumer ${TARGET_CODE})

# pkg-config
find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
  file(GLOB pcdirs ${PREFIX}/lib*/pkgconfig ${PREFIX}/lib/*/pkgconfig)
  string(REPLACE ";" ":" pcpath "${pcdirs}")
  set(ENV{PKG_CONFIG_PATH} "${pcpath}")
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs pxkcc OUTPUT_VARIABLE flags RESULT_VARIABLE rc
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "pkg-config does not find pxkcc in ${pcpath}")
  endif()
  separate_arguments(flags UNIX_COMMAND "${flags}")
  foreach(f IN LISTS flags)
    if(f MATCHES "^-L(.*)")
      set(libdir ${CMAKE_MATCH_1})
    endif()
  endforeach()
  file(MAKE_DIRECTORY ${WORK_DIR}/pc)
  run(${CXX} -x c ${CONSUMER_DIR}/consumer.c ${flags} -Wl,-rpath,${libdir} -o ${WORK_DIR}/pc/consumer)
  run(${WORK_DIR}/pc/consumer ${TARGET_CODE})
else()
  message(STATUS "pkg-config not found: only the CMake package was tried")
endif()
