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

# Lets a program of tests compile quickly, optimised as far as `level` says. The library and the tool
# are what is tested: optimised, their tests take twice as long to compile, and another two times as
# long with the address sanitizer in them. Without, it still watches the heap, and what the library
# does with a test's memory there. The thread sanitizer has to see the tests too.
function(xmldom_compile_quickly target level)
  target_compile_options(${target} PRIVATE ${level})
  if("address" IN_LIST XMLDOM_SANITIZE)
    target_compile_options(${target} PRIVATE -fno-sanitize=all -g1)
  endif()
  if(XMLDOM_SANITIZE MATCHES "address|memory|thread")
    target_compile_definitions(${target} PRIVATE XMLDOM_TESTS_OTHER_MALLOC)
  endif()
endfunction()

# Adds a program of GoogleTest cases for the library, of these sources, optimised as far as `level`
# says (xmldom_compile_quickly). They include each other by their paths in tests/.
function(xmldom_test_program target level)
  add_executable(${target} ${ARGN})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${target} PRIVATE
    xmldom::xmldom EXPAT::EXPAT GTest::gtest ${CMAKE_DL_LIBS})
  xmldom_compile_options(${target})
  xmldom_compile_quickly(${target} ${level})
  # Half of the time to compile a test goes into this header.
  target_precompile_headers(${target} PRIVATE <gtest/gtest.h>)
endfunction()

set(XMLDOM_TEST_SHARES "" CACHE STRING
  "How many tests share the cases of a GoogleTest program; empty: each case is a test of its own")

# Makes a test of each case of a GoogleTest program, or XMLDOM_TEST_SHARES tests that run a share of
# the cases each, which spares the start of a process for each case; further arguments are those of
# gtest_discover_tests. A program that needs an emulator always has shares, because a start costs
# more than most cases there. Random cases are fewer in it (tests/soak/Cases.h), and a program cannot
# start itself again, as a death test of the thread-safe style would.
function(xmldom_discover_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NO_PRETTY_VALUES" "TEST_PREFIX" "PROPERTIES")
  set(shares ${XMLDOM_TEST_SHARES})
  if(CMAKE_CROSSCOMPILING_EMULATOR)
    set(shares 8)
    set(options --gtest_death_test_style=fast)
    set(environment "XMLDOM_CASES=1000")
  endif()
  if(NOT shares)
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 ${ARGN})
    return()
  endif()
  foreach(share RANGE 1 ${shares})
    set(name ${target}.${share}_of_${shares})
    math(EXPR index "${share} - 1")
    add_test(NAME ${name} COMMAND ${target} ${options})
    set_tests_properties(${name} PROPERTIES ${arg_PROPERTIES}
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${shares};GTEST_SHARD_INDEX=${index};${environment}")
  endforeach()
endfunction()
