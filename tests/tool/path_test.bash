# Cases of paths that cannot be used: they are refused, with the place, before any file is read.

. "$(dirname "$0")/driver.bash"

_first=''

# refuses PATH COLUMN REASON: the commands that search for a path refuse it, before they look at a file.
_refuses() {
  local text="xmldom: column $2 of the path: $3\n"
  if [ -n "$1" ]; then
    text+="  ${1//\\/\\\\}\n  $(printf "%$(($2 - 1))s" '')^\n"
  fi
  local command
  for command in select value path; do
    # shellcheck disable=SC2086
    run $command $_first "$1" missing.xml
    expect 2 '' "${text}xmldom: 'xmldom $command --help' explains more\n"
  done
}

# accepts PATH: it can be searched for.
_accepts() {
  # shellcheck disable=SC2086
  run select --count $_first "$1" <<< '<a/>'
  expect 1 '0\n' ''
}

empty_paths_and_steps_are_refused() {
  _refuses '' 1 'the path is empty'
  _refuses / 2 'a name is missing at the end'
  _refuses // 3 'a name is missing at the end'
  _refuses a/ 3 'a name is missing at the end'
  _refuses a//b 3 "empty step; '//' can stand only at the beginning"
  _refuses '//a//b' 5 "empty step; '//' can stand only at the beginning"
}

unbalanced_brackets_are_refused() {
  _refuses '/a[' 3 "'[' without ']'"
  _refuses 'a[b=1' 2 "'[' without ']'"
  _refuses 'a[b=1]/c[d' 9 "'[' without ']'"
  _refuses 'a]' 2 "']' without '['"
  _refuses 'a[b=1]]' 7 "']' without '['"
  _refuses 'a[[b=1]' 3 "'[' cannot stand in a name"
}

something_between_predicates_is_refused() {
  _refuses 'a[b=1]x' 7 "'x' where only '[', '/' or the end can follow"
  _refuses "a[b=1] and [c=2]" 8 "'a' where only '[', '/' or the end can follow"
}

empty_predicates_and_those_that_are_not_understood_are_refused() {
  _refuses 'a[]' 3 'empty predicate'
  _refuses 'a[b/]' 5 'a name is missing at the end of the predicate'
  _refuses 'a[0]' 3 'positions count from 1'
  _refuses 'a[last()-1]' 7 'no function is understood but last(), alone in its brackets'
  _refuses 'a[b and c]' 5 "'and' is written as two predicates: [a][b]"
}

tests_of_existence_and_positions_are_accepted() {
  _accepts 'a[b][@c][d/@e]/f'
  _accepts 'a[2]'
  _accepts '/a/b[last()]/@c'
  _accepts '//@b'
  _first=--first
  _accepts '/a/b[2]/../c[@d]'
}

unclosed_quotes_are_refused() {
  local reason="unclosed quote; a predicate ends at the first ']', even in quotes"
  _refuses "a[b='x]" 5 "$reason"
  _refuses 'a[b="x]' 5 "$reason"
  _refuses "a[b=']']" 5 "$reason"
  _refuses "a[b='x\"]" 5 "$reason"
}

comparisons_with_nothing_are_refused() {
  local reason="a number or a quoted text has to follow '='"
  _refuses 'a[b=]' 5 "$reason"
  _refuses 'a[b=x]' 5 "$reason"
  _refuses 'a[b=-]' 5 "$reason"
}

what_would_be_ignored_behind_a_comparison_is_refused() {
  _refuses "a[@b='x' and @c='y']" 10 "'a' follows what is compared, and would be ignored"
  _refuses 'a[b=1x]' 6 "'x' follows what is compared, and would be ignored"
}

names_that_no_element_can_have_are_refused() {
  _refuses 'a b' 2 'a blank cannot stand in a name'
  _refuses 'a [b=1]' 2 'a blank cannot stand in a name'
  _refuses 'text()' 5 "'(' cannot stand in a name"
  _refuses '*a' 1 "'*' cannot stand in a name"
  _refuses '1a' 1 "a name cannot begin with '1'"
  _refuses '.a' 1 "a name cannot begin with '.'"
  _refuses '[b=1]' 1 "a name is missing before '['"
  _refuses "a[='x']" 3 "a name is missing before '='"
  _refuses "a[b//c='x']" 5 "a name is missing before '/'"
  _refuses "a[b c='x']" 4 'a blank cannot stand in a name'
}

attributes_are_refused_where_they_cannot_be_tested() {
  _refuses '/a/@b/c' 6 'an attribute has nothing below it'
  _refuses '/@b' 2 "a document has no attributes; its root element is '/*'"
  _refuses 'a[@b/c=1]' 5 'an attribute has nothing below it'
}

a_wildcard_is_refused_where_it_cannot_be_compared() {
  _refuses 'a[*=1]' 3 "'*' cannot be compared, it stands only before a '/'"
  _refuses 'a[@*=1]' 4 "'*' cannot be compared, it stands only before a '/'"
}

dots_are_refused_without_first() {
  _refuses ./a 1 "'.' is understood only with --first"
  _refuses a/../b 3 "'..' is understood only with --first"
}

dots_are_refused_where_they_have_no_meaning() {
  _first=--first
  _refuses . 1 "a path cannot end in '.'"
  _refuses a/.. 3 "a path cannot end in '..'"
  _refuses ../a 1 "'..' leads out of the document"
  _refuses /a/../../a 7 "'..' leads out of the document"
  _refuses //../a 3 "'..' cannot begin a search at every depth"
  _refuses //./a 3 "'.' cannot begin a search at every depth"
  _refuses 'a/..[b=1]/c' 5 "'..' stands alone in its step"
}

dots_are_accepted_where_they_have_a_meaning() {
  _first=--first
  _accepts ./b
  _accepts /a/./b
  _accepts /a/../b
  _accepts //a/../../b
}

columns_count_characters() {
  run select $'\xc3\xa9[x|y]' missing.xml
  expect 2 '' "xmldom: column 4 of the path: '|' is not understood\n  \xc3\xa9[x|y]\n     ^
xmldom: 'xmldom select --help' explains more\n"
}

a_path_that_a_terminal_would_obey_is_made_visible() {
  run select $'a\033b' missing.xml
  expect 2 '' "xmldom: column 2 of the path: '\\\\x1B' cannot stand in a name\n  a\\\\x1Bb\n   ^\n\
xmldom: 'xmldom select --help' explains more\n"
}

everything_the_library_understands_is_accepted() {
  local path
  for path in b /b //b ///b '*/b' $'\xc3\xa9' b:c.d-e_f1 "a[b='x']" 'a[b="x"]' 'a[b=1]' \
    'a[b= +12 ]' 'a[b=-1]' "a[@b='x']" "a[b/c/d='x']" "a[b/@c='x']" "a[*/c='x']" "a[*b/c='x']" \
    "a[b='x/y']/c" "a[b='']" "a[b='[']" "a[b=\"it's\"]" "a[b='x'] [c=2] " "a[b='x=y']"; do
    _accepts "$path"
  done
}

run_cases
