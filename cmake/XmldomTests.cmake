# Tests that run programs of this build, also those for another architecture.
#
# Such a build says in CMAKE_CROSSCOMPILING_EMULATOR what runs its programs. CMake itself puts that
# in front only where the command of a test is a target.

include(GoogleTest)

# Sets `result` to what a script can run as the program of `target`: the program, or a script of
# the same name that hands it to the emulator.
function(xmldom_runnable result target)
  if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
    set(${result} $<TARGET_FILE:${target}> PARENT_SCOPE)
    return()
  endif()
  set(launcher ${CMAKE_CURRENT_BINARY_DIR}/emulated/$<TARGET_FILE_NAME:${target}>)
  list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "' '" emulator)
  file(GENERATE OUTPUT ${launcher}
    CONTENT "#!/bin/sh\nexec '${emulator}' '$<TARGET_FILE:${target}>' \"$@\"\n"
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
      WORLD_EXECUTE)
  set(${result} ${launcher} PARENT_SCOPE)
endfunction()

# Makes a test of each case of a GoogleTest program; further arguments are those of
# gtest_discover_tests. In an emulator a start costs more than most cases, so that a test is a share
# of them there, and a program cannot start itself again, as a death test of the thread-safe style
# would. Random cases are fewer there (tests/soak/Cases.h).
function(xmldom_discover_tests target)
  if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 ${ARGN})
    return()
  endif()
  set(shares 8)
  foreach(share RANGE 1 ${shares})
    math(EXPR index "${share} - 1")
    add_test(NAME ${target}.${share}_of_${shares}
      COMMAND ${target} --gtest_death_test_style=fast)
    set_tests_properties(${target}.${share}_of_${shares} PROPERTIES
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shares};GTEST_SHARD_INDEX=${index};XMLDOM_CASES=1000")
  endforeach()
endfunction()
