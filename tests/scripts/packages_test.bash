# Installing what is missing, and the packages that are made.

. "$(dirname "$0")/project.bash"

what_is_missing_is_installed_and_nothing_else() {
  _given_a_copy
  _given_no_packages
  _given_program dpkg-query '[ "${!#}" = first ] && echo installed'
  _given_program id 'echo 0'
  keep copy/scripts/install-packages first second third
  expect_status 0
  grep -q ' install .* second third$' changes || { cat changes; fail; }
  keep copy/scripts/install-packages first
  expect 0 '' ''
}

without_root_the_missing_packages_and_the_command_are_named() {
  _given_a_copy
  _given_no_packages
  _given_program id 'echo 1000'
  _given_program sudo 'exit 1'
  keep copy/scripts/install-packages first second
  expect_status 1
  expect_text stdout ''
  expect_text stderr "== FAILED: install-packages: 2 packages are missing, which this user may not install
   as root: apt-get update && apt-get install first second\n"
  expect_names . copy programs
}

without_root_the_two_commands_name_all_that_they_need() {
  _given_a_copy
  _given_no_packages
  _given_program id 'echo 1000'
  _given_program sudo 'exit 1'
  keep copy/scripts/demo
  expect_status 1
  expect_part stderr 'as root: apt-get update && apt-get install g++ cmake ninja-build'
  keep copy/scripts/test
  expect_status 1
  expect_part stderr ' libgtest-dev '
  expect_part stderr ' clang-14'
  expect_part stderr ' qemu-user '
  expect_part stderr ' mmdebstrap '
}

# Programs that build nothing and pack three packages.
_given_no_build() {
  _given_program dpkg-query 'echo installed'
  _given_program dpkg-buildflags 'echo export CPPFLAGS= CXXFLAGS='
  _given_program cmake 'mkdir -p build/package/build; exit'
  _given_program cpack 'touch libxmldom1_2.deb xmldom_2.deb xmldom-dbgsym_2.ddeb'
}

packages_come_into_the_folder_that_the_caller_means_and_leave_others_there() {
  _given_a_copy
  _given_no_build
  mkdir mine
  touch mine/other.deb
  keep copy/scripts/packages mine
  expect_status 0
  expect_text stderr ''
  expect_names mine libxmldom1_2.deb other.deb xmldom-dbgsym_2.deb xmldom_2.deb
}

without_a_folder_packages_of_an_earlier_run_are_replaced() {
  _given_a_copy
  _given_no_build
  mkdir -p copy/build/package
  touch copy/build/package/libxmldom1_1.deb
  keep copy/scripts/packages
  expect_status 0
  expect_names copy/build/package build libxmldom1_2.deb xmldom-dbgsym_2.deb xmldom_2.deb
}

readme_names_the_packages_that_scripts_install() {
  local list packages
  for list in library tool tests clang libc++ coverage armhf packages clean-root; do
    packages=$(sed -n "s/^$list: //p" "$project/scripts/common/packages")
    [ -n "$packages" ] && grep -qF "\`$packages\`" "$project/README.md" && continue
    echo "  README.md does not name: $packages"
    fail
  done
}

a_preset_of_clang_needs_the_packages_of_clang() {
  _given_a_copy
  _given_no_packages
  _given_program id 'echo 1000'
  _given_program sudo 'exit 1'
  local script
  for script in 'test clang' 'soak 1 clang' 'failing-allocations clang'; do
    # shellcheck disable=SC2086  # words
    keep copy/scripts/$script
    expect_status 1
    expect_part stderr ' clang-14'
  done
}

every_list_that_a_script_asks_for_is_there() {
  local name names
  names=$(cd "$project/scripts" && sed -nE 's/^ *install_for ([^"|]*).*/\1/p; s/.*lists\+?=\((.*)\).*/\1/p' $scripts common/script.bash |
    tr ' ' '\n' | sort -u | sed '/^$/d')
  [ "$(wc -l <<< "$names")" -gt 10 ] || fail
  for name in $names; do
    grep -q "^$name: " "$project/scripts/common/packages" || { echo "  no list $name"; fail; }
  done
}

run_cases
