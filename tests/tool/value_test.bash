# Cases of `xmldom value`.

. "$(dirname "$0")/driver.bash"

value_writes_the_text_of_each_node_on_a_line() {
  given a.xml '<a><b>one</b><b>two</b><b/></a>'
  run value /a/b a.xml
  expect 0 'one\ntwo\n\n' ''
}

value_is_the_character_data_between_the_tags() {
  given a.xml '<a> x<!-- c --><b>y\r\n&#x41;</b><![CDATA[<z>]]><?pi d?></a>'
  run value a a.xml
  expect 0 ' xy\nA<z>\n' ''
}

value_library_writes_what_programs_get() {
  given a.xml '<a>x<b>y</b>z<!-- c --></a>'
  run value --library a a.xml
  expect 0 'xz<!-- c --> y\n' ''
}

value_normalize_collapses_white_space() {
  given a.xml '<a>\n  <b c=" 1&#10;2 "> x\t y </b>\n</a>'
  run value --normalize //b a.xml
  expect 0 'x y\n' ''
  run value --normalize a a.xml
  expect 0 'x y\n' ''
  run value --normalize --library -f . -f @c //b a.xml
  expect 0 'x y\t1 2\n' ''
}

value_writes_references_as_what_they_stand_for() {
  given a.xml '<a><b>&lt;&amp;&gt;</b><b>&#233;</b></a>'
  run value //b a.xml
  expect 0 '<&>\n\xc3\xa9\n' ''
}

value_of_nothing_says_no() {
  given a.xml '<a/>'
  run value /a/b a.xml
  expect 1 '' ''
}

value_reads_standard_input() {
  run value a <<< '<a>text</a>'
  expect 0 'text\n' ''
}

value_attr_writes_the_attribute_and_passes_over_nodes_without_it() {
  given a.xml '<a><b id="1"/><b/><b id="&quot;2&apos; &amp; 3"/><b id=""/></a>'
  run value --attr id /a/b a.xml
  expect 0 "1\n\"2' & 3\n\n" ''
}

value_attr_that_no_node_has_says_no() {
  given a.xml '<a><b id="1"/></a>'
  run value --attr name /a/b a.xml
  expect 1 '' ''
  run value --attr '' /a/b a.xml
  expect 1 '' ''
}

value_first_writes_one_value() {
  given a.xml '<a><b id="1">one</b><b id="2">two</b></a>'
  run value --first //b a.xml
  expect 0 'one\n' ''
  run value --first --attr id /a/b/../b a.xml
  expect 0 '1\n' ''
  run value --first --attr name //b a.xml
  expect 1 '' ''
}

value_of_a_path_that_ends_in_an_attribute_is_its_value() {
  given a.xml '<a><b id="1"/><b/><b id="&quot;2&apos; &#38;&#10;3"/><b id=""/></a>'
  run value //b/@id a.xml
  expect 0 "1\n\"2' &\n3\n\n" ''
  run value '/a/b[last()]/@id' a.xml
  expect 0 '\n' ''
  run value --first /a/b/../b/@id a.xml
  expect 0 '1\n' ''
  run value //b/@name a.xml
  expect 1 '' ''
}

_given_ports() {
  given "$1" '<lan><port n="1"><name>a</name><peer><ip>1.1</ip><ip>1.2</ip></peer></port>
<port n="2"/><port><name>c&amp;d</name></port></lan>'
}

value_fields_make_a_row_of_each_node() {
  _given_ports a.xml
  run value -f @n -f name -f 'peer/ip[2]' //port a.xml
  expect 0 '1\ta\t1.2\n2\t\t\n\tc&d\t\n' ''
  run value --field . --field ../port/@n '//port[peer]' a.xml
  expect 0 'a1.11.2\t1\n' ''
  run value -f @n //switch a.xml
  expect 1 '' ''
}

value_separator_stands_between_fields() {
  _given_ports a.xml
  run value -f @n -f name --separator ', ' //port a.xml
  expect 0 '1, a\n2, \n, c&d\n' ''
  run value -f @n -f name --separator '' //port a.xml
  expect 0 '1a\n2\nc&d\n' ''
}

value_writes_line_breaks_and_tabs_in_fields_as_they_stand() {
  given a.xml '<a><b>1\n2</b><c>3\t4</c></a>'
  run value -f b -f c a a.xml
  expect 0 '1\n2\t3\t4\n' ''
  run value -0 -f b -f c a a.xml
  expect 0 '1\n2\t3\t4\0' ''
  run value --normalize -f b -f c a a.xml
  expect 0 '1 2\t3 4\n' ''
}

value_refuses_options_that_do_not_go_together() {
  run value -f @a --attr b //c missing.xml
  expect 2 '' "xmldom: with --field, an attribute is a field too, such as -f @name
xmldom: 'xmldom value --help' explains more\n"
  run value --attr a //b/@c missing.xml
  expect 2 '' "xmldom: with --attr, the path has to end in an element
xmldom: 'xmldom value --help' explains more\n"
  run value --separator , //c missing.xml
  expect 2 '' "xmldom: --separator stands between fields; --field names them
xmldom: 'xmldom value --help' explains more\n"
  run value -f 'a[' //c missing.xml
  expect 2 '' "xmldom: column 2 of the field: '[' without ']'\n  a[\n   ^
xmldom: 'xmldom value --help' explains more\n"
}

value_null_ends_values_with_nul() {
  given a.xml '<a><b>one&#10;two</b><b>three</b></a>'
  run value -0 //b a.xml
  expect 0 'one\ntwo\0three\0' ''
  run value --null //b a.xml
  expect 0 'one\ntwo\0three\0' ''
}

value_in_several_files_names_them_on_every_line() {
  given a.xml '<a>one&#10;two&#10;</a>'
  given b.xml '<a/>'
  run value a a.xml b.xml
  expect 0 'a.xml:one\na.xml:two\na.xml:\nb.xml:\n' ''
  run value a --no-filename a.xml b.xml
  expect 0 'one\ntwo\n\n\n' ''
}

value_in_several_files_names_them_before_every_value_that_ends_with_nul() {
  given a.xml '<a>one&#10;two</a>'
  given b.xml '<a>three</a>'
  run value -0 a a.xml b.xml
  expect 0 'a.xml:one\ntwo\0b.xml:three\0' ''
}

value_prints_nothing_but_values_for_many_references() {
  given a.xml "<a>$(printf '<b>&amp;%d</b>' {1..200})</a>"
  run value //b a.xml
  expect 0 "$(printf '&%d\\n' {1..200})" ''
}

value_needs_a_path() {
  run value
  expect_status 2
  expect_text stdout ''
  expect_part stderr PATH
}

run_cases
