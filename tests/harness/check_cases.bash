# Sourced by the cases of a `check`, which stands beside them and compares sources with a table: a
# folder for the sources and tables, and what is expected. Whoever sources it sets `table`, the file
# that a case writes, and `arguments`, those of the check; and ends with `exit $((failures > 0))`.

set -euo pipefail
check=$(dirname "$(realpath "$0")")/check
folder=$(realpath "$(mktemp -d)")
trap 'rm -rf "$folder"' EXIT
cd "$folder"
failures=0

# Compares what check prints for a table with the rest of the arguments, a line each.
_expect() { # case table line...
  local name=$1 status=0 printed expected=''
  printf '%b' "$2" > "$table"
  shift 2
  if (($# > 0)); then expected=$(printf '%s\n' "$@"); fi
  printed=$("$check" "${arguments[@]}") || status=$?
  if [[ $printed == "$expected" && $status == $(($# > 0)) ]]; then return; fi
  printf '%s: expected:\n%s\nprinted, with status %s:\n%s\n' "$name" "$expected" "$status" "$printed"
  failures=$((failures + 1))
}
