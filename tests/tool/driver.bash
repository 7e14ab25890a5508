# Runs the tool as a command and compares what it does.
#
# A file of cases is run as `bash FILE TOOL [CASE]...`. It sources this, defines its cases as
# functions and ends with run_cases. Each case runs in a shell and an empty folder of its own;
# functions whose names begin with '_' are no cases.

set -u

if [ $# -lt 1 ] || [ ! -x "$1" ]; then
  echo "usage: $0 TOOL [CASE]..." >&2
  exit 2
fi

tool=$(realpath "$1")
shift
wanted=("$@")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

export LC_ALL=C TERM=xterm
unset NO_COLOR

# By about how much the tool is slower than a plain build: under Valgrind and in an emulator, which a
# script starts that stands for it, and under the address sanitizer.
slowness=1
if grep -qa '^exec valgrind ' "$tool"; then slowness=30; fi
if grep -qa "^exec 'qemu-" "$tool"; then slowness=20; fi
if grep -qa __asan_init "$tool"; then slowness=5; fi

# scaled COUNT: as many of something large as there is time for.
scaled() { echo $(($1 / slowness)); }

# given FILE TEXT: makes a file; escapes in the text are those of printf %b.
given() { printf '%b' "$2" > "$1"; }

# run ARGUMENT...: runs the tool and keeps its exit status, standard output and standard error.
run() { keep "$tool" "$@"; }

# keep COMMAND...: does so with any command.
keep() {
  "$@" > "$scratch/stdout" 2> "$scratch/stderr"
  echo $? > "$scratch/status"
}

# run_shell SCRIPT: does so with a line of bash, in which "$tool" is the tool.
run_shell() { keep env tool="$tool" bash -c "$1"; }

# expect STATUS STDOUT STDERR: compares what the last run did, whole; escapes as for given.
expect() {
  expect_status "$1"
  expect_text stdout "$2"
  expect_text stderr "$3"
}

expect_status() {
  local status
  status=$(cat "$scratch/status")
  [ "$status" = "$1" ] && return
  echo "  exit status $status, not $1"
  sed 's/^/    stderr: /' "$scratch/stderr"
  fail
}

# expect_text stdout|stderr TEXT
expect_text() {
  printf '%b' "$2" > "$scratch/expected"
  cmp -s "$scratch/expected" "$scratch/$1" && return
  echo "  $1 is '-' and should be '+':"
  diff -u --text "$scratch/$1" "$scratch/expected" | tail -n +3 | cat -v | sed 's/^/    /'
  fail
}

# expect_part stdout|stderr TEXT: for output that is laid out elsewhere, such as help.
expect_part() {
  grep -qF -- "$2" "$scratch/$1" && return
  echo "  $1 does not hold: $2"
  cat -v "$scratch/$1" | sed 's/^/    /'
  fail
}

# expect_file FILE TEXT: the file holds the text, whole; escapes as for given.
expect_file() {
  printf '%b' "$2" > "$scratch/expected"
  cmp "$scratch/expected" "$1" && return
  fail
}

# expect_names FOLDER NAME...: the folder holds these, in the order of their names, and nothing else.
expect_names() {
  [ "$(ls -A "$1")" = "$(printf '%s\n' "${@:2}")" ] && return
  ls -lA "$1"
  fail
}

# tool_folder: a folder in which the tool has its name.
tool_folder() {
  mkdir -p "$scratch/bin"
  ln -sf "$tool" "$scratch/bin/xmldom"
  echo "$scratch/bin"
}

# commands_shown: the commands that the tool's help lists, a line each.
commands_shown() { "$tool" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p'; }

# options_shown: the options that help texts on standard input show, a line each, each once.
options_shown() { grep -oE '^  -[^ ]+' | tr -d ' ' | tr ',' '\n' | sort -u; }

fail() { touch "$scratch/failed"; }

# skip REASON: ends a case that cannot be run here, and says so.
skip() {
  echo "$1" > "$scratch/skipped"
  exit 0
}

run_cases() {
  local case passed=0 failed=0 skipped=0
  for case in $(compgen -A function | grep -vxF "$own_functions" | grep -v '^_'); do
    if [ ${#wanted[@]} -gt 0 ] && [[ " ${wanted[*]} " != *" $case "* ]]; then continue; fi
    rm -rf "${scratch:?}"/*
    mkdir "$scratch/here"
    (cd "$scratch/here" && "$case") < /dev/null || fail
    if [ -e "$scratch/failed" ]; then
      echo "FAILED $case"
      failed=$((failed + 1))
    elif [ -e "$scratch/skipped" ]; then
      echo "SKIPPED $case: $(cat "$scratch/skipped")"
      skipped=$((skipped + 1))
    else
      passed=$((passed + 1))
    fi
  done
  echo "$passed passed, $failed failed, $skipped skipped"
  [ "$failed" -eq 0 ] || return 1
  # A run without any case is a mistake; one in which all are skipped tells ctest so.
  [ "$passed" -gt 0 ] || { [ "$skipped" -gt 0 ] && return 77; }
}

own_functions=$(compgen -A function)
