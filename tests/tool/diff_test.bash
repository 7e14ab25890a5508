# Cases of `xmldom diff`.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

diff_says_nothing_about_equal_documents() {
  given a.xml '<a b="1"><c>text</c></a>'
  given b.xml "<?xml version='1.0'?><!-- c -->\n<a  b='1'>\n  <c>text</c>\n</a>\n"
  run diff a.xml b.xml
  expect 0 '' ''
  run diff a.xml a.xml
  expect 0 '' ''
}

diff_tells_place_path_and_node_of_the_first_difference_in_both_files() {
  given a.xml '<a>\n  <b>one</b>\n  <b>two</b>\n  <c/>\n</a>\n'
  given b.xml '<a><b>one</b><b>2</b><d/></a>'
  run diff a.xml b.xml
  expect 1 "a.xml:3:6: /a/b[2]: text 'two'\nb.xml:1:17: /a/b[2]: text '2'\n" ''
}

diff_tells_places_of_attributes_and_of_what_is_missing() {
  given a.xml '<a>\n  <b x="1"\n     c="1"/>\n</a>'
  given b.xml "<a><b x='1' d='\xc3\xa9'/></a>"
  run diff a.xml b.xml
  expect 1 "a.xml:3:6: /a/b/@c: attribute c='1'\nb.xml:1:13: /a/b/@d: attribute d='\xc3\xa9'\n" ''
  given b.xml '<a/>'
  run diff a.xml b.xml
  expect 1 'a.xml:2:3: /a/b: element <b>\nb.xml:1:1: /a: no element\n' ''
}

diff_of_all_tells_every_difference_in_order() {
  given a.xml '<r><a><x/></a><b>1</b><c/></r>'
  given b.xml '<r>\n<a><x/><y/></a>\n<b>2</b>\n</r>'
  run diff --all a.xml b.xml
  expect 1 "a.xml:1:4: /r/a: no element\nb.xml:2:8: /r/a/y: element <y>
a.xml:1:18: /r/b: text '1'\nb.xml:3:4: /r/b: text '2'
a.xml:1:23: /r/c: element <c>\nb.xml:1:1: /r: no element\n" ''
  run diff --all a.xml a.xml
  expect 0 '' ''
}

diff_reports_root_elements_of_different_names() {
  given a.xml '<a><b/></a>'
  given b.xml '<b/>'
  run diff --all a.xml b.xml
  expect 1 'a.xml:1:1: /a: element <a>\nb.xml:1:1: /b: element <b>\n' ''
}

diff_of_many_differences_takes_linear_time() {
  local side
  for side in a b; do
    { printf '<r>'; yes "<n>$side</n><m/>" | head -n "$(scaled 30000)" | tr -d '\n'; echo '</r>'; } > $side.xml
  done
  run_shell '(ulimit -t 60; "$tool" diff --all a.xml b.xml) | wc -l'
  expect 0 "$((2 * $(scaled 30000)))\n" ''
}

# Each of the lines has a path as long as the element is deep: 50 MB in all, of which no more than one
# line is kept.
diff_of_many_differences_in_deep_documents_takes_little_memory() {
  if [ "$slowness" -ne 1 ]; then skip 'memory cannot be limited here'; fi
  local side
  for side in a b; do
    {
      yes "<e k='$side'>" | head -n 5000
      yes '</e>' | head -n 5000
    } > $side.xml
  done
  run_shell '(ulimit -v 32768; exec "$tool" diff --all a.xml b.xml) | awk "END { print NR, length }"'
  # The last line is "b.xml:5000:4: /e/e/ and so on /e/@k: attribute k='b'".
  expect 0 '10000 10034\n' ''
}

diff_reads_one_document_from_standard_input() {
  given a.xml '<a/>'
  run diff a.xml - <<< '<a></a>'
  expect 0 '' ''
  run diff - a.xml <<< '<a b="1"/>'
  expect_status 1
  expect_part stdout "(standard input):1:4: /a/@b: attribute b='1'"
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
  run_shell '"$tool" diff a.xml b.xml > /dev/full'
  expect 2 '' 'xmldom: write error: No space left on device\n'
}

run_cases
