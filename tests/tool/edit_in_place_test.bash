# Cases of `xmldom edit -i`: which file is replaced, and what it keeps.

. "$(dirname "$0")/driver.bash"

_help="xmldom: 'xmldom edit --help' explains more\n"

edit_in_place_replaces_the_file() {
  given a.xml '<?xml version="1.0"?>\n<a><b/></a>\n'
  run edit -i a.xml --set /a/b x
  expect 0 '' ''
  expect_file a.xml '<?xml version="1.0"?>\n<a><b>x</b></a>\n'
  expect_names . a.xml
}

edit_in_place_replaces_each_of_several_files() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  given c.xml '<a/>'
  run edit -i --set /a x a.xml b.xml c.xml
  expect 1 '' 'xmldom: b.xml: --set /a: the path selects nothing\n'
  expect_file a.xml '<a>x</a>'
  expect_file b.xml '<b/>'
  expect_file c.xml '<a>x</a>'
}

edit_in_place_takes_a_file_dated_after_2038() {
  given a.xml '<a/>'
  touch -d @4102444800 a.xml
  [ "$(stat -c %Y a.xml)" = 4102444800 ] || skip 'the file system knows no such date'
  run edit -i.old --set / x a.xml
  expect 0 '' ''
  expect_file a.xml '<a>x</a>'
  [ "$(stat -c %Y a.xml.old)" = 4102444800 ] || fail
}

edit_in_place_with_a_suffix_keeps_the_old_file() {
  given a.xml '<a/>'
  touch -d @981173106 a.xml
  chmod 640 a.xml
  run edit -i.old --set / x a.xml
  expect 0 '' ''
  expect_file a.xml '<a>x</a>'
  expect_file a.xml.old '<a/>'
  [ "$(stat -c '%a %Y' a.xml.old)" = '640 981173106' ] || fail
  run edit -i.old --set / y a.xml
  expect 0 '' ''
  expect_file a.xml '<a>y</a>'
  expect_file a.xml.old '<a>x</a>'
  expect_names . a.xml a.xml.old
}

a_suffix_is_only_what_is_attached() {
  given a.xml '<a/>'
  given ./-i.xml '<b/>'
  run edit --set / -i.no -i a.xml
  expect 0 '' ''
  expect_file a.xml '<a>-i.no</a>'
  run edit -i~ --set / x --set-attr / b -i.no -- -i.xml
  expect 0 '' ''
  expect_file ./-i.xml '<b b="-i.no">x</b>'
  expect_names . -i.xml -i.xml~ a.xml
}

a_suffix_cannot_lead_elsewhere() {
  given a.xml '<a/>'
  run edit -i/tmp --set / x a.xml
  expect 2 '' "xmldom: '/' cannot stand in the suffix of -i\n$_help"
}

edit_in_place_keeps_the_old_file_although_nothing_changes() {
  given a.xml '<a>x</a>\n'
  run edit -i.old --set / x a.xml
  expect 0 '' ''
  expect_names . a.xml a.xml.old
}

edit_in_place_leaves_a_file_alone_that_would_stay_as_it_is() {
  given a.xml '<a>x</a>\n'
  local before
  before=$(stat -c '%i %y' a.xml)
  run edit -i --set / x a.xml
  expect 0 '' ''
  [ "$(stat -c '%i %y' a.xml)" = "$before" ] || fail
}

edit_in_place_keeps_mode_and_owner() {
  given a.xml '<a/>'
  chmod 604 a.xml
  if [ "$(id -u)" -eq 0 ]; then chown 12:34 a.xml; fi
  local before
  before=$(stat -c '%a %u %g' a.xml)
  (umask 077 && run edit -i --set / x a.xml)
  expect 0 '' ''
  [ "$(stat -c '%a %u %g' a.xml)" = "$before" ] || fail
}

edit_in_place_keeps_extended_attributes() {
  given a.xml '<a/>'
  python3 -c 'import os; os.setxattr("a.xml", "user.origin", b"here")' 2> error ||
    skip "no extended attributes: $(tail -n 1 error)"
  run edit -i --set / x a.xml
  expect 0 '' ''
  expect_file a.xml '<a>x</a>'
  [ "$(python3 -c 'import os; print(os.getxattr("a.xml", "user.origin").decode())')" = here ] ||
    fail
}

# Runs the tool as a user of no groups, in a folder where everybody may write.
_run_as_somebody() {
  [ "$(id -u)" -eq 0 ] || skip 'only root can act as another user'
  chmod 755 "$scratch"
  chmod 777 .
  local somebody=(setpriv --reuid 12345 --regid 12345 --clear-groups)
  "${somebody[@]}" test -x "$tool" || skip 'another user cannot reach the tool'
  keep "${somebody[@]}" "$tool" "$@"
}

edit_in_place_by_another_user_gives_that_users_group_no_more_rights() {
  given a.xml '<a/>'
  chmod 676 a.xml
  _run_as_somebody edit -i --set / x a.xml
  expect 0 '' ''
  [ "$(stat -c '%a %u %g' a.xml)" = '666 12345 12345' ] || fail
}

edit_in_place_refuses_a_file_that_may_not_be_written_to() {
  given a.xml '<a/>'
  chmod 644 a.xml
  _run_as_somebody edit -i --set / x a.xml
  expect 2 '' 'xmldom: a.xml: Permission denied\n'
  expect_file a.xml '<a/>'
  expect_names . a.xml
}

edit_in_place_follows_a_symbolic_link() {
  mkdir real links
  given real/a.xml '<a/>'
  ln -s ../real/a.xml links/first
  ln -s first links/second
  run edit -i.old --set / x links/second
  expect 0 '' ''
  expect_file real/a.xml '<a>x</a>'
  expect_file real/a.xml.old '<a/>'
  [ "$(readlink links/second)" = first ] || fail
  [ "$(ls links)" = $'first\nsecond' ] || fail
}

edit_in_place_refuses_what_is_no_regular_file() {
  mkfifo pipe
  run edit -i --set / x pipe
  expect 2 '' 'xmldom: pipe: not a regular file\n'
  mkdir folder
  run edit -i --set / x folder
  expect 2 '' 'xmldom: folder: not a regular file\n'
}

edit_in_place_refuses_a_file_with_hard_links_unless_it_writes_into_it() {
  given a.xml '<a/>'
  ln a.xml b.xml
  chmod 604 a.xml
  local before
  before=$(stat -c '%i %a %u %g' a.xml)
  run edit -i --set / x a.xml
  expect 2 '' "xmldom: a.xml: it has 2 names (hard links), of which the others would keep the old \
contents; --in-place=write writes into the file itself\n"
  expect_file a.xml '<a/>'
  run edit --in-place=write --set / x a.xml
  expect 0 '' ''
  expect_file b.xml '<a>x</a>'
  [ "$(stat -c '%i %a %u %g' a.xml)" = "$before" ] || fail
  run edit -i.old --in-place write --set / y a.xml
  expect 0 '' ''
  expect_file b.xml '<a>y</a>'
  expect_file a.xml.old '<a>x</a>'
  expect_names . a.xml a.xml.old b.xml
}

in_place_is_renaming_or_writing() {
  given a.xml '<a/>'
  run edit --in-place=rename --set / x a.xml
  expect 0 '' ''
  expect_file a.xml '<a>x</a>'
  run edit --in-place=copy --set / x a.xml
  expect_status 2
  expect_part stderr rename
  run edit --in-place=write --set / x
  expect 2 '' "xmldom: -i needs a file; standard input cannot be replaced\n$_help"
}

edit_in_place_refuses_standard_input() {
  local arguments
  for arguments in '' - 'a.xml -'; do
    # shellcheck disable=SC2086
    run edit -i --set / x $arguments <<< '<a/>'
    expect 2 '' "xmldom: -i needs a file; standard input cannot be replaced\n$_help"
  done
}

edit_in_place_leaves_the_file_alone_when_a_path_selects_nothing() {
  given a.xml '<a><b/></a>'
  run edit -i.old a.xml --set /a/b x --remove /a/c
  expect 1 '' 'xmldom: a.xml: --remove /a/c: the path selects nothing\n'
  expect_file a.xml '<a><b/></a>'
  expect_names . a.xml
}

edit_in_place_takes_a_file_of_any_layout() {
  local before="<?xml version=\"1.0\" encoding='ISO-8859-1'?>\r\n<!DOCTYPE a [\n<!ENTITY e 'x'>\n]>
<!-- \xe9 -->\n<a\n  b = '1'\n  c=\"2\">\r\n\r\n  one &e; <![CDATA[<two>]]><!-- c -->\n  <b>"
  local after="</b>\n three<?p i?><c/></a>\n<!-- end -->"
  given a.xml "${before}old$after"
  run edit -i a.xml --set /a/b new
  expect 0 '' ''
  expect_file a.xml "${before}new$after"
}

edit_in_place_knows_no_lossy() {
  given a.xml '<a/>'
  run edit -i --lossy --set / x a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr '--lossy'
}

run_cases
