# Cases of `xmldom format -i`.

. "$(dirname "$0")/driver.bash"

format_in_place_replaces_the_file_and_keeps_what_stands_outside_the_root_element() {
  given a.xml '\xef\xbb\xbf<?xml version="1.0"?>\n\n<!-- c -->\n<a ><b>x</b></a >\n\n<!-- d -->'
  run format -i a.xml
  expect 0 '' ''
  expect_file a.xml \
    '\xef\xbb\xbf<?xml version="1.0"?>\n\n<!-- c -->\n<a>\n  <b>x</b>\n</a>\n\n<!-- d -->'
}

format_in_place_with_a_suffix_keeps_the_old_file() {
  given a.xml '<a ><b/></a>'
  run format -i~ --indent-off a.xml
  expect 0 '' ''
  expect_file a.xml '<a>\n<b/>\n</a>\n'
  expect_file a.xml~ '<a ><b/></a>'
}

format_in_place_replaces_each_of_several_files() {
  given a.xml '<a ></a>'
  given b.xml '<b>\n</b>'
  given c.xml '<c ></c>'
  run format -i a.xml b.xml missing.xml c.xml
  expect 2 '' 'b.xml:1:4: a text of white space alone would be lost\n  <b>\n     ^
xmldom: nothing is replaced; --lossy does it all the same
xmldom: missing.xml: No such file or directory\n'
  expect_file a.xml '<a/>\n'
  expect_file b.xml '<b>\n</b>'
  expect_file c.xml '<c/>\n'
}

format_in_place_is_lossy_when_told_so() {
  given a.xml '<a>1<b/>2<!-- 3 --></a>'
  run format -i --lossy --quiet a.xml
  expect 0 '' ''
  expect_file a.xml '<a>\n  12<!-- 3 -->\n  <b/>\n</a>\n'
}

format_in_place_tells_what_it_has_lost() {
  given a.xml '<a>1<b/>2</a>'
  run format -i --lossy a.xml
  expect 0 '' 'a.xml:1:4: text beside elements was moved before them; and 1 other place
  <a>1<b/>2</a>\n     ^\n'
}

format_in_place_leaves_a_formatted_file_alone() {
  given a.xml '<?xml version="1.0"?>\n<a>\n  <b/>\n</a>\n'
  local before
  before=$(stat -c '%i %y' a.xml)
  run format -i a.xml
  expect 0 '' ''
  [ "$(stat -c '%i %y' a.xml)" = "$before" ] || fail
}

format_in_place_leaves_what_is_no_xml_alone() {
  given a.xml '<a>'
  run format -i a.xml
  expect 2 '' 'a.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
  expect_file a.xml '<a>'
}

format_in_place_refuses_standard_input() {
  run format -i <<< '<a/>'
  expect 2 '' "xmldom: -i needs a file; standard input cannot be replaced
xmldom: 'xmldom format --help' explains more\n"
}

lossy_is_only_for_files_that_are_replaced() {
  given a.xml '<a/>'
  run format --lossy a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr '-i'
}

_because() { echo "not replaced, because what becomes of this element would $1"; }

format_in_place_never_writes_what_does_not_load_again() {
  local layout invalid='load: not well-formed (invalid token)'
  for layout in --lossy '--lossy --indent-off'; do
    given a.xml '<a>]]><b/>></a>'
    run format -i --quiet $layout a.xml
    expect_status 2
    given a.xml '<r>\n<a>]]<b/>></a></r>'
    run format -i.old $layout a.xml
    expect 2 '' "a.xml:2:1: $(_because "not $invalid")\n  <a>]]<b/>></a></r>\n  ^\n"
    expect_file a.xml '<r>\n<a>]]<b/>></a></r>'
    expect_names . a.xml
    given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?><a><b\xaa/></a>'
    run format -i --in-place=write $layout a.xml
    expect_part stderr "a.xml:1:44: $(_because "not $invalid")"
    expect_status 2
    expect_file a.xml '<?xml version="1.0" encoding="ISO-8859-1"?><a><b\xaa/></a>'
  done
}

format_in_place_never_writes_other_elements() {
  local forged='<a><![CDATA[]]\n><admin right="all"/><![CDATA[]]></a>\n'
  given a.xml "$forged"
  given b.xml '<b></b>\n'
  run format -i --lossy --quiet a.xml b.xml
  expect 2 '' "a.xml:1:1: $(_because 'load as something else')\n  <a><![CDATA[]]\n  ^\n"
  expect_file a.xml "$forged"
  expect_file b.xml '<b/>\n'
}

format_in_place_keeps_references_to_entities_that_the_document_type_declares_elsewhere() {
  given a.xml '<!DOCTYPE a SYSTEM "a.dtd">\n<a >&e;</a >\n'
  run format -i a.xml
  expect 0 '' ''
  expect_file a.xml '<!DOCTYPE a SYSTEM "a.dtd">\n<a>&e;</a>\n'
}

run_cases
