# Cases of `xmldom select`.

. "$(dirname "$0")/driver.bash"

_given_network() {
  given "$1" '<config>\n<interface name="eth0"><mtu>1500</mtu></interface>
<group><interface name="eth1"/></group>\n<interface name="lo"/>\n</config>'
}

select_writes_each_selected_node_as_xml() {
  _given_network a.xml
  run select /config/interface a.xml
  expect 0 "<interface name='eth0'>\n  <mtu>1500</mtu>\n</interface>\n<interface name='lo'/>\n" ''
}

select_understands_relative_paths_wildcards_and_predicates() {
  _given_network a.xml
  run select "config/*[@name='lo']" a.xml
  expect 0 "<interface name='lo'/>\n" ''
  run select "//interface[mtu=1500]/mtu" a.xml
  expect 0 '<mtu>1500</mtu>\n' ''
}

select_searches_at_every_depth_for_two_slashes() {
  _given_network a.xml
  run select --count //interface a.xml
  expect 0 '3\n' ''
}

select_of_nothing_says_no() {
  _given_network a.xml
  run select /config/route a.xml
  expect 1 '' ''
}

select_reads_standard_input() {
  run select /a/b <<< '<a><b/></a>'
  expect 0 '<b/>\n' ''
}

select_count_writes_the_number_alone() {
  _given_network a.xml
  run select --count /config/interface a.xml
  expect 0 '2\n' ''
  run select --count /config/route a.xml
  expect 1 '0\n' ''
}

select_count_writes_a_line_for_each_file() {
  _given_network a.xml
  given b.xml '<config/>'
  run select --count //interface a.xml b.xml
  expect 0 'a.xml:3\nb.xml:0\n' ''
  run select --count --no-filename //interface a.xml b.xml
  expect 0 '3\n0\n' ''
}

select_first_writes_one_node() {
  _given_network a.xml
  run select --first //interface/mtu a.xml
  expect 0 '<mtu>1500</mtu>\n' ''
  run select --first //route a.xml
  expect 1 '' ''
}

select_first_understands_dots() {
  _given_network a.xml
  run select --first '/config/group/../interface/./mtu' a.xml
  expect 0 '<mtu>1500</mtu>\n' ''
}

select_first_counts_at_most_one() {
  _given_network a.xml
  run select --first --count //interface a.xml
  expect 0 '1\n' ''
  run select --first --count //route a.xml
  expect 1 '0\n' ''
}

select_in_several_files_names_them_on_every_line() {
  _given_network a.xml
  given b.xml '<config><interface/></config>'
  run select /config/interface a.xml b.xml
  expect 0 "a.xml:<interface name='eth0'>\na.xml:  <mtu>1500</mtu>\na.xml:</interface>\n\
a.xml:<interface name='lo'/>\nb.xml:<interface/>\n" ''
}

select_says_yes_when_one_of_several_files_has_a_node() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  run select b a.xml b.xml
  expect 0 'b.xml:<b/>\n' ''
  run select b b.xml a.xml
  expect 0 'b.xml:<b/>\n' ''
  run select c a.xml b.xml
  expect 1 '' ''
}

select_with_trouble_in_one_file_ends_as_trouble() {
  given a.xml '<a/>'
  local missing='xmldom: no.xml: No such file or directory\n'
  run select a a.xml no.xml
  expect 2 'a.xml:<a/>\n' "$missing"
  run select b no.xml a.xml
  expect 2 '' "$missing"
}

select_understands_positions_and_tests_of_existence() {
  _given_network a.xml
  run select '/config/interface[2]' a.xml
  expect 0 "<interface name='lo'/>\n" ''
  run select --count '//interface[mtu]' a.xml
  expect 0 '1\n' ''
  run select --first '//interface[last()]' a.xml
  expect 0 "<interface name='eth1'/>\n" ''
}

select_writes_attributes_as_they_stand_in_a_tag() {
  given a.xml '<a x="1"><b x="&lt;&quot;2"/><b x=""/></a>'
  run select //@x a.xml
  expect 0 "x='1'\nx='&lt;&quot;2'\nx=''\n" ''
  run select --count //b/@x a.xml
  expect 0 '2\n' ''
}

select_source_writes_the_bytes_of_the_file() {
  given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?>\r\n<a><b  x = "\xe9"\r\n y="&#65;"  ><!-- c -->\r
  <c/>&amp;<![CDATA[<]]></b ><b/></a>'
  run select --source //b a.xml
  expect 0 '<b  x = "\xe9"\r\n y="&#65;"  ><!-- c -->\r\n  <c/>&amp;<![CDATA[<]]></b >\n<b/>\n' ''
  run select --source //@x a.xml
  expect 0 'x = "\xe9"\n' ''
  run select --source --first //c a.xml
  expect 0 '<c/>\n' ''
  run select --source //d a.xml
  expect 1 '' ''
}

select_source_writes_the_bytes_of_a_file_in_utf_16() {
  local from
  for from in UTF-16 UTF-16LE UTF-16BE; do
    printf '<?xml version="1.0" encoding="UTF-16"?>\n<a><b  x = "\xc3\xa9"  >&#65;\xf0\x9f\x99\x82</b ><b/></a>' |
      iconv -f UTF-8 -t "$from" > a.xml
    run_shell "\"\$tool\" select --source //b a.xml | iconv -f $from -t UTF-8"
    expect 0 '<b  x = "é"  >&#65;\xf0\x9f\x99\x82</b >\n<b/>\n' ''
    run select //b a.xml
    expect 0 "<b x='é'>&#65;\xf0\x9f\x99\x82</b>\n<b/>\n" ''
  done
}

select_source_tells_of_what_the_file_does_not_hold() {
  given a.xml '<!DOCTYPE a [<!ENTITY e "<b/>"><!ATTLIST c x CDATA "1">]>\n<a>&e;<c/><b/></a>'
  run select --source //b a.xml
  expect 2 '<b/>\n' 'a.xml:2:4: what is selected is not written here, an entity brings it
  <a>&e;<c/><b/></a>
     ^\n'
  run select --source //@x a.xml
  expect 2 '' 'a.xml:2:7: what is selected is not written here, the document type supplies it
  <a>&e;<c/><b/></a>
        ^\n'
}

select_needs_a_path() {
  run select
  expect_status 2
  expect_text stdout ''
  expect_part stderr PATH
}

select_never_writes_what_does_not_load_again_or_has_other_elements() {
  local because='not written, because what becomes of this element would'
  given a.xml '<a><b>1</b>\n<b>]]<c/>></b>\n<b><![CDATA[]]\n><admin/><![CDATA[]]></b><b>2</b></a>'
  run select /a/b a.xml
  expect 2 '<b>1</b>\n<b>2</b>\n' "a.xml:2:1: $because not load: not well-formed (invalid token)
  <b>]]<c/>></b>\n  ^\nxmldom: a.xml: 1 other element is not written for such a reason\n"
  run select /a/b[3] a.xml
  expect 2 '' "a.xml:3:1: $because load as something else\n  <b><![CDATA[]]\n  ^\n"
  run select --count /a/b a.xml
  expect 0 '4\n' ''
}

# Linear time takes a small part of a second, and quadratic time several minutes: the question marks are
# there for a search for the end of an XML declaration.
select_of_many_elements_takes_linear_time() {
  { echo '<a>'; yes '<b>y?y?y?y?</b>' | head -n 50000; echo '</a>'; } > a.xml
  { echo '<a>'; yes '<b>]]<c/>></b>' | head -n 20000; echo '</a>'; } > b.xml
  run_shell "ulimit -t 60; exec \"\$tool\" select //b a.xml | wc -l"
  expect 0 '50000\n' ''
  run_shell "ulimit -t 60; exec \"\$tool\" select //b b.xml"
  expect_status 2
  expect_part stderr 'xmldom: b.xml: 19999 other elements are not written for such a reason'
}

select_writes_references_to_entities_that_are_declared_elsewhere() {
  run select /a/b - <<< '<!DOCTYPE a SYSTEM "a.dtd"><a><b>&e;</b></a>'
  expect 0 '<b>&e;</b>\n' ''
}

run_cases
