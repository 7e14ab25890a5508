# What scripts print when something fails, and while something takes long.

. "$(dirname "$0")/project.bash"

# Ten lines at the end say it; no line of them is of anything else.
_expect_report() {
  local lines
  lines=$(grep -c '' "$scratch/stderr")
  [ "$lines" -le 10 ] || { echo "  a report of $lines lines"; fail; }
  head -n 1 "$scratch/stderr" | grep -q '^== FAILED: ' || { cat "$scratch/stderr"; fail; }
}

a_step_that_fails_is_named_with_its_log_and_its_command() {
  _given_script broken 'step "the second half" bash -c "seq 100; exit 3"; echo not reached'
  keep copy/scripts/broken 'a word'
  expect_status 3
  _expect_report
  expect_part stderr '== FAILED: scripts/broken a\ word: the second half (exit status 3)'
  expect_part stderr '   again: bash -c seq\ 100\;\ exit\ 3'
  expect_part stderr '   log: build/logs/broken/the-second-half.log'
  expect_part stderr '   | 100'
  expect_file copy/build/logs/broken/the-second-half.log "$(seq 100)\n"
  expect_text stdout "== the second half\n$(seq 100)\n"
}

a_quiet_step_that_fails_shows_the_error_in_its_log() {
  _given_script broken 'work() { echo "a.cpp:1:2: error: no such thing"; seq 100; false; echo no; }
    quiet_step "the work" work'
  keep copy/scripts/broken
  expect_status 1
  expect_text stdout '== the work\n'
  _expect_report
  expect_part stderr '   again: scripts/broken'
  expect_part stderr '   | a.cpp:1:2: error: no such thing'
}

the_tests_that_failed_are_named() {
  _given_script broken 'step test bash -c "seq 9; echo error: x; echo \"The following tests FAILED:\";
    echo \"  3 - docs.links (Failed)\"; exit 8"'
  keep copy/scripts/broken
  expect_status 8
  expect_part stderr '   |   3 - docs.links (Failed)'
}

a_command_that_fails_outside_of_a_step_is_named() {
  _given_script broken 'ls missing; echo not reached'
  keep copy/scripts/broken
  expect_status 2
  expect_text stdout ''
  expect_part stderr 'line 5: ls missing (exit status 2)'
}

a_script_in_a_script_reports_alone_and_last() {
  _given_script inner 'step one true; step two false'
  _given_script outer 'at_exit "echo left"; scripts/inner "$@"; echo not reached'
  keep copy/scripts/outer 7
  expect_status 1
  expect_text stdout '== one\n== two\nleft\n'
  _expect_report
  expect_part stderr '== FAILED: scripts/inner 7: two (exit status 1)'
}

what_is_put_up_with_is_not_reported() {
  _given_script inner 'step two false'
  _given_script outer 'scripts/inner || echo "never mind"; step three bash -c "exit 4"'
  keep copy/scripts/outer
  expect_status 4
  expect_part stderr '== FAILED: scripts/outer: three (exit status 4)'
  _given_script outer 'scripts/inner || echo "never mind"'
  keep copy/scripts/outer
  expect 0 '== two\nnever mind\n' ''
}

a_quiet_step_says_meanwhile_how_far_it_is() {
  _given_script slow 'progress_seconds=0.1; started=.
    quiet_step work bash -c "echo first; echo second; until grep -q second said; do sleep 0.1; done"'
  keep bash -c 'cd copy && touch said && scripts/slow > said'
  expect 0 '' ''
  grep -q '^   [0-9]* s: second$' copy/said || { cat copy/said; fail; }
}

run_cases
