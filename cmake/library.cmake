# SPDX-License-Identifier: Apache-2.0
#
# liboxaspecificsensorinfo: one shared object that needs nothing but libc.
# The objects are compiled once (oxa_objects); checks link them a second time against a stub of the imports.

file(GLOB OXA_LIBRARY_SOURCES CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/sdr/*.cpp
  ${CMAKE_SOURCE_DIR}/profiles/*.cpp
  ${CMAKE_SOURCE_DIR}/threshold/*.cpp
  ${CMAKE_SOURCE_DIR}/sel/*.cpp)

add_library(oxa_headers INTERFACE)
target_include_directories(oxa_headers INTERFACE ${CMAKE_SOURCE_DIR}/include)

add_library(oxa_objects OBJECT ${OXA_LIBRARY_SOURCES})
target_include_directories(oxa_objects PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(oxa_objects PUBLIC oxa_headers)
target_compile_options(oxa_objects PRIVATE
  -Wall -Wextra -Wconversion -Werror
  $<$<CONFIG:Release>:-Os>
  -fPIC -fno-ident -fvisibility=hidden -fno-exceptions -fno-rtti -fno-threadsafe-statics
  -fdata-sections) # and not -ffunction-sections: within one section a jump to a neighbour is two bytes long
if(NOT OXA_SANITIZE)
  target_compile_options(oxa_objects PRIVATE -fno-unwind-tables -fno-asynchronous-unwind-tables)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT OXA_SANITIZE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Stack frames and call graph of every unit, for the stack budget.  ccache does not keep these files.
    target_compile_options(oxa_objects PRIVATE -fcallgraph-info=su)
    set_target_properties(oxa_objects PROPERTIES CXX_COMPILER_LAUNCHER "")
  endif()
endif()

set(OXA_VERSION_SCRIPT ${CMAKE_SOURCE_DIR}/cmake/exports.map)
add_library(oxaspecificsensorinfo SHARED $<TARGET_OBJECTS:oxa_objects>)
target_link_libraries(oxaspecificsensorinfo PUBLIC oxa_headers)
set_target_properties(oxaspecificsensorinfo PROPERTIES
  LINKER_LANGUAGE C
  LINK_DEPENDS ${OXA_VERSION_SCRIPT})
target_link_options(oxaspecificsensorinfo PRIVATE -Wl,--version-script=${OXA_VERSION_SCRIPT})
if(NOT OXA_SANITIZE)
  target_link_options(oxaspecificsensorinfo PRIVATE
    -nostartfiles
    -Wl,--gc-sections,-z,relro,-z,now,-z,noexecstack,-Bsymbolic-functions,--hash-style=gnu,--no-undefined-version)
endif()
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

# What is read-only once the library is relocated has to end at a page.  The linker has it end there in the file
# as well and fills the file up in front of it, by up to a page.  Its own script with two lines changed lets the
# data follow the code and fills the page up in memory only.
function(oxa_close_gap_before_data target)
  execute_process(COMMAND ${CMAKE_C_COMPILER} -shared -nostdlib -Wl,-z,relro,-z,now,--verbose
    OUTPUT_VARIABLE script ERROR_QUIET)
  string(REGEX REPLACE ".*=====\n(.*)\n=====.*" "\\1" script "${script}")
  set(start ". = DATA_SEGMENT_ALIGN (CONSTANT (MAXPAGESIZE), CONSTANT (COMMONPAGESIZE));")
  set(end ". = DATA_SEGMENT_RELRO_END (0, .);")
  string(REPLACE "${start}" ". = ALIGN (CONSTANT (MAXPAGESIZE)) + (. & (CONSTANT (MAXPAGESIZE) - 1));
  . = DATA_SEGMENT_ALIGN (4, 4);" changed "${script}")
  string(REPLACE "${end}" ".relro_padding (TYPE = SHT_NOBITS) : { . = ALIGN (CONSTANT (COMMONPAGESIZE)); }
  ${end}" changed "${changed}")
  if(NOT changed MATCHES "relro_padding" OR NOT changed MATCHES "DATA_SEGMENT_ALIGN \\(4, 4\\)")
    message(STATUS "The linker's script is not the one that is known; the shared object keeps its gap")
    return()
  endif()
  set(path ${CMAKE_CURRENT_BINARY_DIR}/library.ld)
  file(CONFIGURE OUTPUT ${path} CONTENT "${changed}" @ONLY)
  target_link_options(${target} PRIVATE -Wl,-T,${path})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${path})
endfunction()
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "arm" AND NOT OXA_SANITIZE)
  oxa_close_gap_before_data(oxaspecificsensorinfo)
endif()
