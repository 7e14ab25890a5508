# Cases of `xmldom path`.

. "$(dirname "$0")/driver.bash"

path_writes_the_place_of_each_selected_node() {
  given a.xml '<config><lan><port/></lan><wan><port n="1"/><port/></wan></config>'
  run path //port a.xml
  expect 0 '/config/lan/port\n/config/wan/port\n/config/wan/port\n' ''
  run path 'config/*' a.xml
  expect 0 '/config/lan\n/config/wan\n' ''
  run path /config a.xml
  expect 0 '/config\n' ''
}

path_first_writes_one_place_and_understands_dots() {
  given a.xml '<a><b/><c/><b/></a>'
  run path --first //b a.xml
  expect 0 '/a/b\n' ''
  run path --first /a/b/../c a.xml
  expect 0 '/a/c\n' ''
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
