# Cases of `xmldom page`.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

_given_rows() { given a.xml '<a><rows><r>1</r><r>2</r><r>3</r></rows><r>4</r></a>'; }

page_writes_a_range_of_the_children_with_their_positions() {
  _given_rows
  run page --from 2 --rows 1 /a/rows a.xml
  expect 0 "<a>\n  <rows>\n    <r index='002'>2</r>\n  </rows>\n  <r>4</r>\n</a>\n" ''
}

page_begins_with_the_first_and_goes_to_the_last_unless_told_otherwise() {
  _given_rows
  run page /a/rows a.xml
  expect 0 "<a>\n  <rows>\n    <r index='001'>1</r>\n    <r index='002'>2</r>
    <r index='003'>3</r>\n  </rows>\n  <r>4</r>\n</a>\n" ''
  run page --from 3 /a/rows a.xml
  expect 0 "<a>\n  <rows>\n    <r index='003'>3</r>\n  </rows>\n  <r>4</r>\n</a>\n" ''
}

page_gives_the_node_its_page_attributes() {
  given a.xml '<a b="1" curPage="9"/>'
  run page --page 2 --pages 3 a a.xml
  expect_status 0
  expect_text stdout "<a curPage = '2' numPages = '3' b='1'/>\n"
  run page a a.xml
  expect 0 "<a b='1' curPage='9'/>\n" ''
}

page_fills_the_last_page_up() {
  given a.xml '<a><r/></a>'
  run page --rows 3 --pad '<r><s/></r>' /a a.xml
  expect 0 "<a>\n  <r index='001'/>\n<r index='002'><s/></r>\n<r index='003'><s/></r>\n</a>\n" ''
  run page --rows 2 --pad '<r/>' /a - <<< '<a/>'
  expect 0 "<a>\n<r index='001'/>\n<r index='002'/>\n</a>\n" ''
}

page_fills_up_with_more_than_100000_rows_only_when_told_to() {
  given a.xml '<a><r/></a>'
  run page --from 2000000000 --rows 10 --pad '<r/>' /a a.xml
  expect 2 '' 'xmldom: a.xml: the page would be filled up with 2000000008 rows; more than 100000 need --yes-pad\n'
  run page --from 100000 --rows 3 --pad '<r/>' /a a.xml
  expect_status 2
  run_shell '"$tool" page --from 100000 --rows 2 --pad "<r/>" /a a.xml | grep -c index='
  expect 0 '100000\n' ''
  run_shell '"$tool" page --from 100000 --rows 3 --pad "<r/>" --yes-pad /a a.xml | grep -c index='
  expect 0 '100001\n' ''
}

page_counts_the_rows_of_an_element_without_other_children_from_the_first() {
  local xml
  for xml in '<a/>' '<a>text</a>'; do
    run page --from 2000000000 --rows 1 --pad '<r/>' /a - <<< "$xml"
    expect_status 0
    run page --rows 100001 --pad '<r/>' /a - <<< "$xml"
    expect_status 2
    expect_text stdout ''
  done
}

page_far_behind_the_end_is_written_without_rows() {
  given a.xml '<a><r/></a>'
  run page --from 2000000000 --rows 10 /a a.xml
  expect 0 '<a>\n</a>\n' ''
}

page_takes_yes_pad_only_with_rows() {
  given a.xml '<a/>'
  run page --rows 3 --yes-pad /a a.xml
  expect 2 '' "xmldom: --yes-pad is for --pad\nxmldom: 'xmldom page --help' explains more\n"
}

page_takes_the_first_node_and_understands_dots() {
  given a.xml '<a><b><c/></b><b><c/></b></a>'
  run page //b a.xml
  expect 0 "<a>\n  <b>\n    <c index='001'/>\n  </b>\n  <b>\n    <c/>\n  </b>\n</a>\n" ''
  run page /a/b/../b a.xml
  expect_status 0
}

page_of_nothing_says_no() {
  _given_rows
  run page /a/none a.xml
  expect 1 '' ''
}

page_refuses_numbers_out_of_range() {
  _given_rows
  local option
  for option in --first=0 --count=0 --page=-1 --pages=-1 --from=many; do
    run page "$option" /a a.xml
    expect_status 2
    expect_text stdout ''
    expect_part stderr "${option%=*}"
  done
}

page_refuses_one_page_number_alone() {
  _given_rows
  local option
  for option in --page --pages; do
    run page "$option" 1 /a a.xml
    expect 2 '' "xmldom: --page and --pages are given together
xmldom: 'xmldom page --help' explains more\n"
  done
}

page_pads_only_pages_of_a_given_size() {
  _given_rows
  run page --pad '<r/>' /a a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr --rows
}

page_refuses_a_template_that_is_no_xml() {
  local help="xmldom: 'xmldom page --help' explains more\n"
  run page --rows 2 --pad '<r>' /a missing.xml
  expect 2 '' "xmldom: column 4 of the template: no element found, near <r>\n  <r>\n     ^\n$help"
  run page --rows 2 --pad '' /a missing.xml
  expect 2 '' "xmldom: column 1 of the template: no element found\n$help"
  run page --rows 2 --pad "<r a='>'/>" /a missing.xml
  expect 2 '' "xmldom: the first '>' of the template has to end its first tag\n$help"
}

page_refuses_a_path_that_cannot_be_used() {
  run page a/ missing.xml
  expect 2 '' "xmldom: column 3 of the path: a name is missing at the end\n  a/\n    ^
xmldom: 'xmldom page --help' explains more\n"
}

page_understands_positions_and_no_attributes() {
  run page --from 2 '/a/b[2]' <<< '<a><b><c/></b><b><c/><d/></b></a>'
  expect 0 "<a>\n  <b>\n    <c/>\n  </b>\n  <b>\n    <d index='002'/>\n  </b>\n</a>\n" ''
  run page /a/@b missing.xml
  expect 2 '' "xmldom: column 4 of the path: an element is needed here; an attribute has no children
  /a/@b\n     ^\nxmldom: 'xmldom page --help' explains more\n"
}

page_tells_the_new_names_of_options_that_select_has_too() {
  local help="xmldom: 'xmldom page --help' explains more\n"
  run page --first 2 /a missing.xml
  expect 2 '' "xmldom: --first of page is called --from now\n$help"
  run page --from 1 --count=2 /a missing.xml
  expect 2 '' "xmldom: --count of page is called --rows now\n$help"
}

page_never_writes_what_does_not_load_again_or_has_other_elements() {
  local because='not written, because what becomes of this element would'
  run page --rows 1 /a - <<< '<a><b>]]<c/>></b></a>'
  expect 2 '' "(standard input):1:4: $because not load: not well-formed (invalid token)
  <a><b>]]<c/>></b></a>\n     ^\n"
  run page /a - < <(printf '<a><![CDATA[]]\n><admin/><![CDATA[]]></a>')
  expect 2 '' "(standard input):1:1: $because load as something else\n  <a><![CDATA[]]\n  ^\n"
  run page --rows 1 /a - <<< '<a><b><![CDATA[x]]></b><b/></a>'
  expect 0 "<a>\n  <b index='001'><![CDATA[x]]></b>\n</a>\n" ''
}

page_refuses_rows_that_have_an_index_already() {
  local reason="the number of a row is written as an attribute 'index', so that the row must not have\
 one"
  given a.xml '<rows>\n <row/>\n <row n="1" index="5">a</row><row/>\n</rows>'
  run page /rows a.xml
  expect 2 '' "a.xml:3:13: $reason\n   <row n=\"1\" index=\"5\">a</row><row/>\n              ^\n"
  run page --from 2 --rows 1 /rows a.xml
  expect_status 2
  run page --rows 1 /rows a.xml
  expect 0 "<rows>\n  <row index='001'/>\n</rows>\n" ''
  run page --from 3 /rows a.xml
  expect 0 "<rows>\n  <row index='003'/>\n</rows>\n" ''
  # Only the rows get a number.
  run page /rows - <<< '<rows index="1"><row Index="2"><index index="3"/></row></rows>'
  expect 0 "<rows index='1'>\n  <row index='001' Index='2'>\n    <index index='3'/>\n  </row>\n</rows>\n" ''
}

run_cases
