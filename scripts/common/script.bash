# What the scripts beside this folder share: they source it and call `begin "$@"` first.
#
# A script begins with a comment, whose first word is its name and which --help prints. It is run from
# wherever the caller stands, and works in the project's root. Work that takes long is a step with a
# log in build/logs/. When a script fails, its last ten lines say which step failed, where its log is,
# and which command repeats it. There need not be a /proc, so that no processes are substituted.
# Tested by tests/scripts/.

set -euo pipefail

progress_seconds=5    # from one line of a quiet step to the next
long_step_seconds=10  # a step that takes at least this long says how long it took

# begin "$@": answers --help, goes to the project's root, and arranges for the report of a failure.
begin() {
  _script_path=$(cd "$(dirname "$0")" && pwd)/${0##*/}
  script=${0##*/}
  caller_folder=$PWD
  command_line=scripts/$script
  [ $# -eq 0 ] || command_line+=$(printf ' %q' "$@")
  local argument
  for argument in "$@"; do
    case $argument in
      -h | --help)
        _print_help
        exit
        ;;
    esac
  done
  cd "$(dirname "$_script_path")/.."

  # The outermost of several scripts prints the report, so that nothing comes after it.
  _prints_report=
  if [ -z "${XMLDOM_SCRIPT_REPORT:-}" ]; then
    XMLDOM_SCRIPT_REPORT=$(mktemp)
    export XMLDOM_SCRIPT_REPORT
    _prints_report=yes
  fi
  _at_exit=:
  trap _finish EXIT
  _stop_at_errors
}

# at_exit COMMAND: adds to what is done when the script ends.
at_exit() { _at_exit="$1; $_at_exit"; }

# refuse MESSAGE: ends the script because of its arguments.
refuse() {
  {
    echo "$script: $1"
    echo "usage: scripts/$(_print_help | sed 's/: .*//; s/: *$//; q')"
    echo "scripts/$script --help says more"
  } >&2
  exit 2
}

# fail WHAT COMMAND: ends the script, with the command that the reader should enter.
fail() {
  printf '== FAILED: %s: %s\n   %s\n' "$script" "$1" "$2" >"$XMLDOM_SCRIPT_REPORT"
  exit 1
}

# refuse_arguments "$@": for scripts that take none.
refuse_arguments() {
  [ $# -eq 0 ] || refuse "no arguments are known, such as $1"
}

# The presets whose builds have tests and run here.
presets_with_tests=(release clang asan tsan dev)

# check_preset NAME: refuses any other.
check_preset() {
  local known
  for known in "${presets_with_tests[@]}"; do
    [ "$1" != "$known" ] || return 0
  done
  refuse "unknown preset: $1 (there are: ${presets_with_tests[*]})"
}

# set_lists PRESET...: makes "lists" those that building and testing these presets needs, for
# install_for.
set_lists() {
  lists=(library tool tests)
  if [[ " $* " == *" clang "* ]]; then lists+=(clang); fi
}

# from_caller PATH: the same path for whoever stands in the project's root.
from_caller() {
  case $1 in
    /*) echo "$1" ;;
    *) echo "$caller_folder/$1" ;;
  esac
}

# packages_for LIST...: the packages of these lists in common/packages.
packages_for() {
  local list
  for list in "$@"; do
    sed -n "s/^$list: //p" scripts/common/packages
  done | tr ' ' '\n' | awk '!seen[$0]++' | xargs
}

# install_for LIST...: installs what is missing of them.
install_for() {
  local packages
  read -ra packages <<<"$(packages_for "$@")"
  scripts/install-packages "${packages[@]}"
}

# step TITLE COMMAND...: runs a command and shows what it prints, which is also kept in the log.
step() {
  _begin_step "$1"
  shift
  _go_on_at_errors
  _run "$@" 2>&1 | tee "$step_log"
  local status=${PIPESTATUS[0]}
  _stop_at_errors
  _end_step "$status" "$@"
}

# quiet_step TITLE COMMAND...: runs a command that prints to its log alone, and shows how far it is.
quiet_step() {
  _begin_step "$1"
  shift
  _go_on_at_errors
  trap - EXIT  # which a signal could make the watcher do before it has begun
  _watch "$step_log" $BASHPID &
  local watcher=$! status
  trap _finish EXIT
  _run "$@" >"$step_log" 2>&1 </dev/null
  status=$?
  kill "$watcher" 2>/dev/null
  wait "$watcher" 2>/dev/null
  _stop_at_errors
  _end_step "$status" "$@"
}

# What fails in a command of a step is in its log, also when the command is a script that reports.
_run() (
  unset XMLDOM_SCRIPT_REPORT
  set -e
  "$@"
)

# _watch LOG PROCESS: shows the last line of a log again and again, as long as the process lives.
_watch() {
  local log=$1 watched=$2 start=$SECONDS nap=
  trap 'kill "$nap" 2>/dev/null; exit 0' TERM
  while :; do
    sleep "$progress_seconds" &
    nap=$!
    wait "$nap"
    kill -0 "$watched" 2>/dev/null || exit 0
    printf '   %d s: %s\n' $((SECONDS - start)) "$(tail -n 1 "$log" | tr '\r' '\n' | tail -n 1 | cut -c 1-90)"
  done
}

_stop_at_errors() {
  set -eE
  trap '_report_failure $? "$command_line" "line $LINENO: $BASH_COMMAND"' ERR
}

_go_on_at_errors() {
  set +eE
  trap - ERR
}

_print_help() {
  awk 'NR == 1 { next } !/^#/ { exit } { sub(/^# ?/, ""); print }' "$_script_path"
}

_begin_step() {
  : >"$XMLDOM_SCRIPT_REPORT"  # what failed before has been put up with
  echo "== $1"
  mkdir -p "build/logs/$script"
  _step=$1
  _step_start=$SECONDS
  step_log=build/logs/$script/$(tr -cs 'A-Za-z0-9+.-' - <<<"${1:0:40}" | sed 's/-$//').log
}

# _end_step STATUS COMMAND...
_end_step() {
  local seconds=$((SECONDS - _step_start))
  if [ "$1" -eq 0 ]; then
    [ "$seconds" -lt "$long_step_seconds" ] || echo "   done in $seconds s"
    return
  fi
  local again=$command_line  # for a function of the script
  [ "$(type -t "$2")" = function ] || again=$(printf '%q ' "${@:2}")
  _report_failure "$1" "$again" "$_step" "$step_log"
  exit "$1"
}

# _report_failure STATUS COMMAND WHAT [LOG]: a script inside of this one that failed has said it
# better.
_report_failure() {
  [ ! -s "$XMLDOM_SCRIPT_REPORT" ] || return 0
  {
    echo "== FAILED: $command_line: $3 (exit status $1)"
    echo "   again: ${2% }"
    if [ $# -eq 4 ]; then
      echo "   log: $4, in which"
      _telling_lines "$4" | cut -c 1-160 | sed 's/^/   | /'
    fi
  } >"$XMLDOM_SCRIPT_REPORT"
}

# The lines of a log that most likely say why a command failed: seven at most.
_telling_lines() {
  local pattern
  for pattern in '^The following tests FAILED' 'CMake Error' '(^| )(fatal )?error: '; do
    if grep -qE "$pattern" "$1"; then
      sed -nE "/$pattern/,\$p" "$1" | sed '/^ *$/d' | sed -n 1,7p
      return
    fi
  done
  sed '/^ *$/d' "$1" | tail -n 7
}

_finish() {
  local status=$?
  _go_on_at_errors
  eval "$_at_exit"
  if [ -n "$_prints_report" ]; then
    [ "$status" -eq 0 ] || cat "$XMLDOM_SCRIPT_REPORT" >&2
    rm -f "$XMLDOM_SCRIPT_REPORT"
  fi
}
