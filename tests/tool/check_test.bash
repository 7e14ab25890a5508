# Cases of `xmldom check`.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

check_says_nothing_about_a_well_formed_file() {
  given a.xml '<a/>'
  run check a.xml
  expect 0 '' ''
}

check_verbose_says_that_a_file_is_well_formed() {
  given a.xml '<a/>'
  run check --verbose a.xml
  expect 0 '' 'a.xml: well-formed\n'
}

check_reads_standard_input_without_files() {
  run check <<< '<a><b/></a>'
  expect 0 '' ''
  run check --verbose <<< '<a/>'
  expect 0 '' '(standard input): well-formed\n'
}

check_reads_standard_input_for_a_dash() {
  given a.xml '<a/>'
  run check --verbose a.xml - <<< '<b/>'
  expect 0 '' 'a.xml: well-formed\n(standard input): well-formed\n'
}

check_gives_line_column_reason_and_tag_of_an_error_and_shows_it() {
  given a.xml '<a>\n  <b></c>\n</a>'
  run check a.xml
  expect 1 '' 'a.xml:2:8: mismatched tag, near </c>\n    <b></c>\n         ^\n'
}

check_gives_the_same_about_standard_input() {
  run check <<< '<a>&x;</a>'
  expect 1 '' '(standard input):1:4: undefined entity, near <a>\n  <a>&x;</a>\n     ^\n'
}

check_leaves_the_tag_out_when_there_is_none() {
  given a.xml 'hello'
  run check a.xml
  expect 1 '' 'a.xml:1:1: syntax error\n  hello\n  ^\n'
}

check_cuts_a_long_tag_and_joins_its_lines() {
  given a.xml '<a>\n<b  one="1"\n\t two="2" three="3" four="4" five="5" six="6" seven="7" eight=>'
  run check a.xml
  expect_status 1
  expect_text stdout ''
  expect_part stderr \
    'near <b one="1" two="2" three="3" four="4" five="5" six="6" seven...'
}

check_of_an_empty_file_shows_no_line() {
  given a.xml ''
  run check a.xml
  expect 1 '' 'a.xml:1:1: no element found\n'
}

check_finds_a_file_that_was_cut_off() {
  given a.xml '<a>\n<b>text'
  run check a.xml
  expect 1 '' 'a.xml:2:8: no element found, near <b>\n  <b>text\n         ^\n'
  given a.xml '<a>\n<b>text\n'
  run check a.xml
  expect 1 '' 'a.xml:3:1: no element found, near <b>\n'
}

check_finds_a_second_root_element() {
  given a.xml '<a/>\n<b/>\n'
  run check a.xml
  expect 1 '' 'a.xml:2:1: junk after document element, near <b/>\n  <b/>\n  ^\n'
}

check_keeps_the_caret_in_line_behind_tabs() {
  given a.xml '\t<a>\tx\t</b>'
  run check a.xml
  expect 1 '' 'a.xml:1:10: mismatched tag, near </b>\n  \t<a>\tx\t</b>\n  \t   \t \t  ^\n'
}

check_counts_columns_in_characters() {
  given a.xml '<a>\xc3\xa9\xc3\xa9</b>'
  run check a.xml
  expect 1 '' 'a.xml:1:8: mismatched tag, near </b>\n  <a>\xc3\xa9\xc3\xa9</b>\n         ^\n'
}

check_keeps_the_caret_in_line_behind_wide_and_combining_characters() {
  given a.xml '<a>\xe6\xbc\xa2e\xcc\x81</b>'
  run check a.xml
  expect 1 '' \
    'a.xml:1:9: mismatched tag, near </b>\n  <a>\xe6\xbc\xa2e\xcc\x81</b>\n          ^\n'
}

check_knows_every_kind_of_line_end() {
  given a.xml '<a>\r\n<x>\r\n</b>\r\n'
  run check a.xml
  expect 1 '' 'a.xml:3:3: mismatched tag, near </b>\n  </b>\n    ^\n'
  given a.xml '<a>\r<x>\r</b>\r'
  run check a.xml
  expect 1 '' 'a.xml:3:3: mismatched tag, near </b>\n  </b>\n    ^\n'
}

check_makes_bytes_visible_that_a_terminal_would_obey() {
  given a.xml '<a>\xc2\x9b\xe2\x80\xae</b>'
  run check a.xml
  expect 1 '' \
    'a.xml:1:8: mismatched tag, near </b>\n  <a>\\xC2\\x9B\\xE2\\x80\\xAE</b>\n                           ^\n'
  given a.xml '<a>\033[1m\x80'
  run check a.xml
  expect 1 '' \
    'a.xml:1:4: not well-formed (invalid token), near <a>\n  <a>\\x1B[1m\\x80\n     ^\n'
}

check_shows_a_byte_order_mark() {
  given a.xml '\xef\xbb\xbf<a></b>'
  run check a.xml
  expect 1 '' 'a.xml:1:7: mismatched tag, near </b>\n  \\xEF\\xBB\\xBF<a></b>\n                   ^\n'
}

check_shows_bytes_of_another_encoding() {
  given a.xml '<?xml version="1.0" encoding="ISO-8859-1"?>\n<a>\xe9\xff</b>'
  run check a.xml
  expect 1 '' 'a.xml:2:8: mismatched tag, near </b>\n  <a>\\xE9\\xFF</b>\n               ^\n'
}

check_cuts_a_long_line_around_the_column() {
  local many
  many=$(printf '%01000d' 0)
  given a.xml "<a>$many</b>$many"
  run check a.xml
  local before=00000000000000000000000000000000000000 after=00000000000000000000000000000000
  expect 1 '' "a.xml:1:1006: mismatched tag, near </b>\n  ...$before</b>${after}00...\n\
                                             ^\n"
}

check_cuts_a_long_line_only_where_it_goes_on() {
  given a.xml "<a></b>$(printf '%01000d' 0)"
  run check a.xml
  expect 1 '' "a.xml:1:6: mismatched tag, near </b>\n  <a></b>$(printf '%034d' 0)...\n       ^\n"
  given a.xml "<a>$(printf '%01000d' 0)"
  run check a.xml
  expect 1 '' "a.xml:1:1004: no element found, near <a>\n  ...$(printf '%040d' 0)\n\
                                             ^\n"
}

check_reports_a_nul_byte() {
  given a.xml '<a>\n<b/>\0</a>'
  run check a.xml
  expect 1 '' 'a.xml:2:5: NUL byte\n  <b/>\\x00</a>\n      ^\n'
}

check_refuses_a_program_file() {
  given a.xml '\x7fELF\x02\x01\x01\0\0'
  run check a.xml
  expect 1 '' 'a.xml:1:1: not well-formed (invalid token)\n  \\x7FELF\\x02\\x01\\x01\\x00\\x00\n  ^\n'
}

_given_utf_16() { printf '<?xml version="1.0" encoding="utf-16"?>\n<a>é</a>\n' | iconv -f UTF-8 -t "$2" > "$1"; }

check_reads_utf_16_of_which_the_encoding_would_be_lost() {
  local from lost='the encoding would become UTF-8'
  for from in UTF-16 UTF-16LE UTF-16BE; do
    _given_utf_16 a.xml "$from"
    run check a.xml
    expect 0 '' ''
    run check --lossless a.xml
    expect_status 1
    expect_part stderr "a.xml:1:1: $lost"
  done
  run format -i a.xml
  expect_status 2
  cp a.xml b.xml
  run format -i.old --lossy --quiet a.xml
  expect 0 '' ''
  cmp a.xml.old b.xml || fail
  expect_file a.xml '<?xml version="1.0" encoding="UTF-8" ?>\n<a>é</a>\n'
}

text_that_is_not_what_utf_16_can_be_is_refused() {
  printf '<?xml version="1.0" encoding="UTF-8"?>\n<a/>\n' | iconv -f UTF-8 -t UTF-16LE > a.xml
  run check a.xml
  expect_status 1
  run tree a.xml
  expect 2 '' 'a.xml:1:30: the text is in UTF-16, and declares another encoding
  <?xml version="1.0" encoding=\n                               ^\n'
  printf '<\0a\0/' > b.xml
  run tree b.xml
  expect 2 '' 'b.xml:1:3: no character in UTF-16\n  <a\n    ^\n'
}

unknown_encodings_are_named_with_those_that_are_known_and_a_conversion() {
  given a.xml '<?xml version="1.0" encoding="windows-1252"?>\n<a>\x80</a>\n'
  local command='iconv -f windows-1252 -t UTF-8 FILE' reason
  command+=" | sed '1s/windows-1252/UTF-8/I' > NEW"
  reason="a.xml:1:31: unknown encoding windows-1252; UTF-8, UTF-16, ISO-8859-1 and US-ASCII are known; \
to convert: $command
  <?xml version=\"1.0\" encoding=\"windows-1252\"?>\n                                ^\n"
  run check a.xml
  expect 1 '' "$reason"
  run value a a.xml
  expect 2 '' "$reason"
  command=${command/FILE/a.xml}
  bash -c "${command/NEW/b.xml}" || fail
  run value a b.xml
  expect 0 '€\n' ''
}

check_takes_little_memory_for_a_large_text() {
  [ "$slowness" -eq 1 ] || skip 'memory cannot be limited here'
  run_shell 'set -o pipefail; { echo "<r>"; yes "<a b=\"c\">text</a>" | head -n 3000000; echo "</r>"; } |
    (ulimit -v 20000; "$tool" check --verbose)'
  expect 0 '' '(standard input): well-formed\n'
}

check_looks_at_all_files_and_ends_with_the_worst() {
  given good.xml '<a/>'
  given bad.xml '<a>'
  local complaint='bad.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
  local missing='xmldom: no.xml: No such file or directory\n'
  run check good.xml bad.xml good.xml
  expect 1 '' "$complaint"
  run check bad.xml no.xml good.xml
  expect 2 '' "$complaint$missing"
  run check no.xml bad.xml
  expect 2 '' "$missing$complaint"
  run check good.xml good.xml
  expect 0 '' ''
}

check_needs_no_standard_output() {
  given a.xml '<a/>'
  run_shell '"$tool" check a.xml >&-'
  expect 0 '' ''
}

run_cases
