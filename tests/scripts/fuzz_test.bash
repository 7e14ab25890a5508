# What scripts/fuzz runs, tells and writes down, with programs in place of the fuzzers.

. "$(dirname "$0")/project.bash"

# _given_fuzzers PRESET TEXT: a project whose fuzzers do what the text says. Nothing is built.
_given_fuzzers() {
  _given_a_copy
  _given_program dpkg-query 'echo installed'
  _given_program cmake 'true'
  _given_program llvm-profdata-14 'true'
  _given_program llvm-cov-14 'echo "./xmldom/a.cpp 9 9 9% 9 9 9% 40 10 75.00%"
    echo "./xmldom/b.h 9 9 9% 9 9 9% 10 0 100.00%"
    echo "TOTAL 9 9 9% 9 9 9% 50 10 80.00%"'
  mkdir -p "copy/build/$1/fuzz"
  local target
  for target in load path edit write compare pieces source; do
    mkdir -p "copy/fuzz/corpus/$target"
    printf '#!/bin/bash\n%s\n' "$2" >"copy/build/$1/fuzz/fuzz-$target"
    chmod +x "copy/build/$1/fuzz/fuzz-$target"
  done
}

_fuzzing='echo "${0##*/} $*" >>ran
  echo "#7 DONE cov: 123 ft: 9"
  echo "stat::number_of_executed_units: 4567"'

seven_fuzzers_run_for_the_time_that_is_said() {
  _given_fuzzers fuzz "$_fuzzing"
  keep copy/scripts/fuzz 20
  expect_status 0
  [ "$(grep -c 'max_total_time=20 ' copy/ran)" = 7 ] || { cat copy/ran; fail; }
  expect_part stdout '   source         4567 inputs in 20 s, 123 edges of code reached'
  rm copy/ran
  keep copy/scripts/fuzz edit source 3
  expect_status 0
  [ "$(cut -d ' ' -f 1 copy/ran | sort | xargs)" = 'fuzz-edit fuzz-source' ] || { cat copy/ran; fail; }
}

a_seed_is_handed_on_to_the_fuzzers() {
  _given_fuzzers fuzz "$_fuzzing"
  mkdir -p copy/build/fuzz/seeded/load
  : > copy/build/fuzz/seeded/load/learned
  keep copy/scripts/fuzz --seed 7 3
  expect_status 0
  [ ! -e copy/build/fuzz/seeded/load/learned ] || fail
  [ "$(grep -c -- '-seed=7 ' copy/ran)" = 7 ] || { cat copy/ran; fail; }
  grep -q -- 'build/fuzz/seeded/load fuzz/corpus/load$' copy/ran || { cat copy/ran; fail; }
  keep copy/scripts/fuzz --seed x 3
  expect_status 2
  expect_part stderr '--seed takes a number from 1 to 999999999: x'
}

a_fuzzer_that_finds_something_is_named_and_the_others_go_on() {
  _given_fuzzers fuzz "$_fuzzing
    [ \"\${0##*/}\" != fuzz-path ] || { echo 'Path.cpp:1: does not hold: x'; exit 77; }"
  keep copy/scripts/fuzz 20
  expect_status 1
  expect_part stdout 'fuzz-path found an input that breaks a promise (build/logs/fuzz/path.log):'
  expect_part stdout 'Path.cpp:1: does not hold: x'
  [ "$(grep -c '' copy/ran)" = 7 ] || { cat copy/ran; fail; }
}

coverage_is_that_of_all_inputs_without_a_run() {
  _given_fuzzers fuzz-coverage 'echo "${0##*/} $*" >>ran'
  mkdir -p copy/build/fuzz/corpus/load
  keep copy/scripts/fuzz --coverage
  expect_status 0
  grep -qx 'fuzz-load -runs=0 fuzz/corpus/load build/fuzz/corpus/load' copy/ran || { cat copy/ran; fail; }
  [ "$(grep -c 'max_total_time' copy/ran)" = 0 ] || fail
  expect_part stdout '10 of   40 lines not reached in xmldom/a.cpp'
  expect_part stdout '   80.00% of 50 lines of the library reached'
}

a_run_of_all_is_written_down_with_the_coverage() {
  _given_fuzzers fuzz "$_fuzzing"
  _given_fuzzers fuzz-coverage 'true'
  _given_program git 'echo 1234567'
  mkdir -p copy/docs
  given copy/docs/hardening.md 'before\n<!-- fuzz -->\nold\n<!-- end -->\nbehind\n'
  keep copy/scripts/fuzz --record 20
  expect_status 0
  grep -q '`scripts/fuzz --record 20`' copy/docs/hardening.md || fail
  grep -q '^| `load` | 1234567 | 4567 | 20 | 0 | 123 | 0 |$' copy/docs/hardening.md || fail
  grep -q '^| `source` | 1234567 | 4567 | 20 | 0 | 123 | 0 |$' copy/docs/hardening.md || fail
  grep -q '^All inputs together reach 80.00% of 50 lines of the library' copy/docs/hardening.md || fail
  grep -q 'old' copy/docs/hardening.md && fail
  grep -q '^behind$' copy/docs/hardening.md || fail
}

a_run_of_some_is_written_down_with_the_last_runs_of_the_others() {
  _given_fuzzers fuzz "$_fuzzing"
  _given_fuzzers fuzz-coverage 'true'
  _given_program git 'echo 1234567'
  mkdir -p copy/docs
  given copy/docs/hardening.md '<!-- fuzz -->\n<!-- end -->\n'
  keep copy/scripts/fuzz --record path 30
  expect_status 2
  expect_part stderr '--record: there is no earlier run of load'
  keep copy/scripts/fuzz 20
  _given_program git 'echo 89abcde'
  keep copy/scripts/fuzz --record path 30
  expect_status 0
  grep -q '^| `load` | 1234567 | 4567 | 20 | 0 | 123 | 0 |$' copy/docs/hardening.md || fail
  grep -q '^| `path` | 89abcde | 4567 | 30 | 0 | 123 | 0 |$' copy/docs/hardening.md || fail
}

run_cases
