# What configuring the project asks for, and what it says when that is missing.

. "$(dirname "$0")/project.bash"

# _configure ARGUMENT...: configures the project by its preset "install", in one folder for all of a case.
_configure() { keep cmake -S "$project" --preset install -B "$PWD/build" "$@"; }

_without() { printf -- '-DCMAKE_DISABLE_FIND_PACKAGE_%s=ON ' "$@"; }

what_is_installed_needs_no_test_library_and_takes_warnings_as_such() {
  # shellcheck disable=SC2046  # words
  _configure $(_without GTest benchmark)
  expect_status 0
  grep -q 'Werror' build/build.ninja && fail
  grep -q 'tools/xmldom' build/build.ninja || fail
  grep -qE 'tests|first_program' build/build.ninja && fail
  # shellcheck disable=SC2046
  _configure $(_without CLI11) -DXMLDOM_BUILD_TOOL=OFF
  expect_status 0
}

readme_installs_with_that_preset() {
  local block
  block=$("$project/tests/consume/readme-block" Installing sh)
  grep -qx 'cmake --preset install' <<< "$block" || fail
  grep -qx 'cmake --build --preset install' <<< "$block" || fail
  (cd "$project" && cmake --build --list-presets) | grep -q '"install"' || fail
}

# _expect_advice MISSING PACKAGE [OPTION]
_expect_advice() {
  rm -f build/CMakeCache.txt
  # shellcheck disable=SC2046
  _configure $(_without "$1")
  expect_status 1
  expect_part stderr "apt-get install $2"
  [ $# -eq 2 ] || expect_part stderr "-D$3=OFF"
}

what_is_missing_is_named_with_its_package_and_how_to_do_without() {
  _expect_advice EXPAT libexpat1-dev
  _expect_advice Libidn libidn-dev
  _expect_advice CLI11 libcli11-dev XMLDOM_BUILD_TOOL
  # shellcheck disable=SC2046
  _configure $(_without GTest) -DXMLDOM_BUILD_TOOL=OFF -DXMLDOM_BUILD_TESTS=ON
  expect_status 1
  expect_part stderr 'apt-get install libgtest-dev'
  expect_part stderr '-DXMLDOM_BUILD_TESTS=OFF'
}

run_cases
