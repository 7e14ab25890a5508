# What scripts share that can put what they have counted into docs/hardening.md, with the option
# --record. Each has a section of its own there, between <!-- NAME --> and <!-- end -->.
#
# Sourced behind script.bash. Tested by tests/scripts/.

# take_record_option "$@": sets `records` when --record is among the arguments, and `arguments` to
# the others. To be called in the project's root before anything is built, because the commit that is
# checked out then is the one that is counted.
take_record_option() {
  records=
  arguments=()
  local argument
  for argument in "$@"; do
    if [ "$argument" = --record ]; then records=yes; else arguments+=("$argument"); fi
  done
  [ -z "$records" ] || counted_commit=$(current_commit)
}

# record NAME < TEXT: makes the text the section of the page, behind a line that says when, on which
# commit and with which command it was counted. Without --record the text is read for nothing, so that
# nobody writes it into a pipe that is closed.
record() {
  [ -n "$records" ] || { cat >/dev/null; return 0; }
  local page=docs/hardening.md text made name=$1
  grep -qx "<!-- $name -->" "$page" || fail "$page has no section $name" "add <!-- $name --> and <!-- end -->"
  text=$(mktemp)
  made=$(mktemp)
  {
    printf '\n%s, commit %s, `%s`:\n\n' "$(date +%Y-%m-%d)" "$counted_commit" "$command_line"
    cat
    printf '\n'
  } >"$text"
  awk -v begin="<!-- $name -->" -v text="$text" '
    $0 == begin { print; while ((getline line < text) > 0) print line; skipping = 1 }
    $0 == "<!-- end -->" { skipping = 0 }
    !skipping' "$page" >"$made"
  cat "$made" >"$page"
  rm -f "$text" "$made"
}

# The commit that is checked out, and whether anything differs from it; the page itself may.
current_commit() {
  local changes=
  git diff --quiet HEAD -- . ':!docs/hardening.md' || changes=' with changes'
  echo "$(git rev-parse --short HEAD)$changes"
}
