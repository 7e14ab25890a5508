# What the scripts answer to --help and to arguments that they do not know.

. "$(dirname "$0")/project.bash"

every_script_answers_help_with_what_it_does() {
  _given_a_copy
  _given_no_packages
  local script
  for script in $scripts; do
    keep "copy/scripts/$script" --help
    expect_status 0
    expect_text stderr ''
    head -n 1 "$scratch/stdout" | grep -q "^${script}[ :]" || { echo "  $script --help begins otherwise"; fail; }
    grep -q '\. *$' "$scratch/stdout" || { echo "  $script --help says nothing"; fail; }
  done
  expect_names . copy programs
  expect_names copy scripts
}

every_script_refuses_what_it_does_not_know_before_it_installs_anything() {
  _given_a_copy
  _given_no_packages
  local script
  for script in $scripts; do
    keep "copy/scripts/$script" --unknown
    expect_status 2
    expect_part stderr "$script: "
    expect_part stderr "usage: scripts/$script"
  done
  expect_names . copy programs
  expect_names copy scripts
}

the_script_in_python_does_both_too() {
  command -v python3 >/dev/null || skip 'there is no python3 here'
  keep "$project/scripts/try-edits" --help
  expect_status 0
  expect_text stderr ''
  expect_part stdout 'usage: try-edits'
  keep "$project/scripts/try-edits" --unknown
  expect_status 2
  expect_text stdout ''
  expect_part stderr 'usage: try-edits'
}

every_script_begins_as_all_do_and_is_named_in_README() {
  local script
  for script in $scripts; do
    grep -q '/common/script.bash"$' "$project/scripts/$script" ||
      { echo "  $script begins otherwise"; fail; }
  done
  for script in "$project"/scripts/*; do
    [ -f "$script" ] || continue
    grep '^| `scripts/`' "$project/README.md" | grep -qF "\`${script##*/}\`" ||
      { echo "  README.md does not name ${script##*/}"; fail; }
  done
}

names_of_presets_and_machines_are_checked() {
  _given_a_copy
  _given_no_packages
  local line
  for line in 'test relaese' 'cross-test armv9' 'cross-test --library' \
      'cross-test --library --record armhf' 'soak 1 relaese' 'failing-allocations relaese' \
      'failing-allocations dev asan' 'growth a b' 'fuzz lod' 'fuzz --coverage load' 'fuzz 1 load' \
      'fuzz --record --coverage' 'fuzz --record load' 'fuzz --record --seed 1' 'fuzz 0' \
      'sanitizers asna' 'valgrind case' 'coverage release' 'hostile a' 'check --record' \
      'check --static a' 'soak --record' 'try-tool --record --runs' 'mutants --count' \
      'mutants --seed x' 'mutants --room nowhere' 'mutants --again' 'mutants --continue' \
      'bench --part no' 'bench --filter' 'packages a b' 'install-packages a;b'; do
    # shellcheck disable=SC2086  # words
    keep copy/scripts/$line
    expect_status 2
  done
  expect_names . copy programs
}

a_script_is_found_from_everywhere() {
  _given_script here 'pwd; echo "$caller_folder"; from_caller a/b; from_caller /c'
  mkdir elsewhere
  cd elsewhere || fail
  keep ../copy/scripts/here
  expect 0 "$(cd ../copy && pwd)\n$PWD\n$PWD/a/b\n/c\n" ''
}

run_cases
