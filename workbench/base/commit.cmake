# SPDX-License-Identifier: GPL-3.0-or-later
#
# Writes the header that says which commit is being built.  Run at every build; the header is touched only when it says
# something else, so that one unit is compiled anew per commit and none otherwise.
#   -D SOURCE=... -D VERSION=... -D COMMIT=... (as given by a packager; empty: ask git) -D HEADER=...
if(NOT COMMIT)
  set(COMMIT unknown)
  find_program(GIT git)
  if(GIT AND EXISTS ${SOURCE}/.git) # not the tree that an unpacked archive lies in
    execute_process(COMMAND ${GIT} -C ${SOURCE} rev-parse --short=12 HEAD
      OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE failed)
    if(NOT failed)
      set(COMMIT ${commit})
      execute_process(COMMAND ${GIT} -C ${SOURCE} status --porcelain --untracked-files=no
        OUTPUT_VARIABLE changes ERROR_QUIET)
      if(changes)
        string(APPEND COMMIT " with changes")
      endif()
    endif()
  endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT [[// Written by workbench/base/commit.cmake.
#define OXA_VERSION "@VERSION@"
#define OXA_COMMIT "@COMMIT@"
]] @ONLY)
