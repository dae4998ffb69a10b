# SPDX-License-Identifier: Apache-2.0
# The BMC's processor: 32-bit ARM Linux, run on the desk by qemu-arm.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;/usr/arm-linux-gnueabihf)
if(OXA_SANITIZE)
  # The leak check traces its own process, which qemu-arm does not let it.  Its switch is read from the environment of
  # qemu-arm, not from that of the program within.
  list(PREPEND CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/env ASAN_OPTIONS=detect_leaks=0)
endif()
