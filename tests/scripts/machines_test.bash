# The other machines that the tests run on.

. "$(dirname "$0")/project.bash"

_machines() { "$project/scripts/cross-test" --help | sed -nE 's/^  ([a-z0-9]+) +.*/\1/p'; }

# _expect_line FILE PATTERN: of grep -E.
_expect_line() {
  grep -qE "$2" "$project/$1" && return
  echo "  $1 has no line: $2"
  fail
}

each_machine_has_a_toolchain_its_packages_its_presets_and_its_place_in_the_pages() {
  [ "$(_machines | wc -l)" -ge 8 ] || fail
  local machine kind presets
  presets=$(cd "$project" && for kind in configure build test; do cmake --list-presets="$kind"; done)
  for machine in $(_machines); do
    _expect_line "cmake/toolchains/$machine.cmake" "^set\(debian_architecture $machine\)"
    _expect_line scripts/common/packages "^$machine: g\+\+-"
    _expect_line docs/platforms.md "^\| $machine \|"
    _expect_line docs/hardening.md "^<!-- $machine -->"
    [ "$(grep -cF "\"$machine\"" <<< "$presets")" -eq 3 ] || { echo "  a preset $machine is missing"; fail; }
  done
}

# A build that does nothing, for a machine whose libraries are there, and tests that all pass. The log
# is that of the last ctest, also of one that only lists the tests.
_given_tests_that_pass() {
  _given_program dpkg-query 'echo installed'
  _given_program cmake 'exit 0'
  _given_program ctest "case \" \$* \" in
    *' -N '*)
      echo 'Total Tests: 4'
      : > build/s390x/Testing/Temporary/LastTest.log
      ;;
    *)
      printf '100%% tests passed, 0 tests failed out of 3\n\t  2 - tool.faults (Skipped)\n'
      cp build/s390x/output build/s390x/Testing/Temporary/LastTest.log
      ;;
  esac"
  mkdir -p copy/build/sysroot/s390x copy/build/s390x/Testing/Temporary copy/docs
  echo 'libexpat1-dev libidn-dev libcli11-dev libgtest-dev libstdc++6' > copy/build/sysroot/s390x/.packages
  printf '%s\n' '[  SKIPPED ] Memory.Ends (1 ms)' '[  PASSED  ] 40 tests.' '[  SKIPPED ] 1 test, listed below:' \
    '[  SKIPPED ] Memory.Ends' 'SKIPPED limits: memory cannot be limited here' '2 passed, 0 failed, 1 skipped' \
    > copy/build/s390x/output
  printf '<!-- s390x -->\n<!-- end -->\n' > copy/docs/hardening.md
  git -C copy init --quiet
  git -C copy -c user.name=A -c user.email=a@example.org commit --quiet --allow-empty -m first
}

what_was_run_passed_and_was_skipped_is_told_and_recorded_where_asked() {
  _given_a_copy
  _given_tests_that_pass
  local counts='s390x: 2 of 4 tests passed, with 42 cases in them. Skipped cases: Memory.Ends, limits.'
  keep copy/scripts/cross-test s390x
  expect_status 0
  expect_part stdout "$counts"
  expect_file copy/docs/hardening.md '<!-- s390x -->\n<!-- end -->\n'
  keep copy/scripts/cross-test s390x --record
  expect_status 0
  grep -qxF "$counts" copy/docs/hardening.md || fail
  grep -qF '`scripts/cross-test s390x --record`' copy/docs/hardening.md || fail
}

# Tests have these names where an emulator runs them in shares (cmake/XmldomTests.cmake).
the_tests_of_the_libraries_are_all_run_for_the_libraries_alone() {
  _given_a_copy
  _given_tests_that_pass
  printf '%s\n' 'printf "%s\n" "${@: -1}" > pattern' >> programs/ctest
  _given_program cmake 'printf "%s\n" "$@" >> targets'
  keep copy/scripts/cross-test s390x --library
  expect_status 0
  local target name
  for target in $(sed -nE 's/^xmldom_discover_tests\(([a-z-]+).*/\1/p' "$project/tests/CMakeLists.txt"); do
    grep -qxF -- "$target" copy/targets || { echo "  $target is not built"; fail; }
    grep -qE -f copy/pattern <<< "$target.3_of_8" || { echo "  $target is left out"; fail; }
  done
  [ -n "${target:-}" ] || fail
  for name in xmldom-tool-tests.3_of_8 tool.edit fuzz.replay_load; do
    if grep -qE -f copy/pattern <<< "$name"; then echo "  $name is run"; fail; fi
  done
  grep -qE -f copy/pattern <<< allocation || fail
}

run_cases
