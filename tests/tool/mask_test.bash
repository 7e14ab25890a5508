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

mask_tells_what_it_leaves_out_besides_the_values() {
  given a.xml '<?xml version="1.0"?>\n<!-- c -->\n<a>x\n <b/>y</a>\n<!-- d -->\n'
  run mask a.xml
  expect 0 '<a>\n  \n  <b></b>\n</a>\n' "a.xml:2:1: a comment outside the root element was lost; and 1\
 other place\n  <!-- c -->\n  ^\n"
  run mask --quiet a.xml
  expect 0 '<a>\n  \n  <b></b>\n</a>\n' ''
}

mask_never_writes_names_that_do_not_load_again() {
  given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?>\n<a \xba="1">]]<b/>></a>\n'
  run mask a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr 'a.xml:2:1: not written, because what becomes of this element would not load: '
  run mask --quiet - <<< '<a>]]<b/>></a>'
  expect 0 '<a>\n  \n  <b></b>\n</a>\n' ''
}

run_cases
