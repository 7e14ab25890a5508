# What scripts put into docs/hardening.md with --record.

. "$(dirname "$0")/project.bash"

# A page with two sections, and a script that records the words it is given in one of them.
_given_a_page() {
  command -v git >/dev/null || skip 'there is no git here'
  _given_script counting '. scripts/common/record.bash
    take_record_option "$@"
    set -- "${arguments[@]}"
    echo "$# arguments"
    echo "counted: $*" | record "${section:-one}"'
  mkdir -p copy/docs
  printf 'Top\n\n<!-- one -->\n<!-- end -->\n\nBetween\n\n<!-- two -->\nkept\n<!-- end -->\n' > copy/docs/hardening.md
  cp copy/docs/hardening.md before.md
  _git init --quiet
  _git add .
  _git commit --quiet --message 'first'
  commit=$(_git rev-parse --short HEAD)
}

_git() { git -C copy -c user.name=A -c user.email=a@example.org -c commit.gpgsign=false "$@"; }

# _expect_section TEXT: the page as it was, with this in its first section.
_expect_section() {
  expect_file copy/docs/hardening.md \
    "Top\n\n<!-- one -->\n$1<!-- end -->\n\nBetween\n\n<!-- two -->\nkept\n<!-- end -->\n"
}

without_the_option_the_page_stays_as_it_is() {
  _given_a_page
  keep copy/scripts/counting a b
  expect 0 '2 arguments\n' ''
  cmp before.md copy/docs/hardening.md || fail
}

the_counts_stand_in_the_section_with_day_commit_and_command() {
  _given_a_page
  keep copy/scripts/counting a --record 'b c'
  expect 0 '2 arguments\n' ''
  _expect_section "\n$(date +%Y-%m-%d), commit $commit, \`scripts/counting a --record b\\\\ c\`:\n\ncounted: a b c\n\n"
}

the_option_alone_leaves_no_argument() {
  _given_a_page
  keep copy/scripts/counting --record
  expect 0 '0 arguments\n' ''
}

a_later_record_replaces_the_earlier_one() {
  _given_a_page
  keep copy/scripts/counting --record first
  keep copy/scripts/counting --record second
  expect_status 0
  _expect_section "\n$(date +%Y-%m-%d), commit $commit, \`scripts/counting --record second\`:\n\ncounted: second\n\n"
}

changes_that_are_not_committed_are_told() {
  _given_a_page
  echo '# changed' >> copy/scripts/soak
  keep copy/scripts/counting --record
  expect_status 0
  grep -q "commit $commit with changes, " copy/docs/hardening.md || { cat copy/docs/hardening.md; fail; }
}

a_section_that_is_missing_is_named() {
  _given_a_page
  keep env section=three copy/scripts/counting --record
  expect_status 1
  expect_part stderr 'docs/hardening.md has no section three'
  cmp before.md copy/docs/hardening.md || fail
}

the_script_in_Python_records_as_the_others_do() {
  command -v python3 >/dev/null || skip 'there is no python3 here'
  _given_a_page
  sed -i 's/<!-- one -->/<!-- try-edits -->/' copy/docs/hardening.md
  _git commit --all --quiet --message 'second'
  commit=$(_git rev-parse --short HEAD)
  keep env PYTHONPATH="$project/tests/tool/edits" python3 -c 'import runpy
script = runpy.run_path("copy/scripts/try-edits")
script["record"]([("files", 3)], script["current_commit"]())' --record
  expect 0 '' ''
  sed -i 's/<!-- try-edits -->/<!-- one -->/' copy/docs/hardening.md
  _expect_section "\n$(date +%Y-%m-%d), commit $commit, \`scripts/try-edits --record\`:\n\n| What | Count |\n|---|---|\n| files | 3 |\n\n"
}

every_script_that_records_has_a_section_and_says_so_in_its_help() {
  local script sections section
  for script in "$project"/scripts/*; do
    [ -f "$script" ] || continue
    grep -q 'common/record.bash' "$script" || continue
    # One section for each machine, of which scripts/cross-test has the list, has a test of its own.
    grep -q 'record "\$machine"' "$script" && continue
    sections=$(sed -nE '/^#/d; s/.*\brecord ([a-z-]+)(""")?(, .*| <.*)?$/\1/p' "$script")
    [ -n "$sections" ] || { echo "  ${script##*/} records nothing"; fail; }
    for section in $sections; do
      grep -qx "<!-- $section -->" "$project/docs/hardening.md" || { echo "  no section $section"; fail; }
    done
    "$script" --help | grep -q -- --record || { echo "  ${script##*/} --help does not tell of --record"; fail; }
  done
}

run_cases
