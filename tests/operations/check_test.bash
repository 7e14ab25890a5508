#!/usr/bin/env bash
# Cases of check, each with a small table: what it prints for an operation that is nowhere, and for an
# exception that does not fit.
. "$(dirname "$0")/../harness/check_cases.bash"
table=list
arguments=(names list rows)

# The operations, a line each.
_operations() { printf '%s\n' "$@" > names; }
# The titles of a table, as a source has them.
_rows() {
  mkdir -p rows
  printf '    {"%s", [] {}},\n' "$@" > rows/Rows.cpp
}

_operations 'A::Add' 'Make' 'xmldom::Text'
_rows 'Add, twice' 'A, Make' 'xmldom::Text'
_expect 'each operation has a row' ''
_rows 'A::Add, Make, xmldom::Text'
_expect 'one row has all operations' ''
_rows 'Add' 'Make'
_expect 'an operation without row' '' 'xmldom::Text has neither a row nor an exception'
_expect 'an exception' 'xmldom::Text: a reason\n'
_expect 'an exception below a heading' '# Exceptions\n\nxmldom::Text: a reason\n'
_expect 'an exception without reason' 'xmldom::Text\n' \
  'list:1: an exception has to be a name, a colon and a reason' \
  'xmldom::Text has neither a row nor an exception'
_expect 'an exception twice' 'xmldom::Text: a reason\nxmldom::Text: another\n' \
  'list:2: xmldom::Text has a line already'
_expect 'an exception that has a row' 'xmldom::Text: a reason\nMake: a reason\n' \
  'list:2: Make has a row, and needs no exception'
_expect 'an exception for nothing' 'xmldom::Text: a reason\nGone: a reason\n' \
  'list:2: there is no Gone without a row'

_rows 'AddMore' 'B::Add' 'Make' 'Text'
_expect 'names that only look alike' '' \
  'A::Add has neither a row nor an exception' 'xmldom::Text has neither a row nor an exception'

_operations 'A::Add' 'A::operator bool' 'A::B::Add' 'B::operator='
_rows 'A::operator bool' 'C::operator='
_expect 'operators go by their full name' 'A::*: a reason\nA::B::*: a reason\n' \
  'B::operator= has neither a row nor an exception'
_expect 'a class' 'A::*: a reason\nA::B::*: a reason\nB::operator=: a reason\n'
_rows 'Add, A::operator bool, B::operator='
_expect 'a class that has rows' 'A::*: a reason\n' 'list:1: there is no A::* without a row'

exit $((failures > 0))
