# Sourced by the tests of scripts, which are run as `bash FILE SCRIPTS/test`: a copy of the scripts in a
# project of its own, and programs in place of those that would change the machine.

. "$(dirname "$0")/../tool/driver.bash"

project=$(cd "$(dirname "$tool")/.." && pwd)
scripts=$(cd "$project/scripts" && grep -lxs '#!/usr/bin/env bash' -- * | sort)
[ -n "$scripts" ] || { echo "no scripts in $project/scripts" >&2; exit 2; }
unset XMLDOM_SCRIPT_REPORT

# Puts the scripts into ./copy/scripts.
_given_a_copy() {
  mkdir -p copy
  cp -R "$project/scripts" copy
}

# _given_program NAME TEXT: a program that is found before the machine's.
_given_program() {
  mkdir -p programs
  printf '#!/bin/bash\n%s\n' "$2" > "programs/$1"
  chmod +x "programs/$1"
  PATH=$PWD/programs:${PATH#"$PWD/programs:"}
}

# Nothing is installed, and whatever changes that leaves a trace.
_given_no_packages() {
  _given_program dpkg-query 'exit 1'
  _given_program apt-get "echo apt-get \"\$@\" >> '$PWD/changes'"
}

# _given_script NAME TEXT: a script of the copy that begins as all do.
_given_script() {
  _given_a_copy
  {
    echo '#!/usr/bin/env bash'
    echo "# $1 [WORD]: is a script of a test."
    echo '. "$(dirname "$0")/common/script.bash"'
    echo 'begin "$@"'
    echo "$2"
  } > "copy/scripts/$1"
  chmod +x "copy/scripts/$1"
}
