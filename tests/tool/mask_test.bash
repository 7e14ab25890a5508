# Cases of `xmldom mask`.

. "$(dirname "$0")/driver.bash"

mask_leaves_out_every_value() {
  given a.xml '<a b="secret"><c>secret</c><d/>secret<e f="secret">secret</e></a>'
  run mask a.xml
  expect 0 "<a b=''>\n  \n  <c></c>\n  <d></d>\n  <e f=''></e>\n</a>\n" ''
}

mask_reads_standard_input() {
  run mask <<< '<a>secret</a>'
  expect 0 '<a></a>\n' ''
}

mask_of_several_files_names_them_on_every_line() {
  given a.xml '<a>secret</a>'
  run mask a.xml a.xml
  expect 0 'a.xml:<a></a>\na.xml:<a></a>\n' ''
}

mask_of_what_is_no_xml_is_trouble() {
  given a.xml '<a>'
  run mask a.xml
  expect 2 '' 'a.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
}

run_cases
