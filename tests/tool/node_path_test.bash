# Cases of `xmldom path`.

. "$(dirname "$0")/driver.bash"

path_writes_the_place_of_each_selected_node() {
  given a.xml '<config><lan><port/></lan><wan><port n="1"/><port/></wan></config>'
  run path //port a.xml
  expect 0 '/config/lan/port\n/config/wan/port[1]\n/config/wan/port[2]\n' ''
  run path 'config/*' a.xml
  expect 0 '/config/lan\n/config/wan\n' ''
  run path /config a.xml
  expect 0 '/config\n' ''
}

path_first_writes_one_place_and_understands_dots() {
  given a.xml '<a><b/><c/><b/></a>'
  run path --first //b a.xml
  expect 0 '/a/b[1]\n' ''
  run path --first /a/b/../c a.xml
  expect 0 '/a/c\n' ''
}

path_writes_the_place_of_an_attribute() {
  run path //port/@n <<< '<lan><port/><port n="1"/><hub><port n="2"/></hub></lan>'
  expect 0 '/lan/port[2]/@n\n/lan/hub/port/@n\n' ''
}

what_path_writes_selects_that_node_alone() {
  given a.xml '<a><b><c/><c/></b><b><c n="1"/></b><d><c/></d></a>'
  local path count=0
  run path //c a.xml
  while IFS= read -r path; do
    [ "$("$tool" path "$path" a.xml)" = "$path" ] || fail
    count=$((count + 1))
  done < "$scratch/stdout"
  [ "$count" = 4 ] || fail
}

path_of_nothing_says_no() {
  run path //b <<< '<a/>'
  expect 1 '' ''
}

path_in_several_files_names_them_on_every_line() {
  given a.xml '<a><c/></a>'
  given b.xml '<b><c/></b>'
  run path //c a.xml b.xml
  expect 0 'a.xml:/a/c\nb.xml:/b/c\n' ''
  run path --no-filename //c a.xml b.xml
  expect 0 '/a/c\n/b/c\n' ''
}

path_refuses_a_path_that_cannot_be_used() {
  run path 'a[' missing.xml
  expect 2 '' "xmldom: column 2 of the path: '[' without ']'\n  a[\n   ^
xmldom: 'xmldom path --help' explains more\n"
}

run_cases
