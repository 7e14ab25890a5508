# Cases of how files and standard input are read, and of several files.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

a_missing_file_is_trouble_for_every_command() {
  local command
  for command in check 'edit --set / x' format mask 'page a' 'path a' 'select a' 'value a' tree; do
    # shellcheck disable=SC2086
    run $command missing.xml
    expect 2 '' 'xmldom: missing.xml: No such file or directory\n'
  done
}

a_folder_is_trouble() {
  mkdir folder
  run format folder
  expect 2 '' 'xmldom: folder: Is a directory\n'
  run format < folder
  expect 2 '' 'xmldom: (standard input): Is a directory\n'
}

an_empty_file_name_is_trouble() {
  run check ''
  expect 2 '' 'xmldom: : No such file or directory\n'
}

a_closed_standard_input_is_trouble() {
  run_shell '"$tool" check <&-'
  expect 2 '' 'xmldom: (standard input): Bad file descriptor\n'
}

a_file_that_is_not_well_formed_is_trouble_where_a_tree_is_needed() {
  given a.xml '<a>'
  local command
  for command in 'edit --set / x' format mask 'page a' 'path a' 'select a' 'value a' tree; do
    # shellcheck disable=SC2086
    run $command a.xml
    expect 2 '' 'a.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
  done
}

a_nul_byte_is_trouble_where_a_tree_is_needed() {
  given a.xml '<a/>\0'
  run format a.xml
  expect 2 '' 'a.xml:1:5: NUL byte\n  <a/>\\x00\n      ^\n'
}

standard_input_is_read_without_files_and_for_a_dash() {
  run format <<< '<a/>'
  expect 0 '<a/>\n' ''
  run format - <<< '<a/>'
  expect 0 '<a/>\n' ''
}

a_pipe_is_read_to_its_end() {
  run_shell '{ echo "<a>"; sleep 0.2; printf "<b/>%.0s" {1..100000}; echo "</a>"; } |
    "$tool" select --count //b'
  expect 0 '100000\n' ''
}

a_file_larger_than_the_first_buffer_is_read_whole() {
  given a.xml "<a>$(printf '<b>%0100d</b>' {1..3000})</a>"
  run select --count //b a.xml
  expect 0 '3000\n' ''
}

a_file_too_large_to_parse_is_trouble() {
  local size reason='more than 2147483647 bytes, which is too large to parse'
  # The last ones are small numbers to who keeps 32 bits of them.
  for size in 2147483648 4294967296 4294967303; do
    truncate -s "$size" a.xml
    run format a.xml
    expect 2 '' "xmldom: a.xml: $reason\n"
    run format < a.xml
    expect 2 '' "xmldom: (standard input): $reason\n"
    run format -i a.xml
    expect 2 '' "xmldom: a.xml: $reason\n"
  done
}

several_files_have_their_names_before_every_line() {
  given a.xml '<a><b>1</b></a>'
  run format a.xml - <<< '<c/>'
  expect 0 'a.xml:<a>\na.xml:  <b>1</b>\na.xml:</a>\n(standard input):<c/>\n' ''
}

no_filename_leaves_the_names_out() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  run format --no-filename a.xml b.xml
  expect 0 '<a/>\n<b/>\n' ''
}

with_filename_puts_the_name_before_every_line_of_one_file() {
  given a.xml '<a><b>1</b></a>'
  run format --with-filename a.xml
  expect 0 'a.xml:<a>\na.xml:  <b>1</b>\na.xml:</a>\n' ''
  run value -H a <<< '<a>x</a>'
  expect 0 '(standard input):x\n' ''
  run value -H --no-filename a a.xml
  expect_status 2
  expect_part stderr --no-filename
}

trouble_with_one_file_does_not_keep_the_tool_from_the_others() {
  given a.xml '<a/>'
  given bad.xml '<a'
  run format missing.xml a.xml bad.xml a.xml
  expect 2 'a.xml:<a/>\na.xml:<a/>\n' \
    'xmldom: missing.xml: No such file or directory\nbad.xml:1:1: unclosed token, near <a\n  <a\n  ^\n'
}

results_come_before_the_messages_about_later_files() {
  given a.xml '<a/>'
  run_shell '"$tool" format --no-filename a.xml missing.xml a.xml 2>&1'
  expect 2 '<a/>\nxmldom: missing.xml: No such file or directory\n<a/>\n' ''
}

run_cases
