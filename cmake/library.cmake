# SPDX-License-Identifier: Apache-2.0
#
# liboxaspecificsensorinfo: one shared object that needs nothing but libc.  What it exports is what include/oxa
# declares: the headers' visibility decides.
# The objects are compiled once (oxa_objects); checks link them a second time against a stub of the imports.

file(GLOB_RECURSE OXA_LIBRARY_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/library/*.cpp)

add_library(oxa_headers INTERFACE)
target_include_directories(oxa_headers INTERFACE ${PROJECT_SOURCE_DIR}/include)

add_library(oxa_objects OBJECT ${OXA_LIBRARY_SOURCES})
target_include_directories(oxa_objects PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(oxa_objects PUBLIC oxa_headers)
target_compile_options(oxa_objects PRIVATE
  -Wall -Wextra -Wconversion -Wmissing-declarations
  $<$<BOOL:${PROJECT_IS_TOP_LEVEL}>:-Werror> # within another project its compiler may be one that nobody tried
  $<$<CONFIG:Release>:-Os>
  -fPIC -fno-ident -fvisibility=hidden -fno-exceptions -fno-rtti -fno-threadsafe-statics
  -fdata-sections) # and not -ffunction-sections: within one section a jump to a neighbour is two bytes long
# Said, whatever a compiler or a packager takes for granted; what each would cost: docs/hardening.md.
target_compile_options(oxa_objects PRIVATE
  -Wformat-security -fno-stack-protector -fno-stack-clash-protection -U_FORTIFY_SOURCE)
if(NOT OXA_SANITIZE)
  target_compile_options(oxa_objects PRIVATE -fno-unwind-tables -fno-asynchronous-unwind-tables)
endif()
if(OXA_COVERAGE)
  target_compile_options(oxa_objects PRIVATE ${OXA_COVERAGE})
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT OXA_SANITIZE)
  # With -g as well the object does not tell where it was built.  The last of them that fits is taken.
  target_compile_options(oxa_objects PRIVATE
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Stack frames and call graph of every unit, for the stack budget.  ccache does not keep these files.
    target_compile_options(oxa_objects PRIVATE -fcallgraph-info=su)
    set_target_properties(oxa_objects PROPERTIES CXX_COMPILER_LAUNCHER "")
  endif()
endif()

add_library(oxaspecificsensorinfo SHARED $<TARGET_OBJECTS:oxa_objects>)
add_library(oxa::specificsensorinfo ALIAS oxaspecificsensorinfo)
target_include_directories(oxaspecificsensorinfo INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
# The platform's functions are found when a program starts; a linker that looks for them all the same must not fail.
target_link_options(oxaspecificsensorinfo INTERFACE LINKER:--unresolved-symbols=ignore-in-shared-libs)
# A program is linked with the .so and asks for the .so.1 from then on.
set_target_properties(oxaspecificsensorinfo PROPERTIES
  LINKER_LANGUAGE C
  EXPORT_NAME specificsensorinfo
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})
if(OXA_COVERAGE)
  # The counters are set up when the object is loaded and written when the program ends: it has start files.
  target_link_options(oxaspecificsensorinfo PRIVATE -fprofile-instr-generate)
elseif(NOT OXA_SANITIZE)
  target_link_options(oxaspecificsensorinfo PRIVATE
    -nostartfiles
    -Wl,--gc-sections,-z,relro,-z,now,-z,noexecstack,-Bsymbolic-functions,--hash-style=gnu)
endif()
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
