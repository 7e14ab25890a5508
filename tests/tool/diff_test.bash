# Cases of `xmldom diff`.

. "$(dirname "$0")/driver.bash"

diff_says_nothing_about_equal_documents() {
  given a.xml '<a b="1"><c>text</c></a>'
  given b.xml "<?xml version='1.0'?><!-- c -->\n<a  b='1'>\n  <c>text</c>\n</a>\n"
  run diff a.xml b.xml
  expect 0 '' ''
  run diff a.xml a.xml
  expect 0 '' ''
}

diff_reports_the_first_difference_and_the_two_nodes() {
  given a.xml '<a><b>one</b><b>two</b></a>'
  given b.xml '<a><b>one</b><b>2</b></a>'
  run diff a.xml b.xml
  expect 1 'Failed at depth 1: text value mismatch, two vs 2-----\nNode 1:\n<#Text/>\n
-----\nNode 2:\n<#Text/>\n\n' ''
}

diff_reports_attributes() {
  given a.xml '<a><b c="1"/></a>'
  given b.xml '<a><b d="1"/></a>'
  run diff a.xml b.xml
  expect 1 "Failed at depth 1: Attribute name mismatch, c vs d-----\nNode 1:\n<b c='1'/>\n
-----\nNode 2:\n<b d='1'/>\n\n" ''
}

diff_reports_children_that_are_missing() {
  given a.xml '<a><b/></a>'
  given b.xml '<a/>'
  run diff a.xml b.xml
  expect 1 'Failed at depth 0: Node 1 has more children than Node 2\n-----\nNode 1:\n<a>\n  <b/>
</a>\n\n-----\nNode 2:\n<a/>\n\n' ''
}

diff_reports_one_difference_alone() {
  given a.xml '<r><a><x/></a><b/></r>'
  given b.xml '<r><a><x/><y/></a><b/></r>'
  run diff a.xml b.xml
  expect 1 'Failed at depth 1: Node 2 has more children than Node 1\n-----\nNode 1:\n<a>\n  <x/>
</a>\n\n-----\nNode 2:\n<a>\n  <x/>\n  <y/>\n</a>\n\n' ''
}

diff_reports_root_elements_of_different_names() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  run diff a.xml b.xml
  expect 1 'The root elements have different names: a and b\n' ''
}

diff_reads_one_document_from_standard_input() {
  given a.xml '<a/>'
  run diff a.xml - <<< '<a></a>'
  expect 0 '' ''
  run diff - a.xml <<< '<a b="1"/>'
  expect_status 1
  expect_part stdout 'Node 1 has more attributes than Node 2'
}

diff_of_what_cannot_be_read_is_trouble() {
  given a.xml '<a/>'
  given bad.xml '<a>'
  run diff a.xml missing.xml
  expect 2 '' 'xmldom: missing.xml: No such file or directory\n'
  run diff bad.xml a.xml
  expect 2 '' 'bad.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
}

diff_needs_two_files() {
  given a.xml '<a/>'
  run diff a.xml
  expect_status 2
  expect_part stderr B
  run diff a.xml a.xml a.xml
  expect_status 2
  expect_text stdout ''
}

diff_to_a_full_device_is_trouble() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  # The quoted line of bash is expanded where it runs.
  # shellcheck disable=SC2016
  run_shell '"$tool" diff a.xml b.xml > /dev/full'
  expect 2 '' 'xmldom: write error: No space left on device\n'
}

run_cases
