# How scripts/coverage runs the tests, and what it tells of what gcovr has counted.

. "$(dirname "$0")/project.bash"

# A project whose tests are programs of this test, and whose counts are these: of a source with three
# lines and two branches, the last line is not reached and a branch is not taken.
_given_counts() {
  command -v python3 >/dev/null || skip 'there is no python3 here'
  command -v git >/dev/null || skip 'there is no git here'
  _given_a_copy
  mkdir -p copy/tests copy/build/release/tests copy/build/coverage copy/docs copy/xmldom/base
  cp -R "$project/tests/coverage" copy/tests
  printf '// A source.\nif (a)\n  b();\nc();\n' > copy/xmldom/base/A.cpp
  printf '<!-- coverage -->\n<!-- end -->\n' > copy/docs/hardening.md
  git -C copy init --quiet
  git -C copy -c user.name=A -c user.email=a@example.org commit --quiet --allow-empty --message 'first'
  _given_program dpkg-query 'echo installed'
  _given_program cmake ':'
  _given_program ldd "echo '$PWD/copy/build/coverage/xmldom/libxmldom.so.1'"
  local program
  for program in tests soak-tests allocation-tests; do
    _given_test "$program" 'echo "${0##*/} $GTEST_SHARD_INDEX $LD_LIBRARY_PATH" >> runs'
  done
  cat > counts.json <<'JSON'
{"files": [{"file": "xmldom/base/A.cpp", "lines": [
  {"line_number": 1, "count": 0, "branches": [], "gcovr/noncode": true},
  {"line_number": 2, "count": 2, "branches": [{"count": 2}, {"count": 0}], "gcovr/noncode": false},
  {"line_number": 3, "count": 2, "branches": [], "gcovr/noncode": false},
  {"line_number": 4, "count": 0, "branches": [], "gcovr/noncode": false}]}]}
JSON
  _given_program gcovr "cp '$PWD/counts.json' build/logs/coverage/counts.json"
}

# _given_test NAME TEXT: a test program of the release build.
_given_test() {
  printf '#!/bin/bash\n%s\n' "$2" > "copy/build/release/tests/xmldom-$1"
  chmod +x "copy/build/release/tests/xmldom-$1"
}

every_test_program_runs_in_two_shares_with_the_libraries_that_count() {
  _given_counts
  keep copy/scripts/coverage
  expect_status 0
  local folder=$PWD/copy/build/coverage/xmldom
  sort copy/runs > runs
  expect_file runs "$(printf "xmldom-%s $folder\n" 'allocation-tests 0' 'allocation-tests 1' \
    'soak-tests 0' 'soak-tests 1' 'tests 0' 'tests 1')\n"
}

what_is_not_reached_is_listed_by_the_text_of_the_line() {
  _given_counts
  keep copy/scripts/coverage
  expect_status 0
  expect_part stdout '1 lines that are not reached and 1 with branches that are not taken'
  expect_file copy/build/logs/coverage/missing.txt \
    'xmldom/base/A.cpp                1 of 2       if (a)\nxmldom/base/A.cpp                not reached  c();\n'
}

the_record_has_the_shares_of_each_folder() {
  _given_counts
  keep copy/scripts/coverage --record
  expect_status 0
  local row
  for row in '| `xmldom/base/` | 3 | 66.7 % | 2 | 50.0 % |' '| all | 3 | 66.7 % | 2 | 50.0 % |'; do
    grep -qxF "$row" copy/docs/hardening.md || { cat copy/docs/hardening.md; fail; }
  done
}

what_lies_below_the_floor_fails_and_is_not_recorded() {
  _given_counts
  _given_program gcovr 'echo "lines: 97.9%"; exit 2'
  keep copy/scripts/coverage --record
  expect_status 2
  expect_part stderr 'at least 98 % of the lines and 92 % of the branches'
  expect_file copy/docs/hardening.md '<!-- coverage -->\n<!-- end -->\n'
}

a_test_that_fails_in_either_share_fails() {
  local share
  for share in 0 1; do
    rm -rf copy
    _given_counts
    _given_test soak-tests "[ \$GTEST_SHARD_INDEX != $share ]"
    keep copy/scripts/coverage
    expect_status 1
    expect_part stderr 'coverage: run the tests'
  done
}

tests_that_run_with_other_libraries_fail() {
  _given_counts
  _given_program ldd 'echo /usr/lib/libxmldom.so.1'
  keep copy/scripts/coverage
  expect_status 1
  expect_part stderr 'the tests do not run with the libraries that count'
}

run_cases
