# Cases of `xmldom value`.

. "$(dirname "$0")/driver.bash"

value_writes_the_text_of_each_node_on_a_line() {
  given a.xml '<a><b>one</b><b>two</b><b/></a>'
  run value /a/b a.xml
  expect 0 'one\ntwo\n\n' ''
}

value_collects_the_text_below_a_node() {
  given a.xml '<a>x<b>y</b>z</a>'
  run value a a.xml
  expect 0 'xz y\n' ''
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
