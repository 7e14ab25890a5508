# Cases of commands that replace a file in which the system fails: each call that touches files gets an
# error, or the process gets a signal there. Whatever happens, the file is the old one or the new one,
# whole, and the new one has the extended attribute of the old one unless that was what failed.
#
# XMLDOM_TEST_LONG=1 tries every way of replacing a file, not the usual one alone.

. "$(dirname "$0")/driver.bash"

# Commands, with the ways in which they replace a file.
_ways=('edit -i' 'format -i')
if [ -n "${XMLDOM_TEST_LONG:-}" ]; then _ways+=('edit -i.old' 'edit --in-place=write'); fi

# The calls that are made to fail. Others that a command makes have nothing to do with its files.
_calls='openat,readlink,newfstatat,fstat,faccessat,faccessat2,access,flock,read,write,pwrite64'
_calls+=',ftruncate,fsync,close,fchown,fchmod,utimensat,linkat,rename,unlink'
_calls+=',listxattr,getxattr,fsetxattr,fremovexattr,pread64'

_needs_strace() {
  [ "$slowness" -lt 20 ] || skip 'an emulator cannot be traced'
  command -v strace > /dev/null || skip 'there is no strace here'
  # The leak checker traces too.
  export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"
  strace -o trace -e trace="$_calls" -e inject=fsync:error=EIO true 2> error ||
    skip "processes cannot be traced here: $(tail -n 1 error)"
  rm -f trace error
}

# _replace WAY [STRACE_OPTION...]: runs the command that is tried on a.xml.
_replace() {
  local command
  read -ra command <<< "$1"
  if [ "${command[0]}" = edit ]; then command+=(--set /a/b new); fi
  keep strace -f -o ../trace -e trace="$_calls" "${@:2}" "$tool" "${command[@]}" a.xml
}

# Gives the old file an extended attribute, where the file system holds such. Out: "has_attribute".
_set_attribute() {
  has_attribute=
  if python3 -c 'import os; os.setxattr("old.xml", "user.origin", b"here")' 2> error; then
    has_attribute=yes
  else
    echo "  without an extended attribute: $(tail -n 1 error)"
  fi
}

# Makes a new folder with a.xml in it, which is the old file.
_make_folder() {
  rm -rf folder
  mkdir folder
  if [ -n "$has_attribute" ]; then
    cp --preserve=xattr old.xml folder/a.xml
  else
    cp old.xml folder/a.xml
  fi
}

# Each of the files has the extended attribute. They are looked at together, because that takes another
# program.
_expect_attributes() {
  [ -n "$has_attribute" ] || return 0
  python3 - "$@" <<'END' || fail
import os, sys
missing = [name for name in sys.argv[1:] if "user.origin" not in os.listxattr(name)]
for name in missing: print("  the extended attribute is lost:", name)
sys.exit(bool(missing))
END
}

# For each call from the first one on that names the file: "NAME INDEX", counted for each name.
_calls_of_a_run() {
  awk '
    { sub(/^[0-9]+ +/, "") }
    /a\.xml/ { named = 1 }
    match($0, /^[a-z0-9_]+\(/) {
      name = substr($0, 1, RLENGTH - 1)
      ++count[name]
      if (named) print name, count[name]
    }' trace
}

# _try WAY INJECTION: runs the command on a new a.xml, and looks at what it leaves. Out: "status".
_try() {
  _make_folder
  # The shell tells of those that are killed.
  (cd folder && _replace "$1" -e "inject=$2") 2> /dev/null
  tried=$((tried + 1))
  status=$(cat "$scratch/status")
  local name
  if cmp -s folder/a.xml new.xml; then
    news=$((news + 1))
  elif cmp -s folder/a.xml old.xml; then
    [ "$status" -ne 0 ] || { echo "  $1 $2: ends with 0, and nothing is replaced"; fail; }
  else
    echo "  $1 $2: a.xml is neither the old file nor the new one"
    cat "$scratch/stderr"
    fail
  fi
  for name in $(ls -A folder); do
    case $name in
      a.xml) ;;
      a.xml.old) cmp -s "folder/$name" old.xml || { echo "  $1 $2: $name is not the old file"; fail; } ;;
      .xmldom-??????) lefts="$lefts $2" ;;
      *) echo "  $1 $2: stray $name"; fail ;;
    esac
  done
  # An attribute that cannot be read or set is left out.
  case $2 in *xattr:error=*) ;; *) mv folder/a.xml "left/$1 $2" ;; esac
}

# _each_call FUNCTION: calls it with each way, and with each call that the command makes then. Out: how
# many runs were "tried", in how many the file is the new one ("news"), and where another file was
# left behind ("lefts").
_each_call() {
  _needs_strace
  local way call calls
  tried=0 news=0 lefts='' status=0
  given old.xml '<a>\n <b>old</b>\n</a>\n'
  _set_attribute
  mkdir left
  for way in "${_ways[@]}"; do
    _make_folder
    (cd folder && _replace "$way")
    expect_status 0
    cp folder/a.xml new.xml
    # All of the trace is read before it is written again.
    mapfile -t calls < <(_calls_of_a_run)
    for call in "${calls[@]}"; do "$1" "$way" "${call% *}" "${call#* }"; done
  done
  _expect_attributes left/*
  echo "  $tried runs, in $news of which the file was replaced"
  [ "$tried" -gt 20 ] || fail
  # Where all or none had the same end, nothing was done to the calls.
  [ "$news" -gt 0 ] && [ "$news" -lt "$tried" ] || fail
}

_fail_call() {
  local error errors=EIO
  case $2 in
    openat) errors='EIO EOPNOTSUPP EMFILE' ;;
    write | pwrite64) errors='ENOSPC' ;;
    flock) errors='ENOLCK EIO' ;;
  esac
  for error in $errors; do
    _try "$1" "$2:error=$error:when=$3"
    case $status in
      0 | 2) ;;
      *) echo "  $1 $2:$error:$3: exit status $status"; fail ;;
    esac
  done
}

a_call_that_fails_leaves_the_old_file_or_the_new_one() {
  _each_call _fail_call
  # Only a file that cannot be removed is left behind.
  local left
  for left in $lefts; do
    [[ $left == unlink:* ]] || { echo "  left behind: $left"; fail; }
  done
}

_kill_at_call() { _try "$1" "$2:signal=KILL:when=$3"; }

# Writing into a file is what cannot survive this, as its page says.
a_kill_at_any_call_leaves_the_old_file_or_the_new_one() {
  local _ways=('edit -i' 'format -i')
  if [ -n "${XMLDOM_TEST_LONG:-}" ]; then _ways+=('edit -i.old'); fi
  _each_call _kill_at_call
  echo "  left behind:${lefts:- nothing}"
}

_end_at_call() {
  _try "$1" "$2:signal=TERM:when=$3"
  # A sanitizer does not read the same number of times in each run.
  grep -q SIGTERM trace || return 0
  [ "$status" -eq 143 ] || { echo "  $1 $2:$3: exit status $status"; fail; }
}

a_signal_at_any_call_leaves_nothing_behind_and_ends_the_tool() {
  _each_call _end_at_call
  [ -z "$lefts" ] || { echo "  left behind:$lefts"; fail; }
}

run_cases
