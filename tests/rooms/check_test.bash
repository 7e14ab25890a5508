#!/usr/bin/env bash
# Cases of check, each with a small project: what it prints for an include that a table does not
# allow, and for a table that does not fit the folders.
. "$(dirname "$0")/../harness/check_cases.bash"
table=table
arguments=(. table)

# Puts a source with one include, on its third line, into the project.
_given() { # source include
  mkdir -p "$(dirname "$1")"
  printf '// A source\n\n%s\n' "${2:+#include $2}" > "$1"
}

_given lib/low/Low.h '<string>'
_given lib/low/Low.cpp '"Low.h"'
_given lib/high/High.cpp '<lib/low/Low.h>'

_expect 'includes that point downwards' 'lib/low:\nlib/high: lib/low\n'
_expect 'a whole tree is allowed' 'lib/low:\nlib/high: lib/*\n'
_expect 'an include that the table does not allow' 'lib/low:\nlib/high:\n' \
  'lib/high/High.cpp:3: lib/high may not include lib/low: lib/low/Low.h'
_expect 'a circle in the table' 'lib/low: lib/high\nlib/high: lib/low\n' \
  "$folder/table:1: lib/high does not stand above lib/low"
_expect 'a room twice' 'lib/low:\nlib/low:\nlib/high: lib/low\n' \
  "$folder/table:2: lib/low has a line already"
_expect 'a folder without a line' 'lib/low:\n' "lib/high/High.cpp:1: lib/high has no line in $folder/table"
_expect 'a line without a folder' 'lib/low:\nlib/high: lib/low\nlib/top: lib/high\n' \
  "$folder/table:3: no source stands in lib/top"

_given lib/low/Old.h '<lib/high/New.h>'
_given lib/high/New.h ''
_expect 'a file against the order' 'lib/low:\nlib/high: lib/low\n' \
  'lib/low/Old.h:3: lib/low may not include lib/high: lib/high/New.h'
_expect 'a file with a line of its own' \
  'lib/low:\nlib/high: lib/low\nlib/low/Old.h: lib/high\n'
_given lib/high/High.cpp '<lib/low/Old.h>'
_expect 'an include of a file with a line of its own' \
  'lib/low:\nlib/high: lib/low\nlib/low/Old.h: lib/high\n' \
  'lib/high/High.cpp:3: lib/high may not include lib/low/Old.h: lib/low/Old.h'

_given lib/high/High.cpp '"low/Low.h"'
_expect 'a path that leads nowhere' 'lib/low:\nlib/high: lib/*\nlib/low/Old.h: lib/high\n' \
  'lib/high/High.cpp:3: no such file: low/Low.h'
_given lib/high/High.cpp '"../low/Low.h"'
_expect 'a path with dots' 'lib/low:\nlib/high: lib/low\nlib/low/Old.h: lib/high\n'

exit $((failures > 0))
