# What scripts share that run tests and count them. Sourced behind script.bash.

# measured FILE COMMAND...: runs a command, and keeps its processor time in the file, in seconds: those
# of the program and those of the system.
measured() {
  local TIMEFORMAT='%U %S' file=$1
  shift
  { time "$@" 2>&3; } 3>&2 2>"$file"
}

# count_cases LOG...: adds up the cases that programs of GoogleTest, and the scripts in tests/tool/, say
# have passed.
count_cases() {
  cat "$@" | sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.$/\1/p; s/^([0-9]+) passed, 0 failed.*/\1/p' |
    awk '{ n += $1 } END { print n + 0 }'
}

# tool_subjects_except SUBJECT...: what the scripts in tests/tool/ are named for, without these.
tool_subjects_except() {
  local file subject
  for file in tests/tool/*_test.bash; do
    subject=${file##*/}
    subject=${subject%_test.bash}
    [[ " $* " == *" $subject "* ]] || echo "$subject"
  done
}

# Cases that measure how time grows, or how much stack trees of 100,000 nodes take. Other cases do the
# same at a small size. In an emulator or under Valgrind these take up to a minute each.
costly_cases='CompareSize.Deep*:CompareSize.Wide*:Growth*:*GrowthOf*:*stay*cheap*:*linear*:*constant_time*'
costly_cases+=':*need*_no_stack:*time_that_grows*:*cost_of_reading*:*searches_siblings_once'
