# SPDX-License-Identifier: Apache-2.0
#
# What other programs get, three ways: installed, from this build folder, and by add_subdirectory (the same target names).
# Components: runtime (the shared object), dev (headers, packages for CMake and pkg-config), capture (the recorder), tools
# (simulated platform, workbench, boards).
include(CMakePackageConfigHelpers)

set(package oxaspecificsensorinfo)
set(oxa_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
set(oxa_tools_dir oxa-sensors) # below lib and share

write_basic_package_version_file(${PROJECT_BINARY_DIR}/${package}-config-version.cmake COMPATIBILITY SameMajorVersion)
configure_file(${PROJECT_SOURCE_DIR}/cmake/${package}-config.cmake ${PROJECT_BINARY_DIR} COPYONLY)

# ---- from this build folder
if(PROJECT_IS_TOP_LEVEL)
  export(TARGETS oxaspecificsensorinfo NAMESPACE oxa:: FILE ${PROJECT_BINARY_DIR}/${package}-library.cmake)
  if(TARGET oxasimulator)
    export(TARGETS oxasimulator NAMESPACE oxa:: FILE ${PROJECT_BINARY_DIR}/${package}-simulator.cmake)
  endif()
  set(prefix ${PROJECT_BINARY_DIR})
  set(libdir ${PROJECT_BINARY_DIR})
  set(includedir ${PROJECT_SOURCE_DIR}/include)
  foreach(name ${package} oxasimulator) # of two, pkg-config takes the one that is not installed
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}-uninstalled.pc @ONLY)
  endforeach()
endif()

# Where the installed oxa-sensors finds libraries and plug-in, from its own place.
file(RELATIVE_PATH oxa_to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
if(TARGET oxa-sensors)
  target_compile_definitions(oxa-sensors PRIVATE OXA_INSTALLED_PLUGINS="${oxa_to_libraries}/${oxa_tools_dir}")
  set_target_properties(oxa-sensors PROPERTIES INSTALL_RPATH $ORIGIN/${oxa_to_libraries})
endif()

if(NOT OXA_INSTALL)
  return()
endif()

# The prefix is known when it is installed.
function(oxa_install_pkgconfig name component)
  cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE libdir)
  cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY "\${prefix}" OUTPUT_VARIABLE includedir)
  install(CODE "
    set(prefix \"\${CMAKE_INSTALL_PREFIX}\")
    set(libdir [[${libdir}]])
    set(includedir [[${includedir}]])
    set(PROJECT_VERSION ${PROJECT_VERSION})
    configure_file([[${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in]] [[${PROJECT_BINARY_DIR}/installed/${name}.pc]] @ONLY)"
    COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/installed/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT ${component})
endfunction()

# ---- runtime: with the plain name, which programs ask for that were linked before the name had a number
install(TARGETS oxaspecificsensorinfo EXPORT oxa_library
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime)

# ---- dev
install(DIRECTORY include/oxa DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev
  FILES_MATCHING PATTERN *.h PATTERN simulator.h EXCLUDE)
install(EXPORT oxa_library NAMESPACE oxa:: FILE ${package}-library.cmake DESTINATION ${oxa_cmake_dir} COMPONENT dev)
install(FILES
  ${PROJECT_BINARY_DIR}/${package}-config.cmake ${PROJECT_BINARY_DIR}/${package}-config-version.cmake
  DESTINATION ${oxa_cmake_dir} COMPONENT dev)
oxa_install_pkgconfig(${package} dev)

# ---- capture: the recorder, for a BMC or a desk
if(TARGET oxacapture)
  install(TARGETS oxacapture LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT capture)
endif()

# ---- tools
if(TARGET oxasimulator)
  install(TARGETS oxasimulator EXPORT oxa_simulator
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT tools)
  set_target_properties(oxasimulator PROPERTIES INSTALL_RPATH $ORIGIN)
  install(EXPORT oxa_simulator NAMESPACE oxa:: FILE ${package}-simulator.cmake DESTINATION ${oxa_cmake_dir}
    COMPONENT tools)
  install(FILES include/oxa/simulator.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/oxa COMPONENT tools)
  install(DIRECTORY boards scenarios DESTINATION ${CMAKE_INSTALL_DATADIR}/${oxa_tools_dir} COMPONENT tools)
  oxa_install_pkgconfig(oxasimulator tools)
endif()
if(TARGET oxa-sensors)
  install(TARGETS oxa-sensors RUNTIME COMPONENT tools)
endif()
if(TARGET oxa_ipmi_sim_plugin)
  install(TARGETS oxa_ipmi_sim_plugin LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${oxa_tools_dir} COMPONENT tools)
endif()

# Files that the build makes for oxa-sensors, each appended to a list by whoever makes it, for instance
#   set_property(GLOBAL APPEND PROPERTY OXA_MAN_PAGES ${CMAKE_CURRENT_BINARY_DIR}/oxa-sensors.1)
function(oxa_install_listed property folder)
  get_property(files GLOBAL PROPERTY ${property})
  install(FILES ${files} DESTINATION ${folder} COMPONENT tools)
endfunction()
oxa_install_listed(OXA_MAN_PAGES ${CMAKE_INSTALL_MANDIR}/man1)
oxa_install_listed(OXA_SCHEMAS ${CMAKE_INSTALL_DATADIR}/${oxa_tools_dir}/schema)
oxa_install_listed(OXA_BASH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
oxa_install_listed(OXA_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
oxa_install_listed(OXA_FISH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
