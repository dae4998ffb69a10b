# SPDX-License-Identifier: Apache-2.0
# The BMC's processor: 32-bit ARM Linux, run on the desk by qemu-arm.  The environment of an SDK (Yocto, Buildroot) goes
# before all that is said here: its own toolchain file, its compilers, its root.  CFLAGS and CXXFLAGS are CMake's to read.
if(DEFINED ENV{CMAKE_TOOLCHAIN_FILE} AND NOT "$ENV{CMAKE_TOOLCHAIN_FILE}" STREQUAL CMAKE_CURRENT_LIST_FILE)
  include($ENV{CMAKE_TOOLCHAIN_FILE})
  return()
endif()

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)

# CC and CXX count where they compile for ARM: on a desk they are mostly the desk's own.
function(oxa_choose_compiler language variable usual)
  if(CMAKE_${language}_COMPILER)
    return() # settled when this build folder was new
  endif()
  separate_arguments(given UNIX_COMMAND "$ENV{${variable}}")
  if(given)
    execute_process(COMMAND ${given} -dumpmachine OUTPUT_VARIABLE machine ERROR_QUIET)
    if(machine MATCHES "^arm")
      return() # CMake takes it from the environment
    endif()
  endif()
  set(CMAKE_${language}_COMPILER ${usual} PARENT_SCOPE)
endfunction()
oxa_choose_compiler(C CC arm-linux-gnueabihf-gcc)
oxa_choose_compiler(CXX CXX arm-linux-gnueabihf-g++)

if(DEFINED ENV{SDKTARGETSYSROOT})
  set(CMAKE_SYSROOT $ENV{SDKTARGETSYSROOT})
  set(root ${CMAKE_SYSROOT})
else()
  set(root /usr/arm-linux-gnueabihf)
endif()
list(APPEND CMAKE_FIND_ROOT_PATH ${root})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;${root})
if(OXA_SANITIZE)
  # The leak check traces its own process, which qemu-arm does not let it.  Its switch is read from the environment of
  # qemu-arm, not from that of the program within.
  list(PREPEND CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/env ASAN_OPTIONS=detect_leaks=0)
endif()
