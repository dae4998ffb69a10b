# SPDX-License-Identifier: Apache-2.0
#
# find_package(oxaspecificsensorinfo 1) gives oxa::specificsensorinfo; where the tools are installed also oxa::simulator,
# which a program can insist on: find_package(oxaspecificsensorinfo 1 COMPONENTS simulator).
include(${CMAKE_CURRENT_LIST_DIR}/oxaspecificsensorinfo-library.cmake)
set(oxaspecificsensorinfo_library_FOUND TRUE)
include(${CMAKE_CURRENT_LIST_DIR}/oxaspecificsensorinfo-simulator.cmake OPTIONAL
  RESULT_VARIABLE oxaspecificsensorinfo_simulator_FOUND)

foreach(component ${oxaspecificsensorinfo_FIND_COMPONENTS})
  if(oxaspecificsensorinfo_FIND_REQUIRED_${component} AND NOT oxaspecificsensorinfo_${component}_FOUND)
    set(oxaspecificsensorinfo_FOUND FALSE)
    set(oxaspecificsensorinfo_NOT_FOUND_MESSAGE "its component '${component}' is not installed")
  endif()
endforeach()
