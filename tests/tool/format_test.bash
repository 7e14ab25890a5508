# Cases of `xmldom format`.

. "$(dirname "$0")/driver.bash"

format_writes_an_element_a_line_indented_by_two() {
  given a.xml '<r a="1"><item>text</item><empty></empty></r>'
  run format a.xml
  expect 0 "<r a='1'>\n  <item>text</item>\n  <empty/>\n</r>\n" ''
}

format_writes_text_before_other_children() {
  given a.xml '<p>a<b/>c</p>'
  run format --quiet a.xml
  expect 0 '<p>\n  ac\n  <b/>\n</p>\n' ''
}

format_keeps_references() {
  given a.xml '<a b="&lt;&quot;">1 &amp; 2 &#65;</a>'
  run format a.xml
  expect 0 "<a b='&lt;&quot;'>1 &amp; 2 &#65;</a>\n" ''
}

format_leaves_out_what_stands_outside_the_root_element() {
  given a.xml '<?xml version="1.0"?>\n<!-- c -->\n<a/>\n<!-- d -->\n'
  run format --quiet a.xml
  expect 0 '<a/>\n' ''
}

format_indent_off_begins_every_line_at_the_first_column() {
  given a.xml '<r>\n    <item>text</item>\n    <b> <c/> </b>\n</r>'
  run format --indent-off a.xml
  expect 0 '<r>\n<item>text</item>\n<b>\n<c/>\n</b>\n</r>\n' ''
}

format_of_its_own_output_changes_nothing() {
  given a.xml '<r a="1"><item>text &amp; more</item><b><c d="2"/></b></r>'
  run format a.xml
  cp "$scratch/stdout" once.xml
  run format once.xml
  expect 0 "$(cat once.xml)\n" ''
}

format_tells_what_is_lost_or_moved() {
  given a.xml '<a>\n <!-- c -->\n one<b/>two</a><!-- d -->\n'
  run format a.xml
  expect 0 '<a>\n  <!-- c --> onetwo\n  <b/>\n</a>\n' "a.xml:2:2: a comment inside the root element was\
 moved into a text; and 4 other places\n   <!-- c -->\n   ^\n"
  run format --quiet a.xml
  expect 0 '<a>\n  <!-- c --> onetwo\n  <b/>\n</a>\n' ''
  given a.xml '<?xml version="1.0"?>\n<a>\n\t<b c = "1"></b>\n\n</a>\n'
  run format a.xml
  expect 0 "<a>\n  <b c='1'/>\n</a>\n" ''
  given a.xml '<a><!-- c --></a>\n'
  run format a.xml
  expect_part stderr 'a.xml:1:4: a comment inside the root element was moved into a text'
  grep -q other "$scratch/stderr" && fail
  given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?><a>\xe9</a>\n'
  run format a.xml
  expect_part stderr ': the encoding became UTF-8'
  given a.xml '<a b="x&#9;y"/>\n'
  run format a.xml
  expect_part stderr ': a tab or line break in an attribute value became a blank'
}

format_never_writes_what_does_not_load_again_or_has_other_elements() {
  local because='not written, because what becomes of this element would' option
  local invalid='not load: not well-formed (invalid token)'
  given a.xml '<a>]]<b/>></a>'
  given b.xml '<a><![CDATA[]]\n><admin right="all"/><![CDATA[]]></a>\n'
  given c.xml '<c/>'
  for option in --quiet --indent-off; do
    run format --no-filename $option a.xml b.xml c.xml
    expect 2 '<c/>\n' "a.xml:1:1: $because $invalid\n  <a>]]<b/>></a>\n  ^
b.xml:1:1: $because load as something else\n  <a><![CDATA[]]\n  ^\n"
  done
  given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?>\n<\xb5>\xe9</\xb5>\n'
  run format a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr "a.xml:2:1: $because $invalid"
}

format_writes_references_to_entities_that_are_declared_elsewhere() {
  given a.xml '<!DOCTYPE a SYSTEM "a.dtd">\n<a>&e;<b><![CDATA[x]]></b></a>\n'
  run format --quiet a.xml
  expect 0 '<a>\n  &e;\n  <b><![CDATA[x]]></b>\n</a>\n' ''
}

format_writes_marks_that_stay_where_they_are() {
  given a.xml '<a><b><![CDATA[]]]]><![CDATA[>]]></b><c>]] ></c><d e="]]>"/></a>\n'
  run format --quiet a.xml
  expect 0 "<a>\n  <b><![CDATA[]]]]><![CDATA[>]]></b>\n  <c>]] ></c>\n  <d e=']]&gt;'/>\n</a>\n" ''
}

run_cases
