# Cases of `xmldom edit` on its way to standard output: what each edit does, and what is refused.

. "$(dirname "$0")/driver.bash"

_help="xmldom: 'xmldom edit --help' explains more\n"

# edits BEFORE AFTER ARGUMENT...: the arguments make the one document of the other.
_edits() {
  given a.xml "$1"
  run edit "${@:3}" a.xml
  expect 0 "$2" ''
}

edit_appends() {
  _edits '<a><b/></a>' '<a>\n  <b/>\n  <c d='\''1'\''>x</c>\n</a>\n' --append /a '<c d="1">x</c>'
  _edits '<a><b/></a>' '<a>\n  <b>\n    <c/>\n  </b>\n</a>\n' --append //b '<c/>'
}

edit_inserts_before() {
  _edits '<a><b/><c/></a>' '<a>\n  <b/>\n  <d/>\n  <c/>\n</a>\n' --insert-before /a/c '<d/>'
  _edits '<a><b/><c/></a>' '<a>\n  <d/>\n  <b/>\n  <c/>\n</a>\n' --insert-before /a/b '<d/>'
}

edit_replaces() {
  _edits '<a><b>x</b><c/></a>' '<a>\n  <d/>\n  <c/>\n</a>\n' --replace /a/b '<d/>'
  _edits '<a><b/></a>' '<c/>\n' --replace /a '<c/>'
}

edit_removes() {
  _edits '<a><b>x</b><c/></a>' '<a>\n  <c/>\n</a>\n' --remove /a/b
  _edits '<a><b/></a>' '<a/>\n' --remove //b
}

edit_sets_a_text_and_escapes_it() {
  _edits '<a><b/></a>' '<a>\n  <b>1 &lt; 2 &amp; 3</b>\n</a>\n' --set /a/b '1 < 2 & 3'
  _edits '<a>old</a>' '<a>&amp;lt;</a>\n' --set a '&lt;'
  _edits '<a>old</a>' '<a/>\n' --set a ''
}

edit_sets_a_text_that_is_read_as_it_was_given() {
  local text
  for text in $' \n' $'a\nb\r\tc' '& <' "it's \"it\"" $'\xc3\xa9 \xe2\x82\xac' ' x ' ']]>' '[x,y]' \
    -5 -i -- --remove - '' '{}' '%d' \\; do
    given a.xml '<a>old</a>'
    run edit a.xml --set /a "$text"
    cp "$scratch/stdout" b.xml
    run check --lossless b.xml
    expect 0 '' ''
    run value -0 /a b.xml
    expect_status 0
    printf '%s\0' "$text" | cmp - "$scratch/stdout" || fail
  done
}

edit_sets_attributes() {
  _edits '<a b="1" c="2"/>' "<a b='x' c='2'/>\n" --set-attr /a b x
  _edits '<a b="1"/>' "<a b='1' c='&lt;it&apos;s&gt;&#9;&#10;'/>\n" --set-attr /a c "<it's>"$'\t\n'
  _edits '<a/>' "<a b=''/>\n" --set-attr /a b ''
}

edits_are_done_in_the_order_in_which_they_stand() {
  _edits '<a/>' '<a>\n  <b>x</b>\n</a>\n' --append /a '<b/>' --set /a/b x
  _edits '<a/>' '<a>\n  <b>2</b>\n  <b>1</b>\n</a>\n' --append /a '<b>1</b>' \
    --insert-before /a/b '<c/>' --replace /a/c '<b>2</b>'
  _edits '<a><b/></a>' "<a>\n  <b c='2'/>\n</a>\n" --set-attr /a/b c 1 --remove /a/b \
    --append /a '<b/>' --set-attr /a/b c 2
}

edit_takes_a_slash_for_the_root_element() {
  _edits '<a/>' "<a b='1'>\n  <c/>\n</a>\n" --append / '<c/>' --set-attr / b 1
  _edits '<a/>' '<b/>\n' --replace / '<b/>'
}

edit_changes_the_first_node_that_a_path_selects() {
  _edits '<a><b/><b/></a>' '<a>\n  <b>x</b>\n  <b/>\n</a>\n' --set //b x
  _edits '<a><b/><c/></a>' '<a>\n  <b/>\n  <c>x</c>\n</a>\n' --set /a/b/../c x
}

edit_keeps_what_stands_outside_the_root_element() {
  _edits '<?xml version="1.0"?>\n<!-- b -->\n<a/>\n<?c?>\n\n' \
    '<?xml version="1.0"?>\n<!-- b -->\n<a>x</a>\n<?c?>\n\n' --set / x
  _edits '<!DOCTYPE a [\n]><a/>' '<!DOCTYPE a [\n]><a>x</a>\n' --set / x
}

edit_turns_what_is_in_another_encoding_into_utf_8() {
  _edits '<?xml version="1.0" encoding="ISO-8859-1"?>\n<!-- \xe9 -->\n<a>\xe9</a>\n<!-- \xff -->' \
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- \xc3\xa9 -->\n<a b='1'>\xc3\xa9</a>\n\
<!-- \xc3\xbf -->" --set-attr / b 1
}

edit_indent_off_begins_every_line_at_the_first_column() {
  _edits '<a><b/></a>' '<a>\n<b/>\n<c/>\n</a>\n' --indent-off --append / '<c/>'
}

edit_reads_standard_input() {
  run edit --set /a x <<< '<a/>'
  expect 0 '<a>x</a>\n' ''
  run edit --set /a x - <<< '<a/>'
  expect 0 '<a>x</a>\n' ''
}

edit_of_several_files_changes_each() {
  given a.xml '<a/>'
  given b.xml '<b/>'
  run edit --set / x a.xml b.xml
  expect 0 'a.xml:<a>x</a>\nb.xml:<b>x</b>\n' ''
  run edit --set /a x --no-filename a.xml b.xml
  expect 1 '<a>x</a>\n' 'xmldom: b.xml: --set /a: the path selects nothing\n'
}

edit_whose_path_selects_nothing_writes_nothing() {
  given a.xml '<a><b/></a>'
  local edit
  for edit in '--append /a/c <d/>' '--insert-before /a/c <d/>' '--replace /a/c <d/>' \
    '--remove /a/c' '--set /a/c x' '--set-attr /a/c d x'; do
    # shellcheck disable=SC2086
    run edit a.xml --set /a/b x $edit
    expect 1 '' "xmldom: a.xml: ${edit%% *} /a/c: the path selects nothing\n"
  done
}

edit_refuses_what_cannot_be_done() {
  # refuses BEFORE REASON OPTION PATH [OPERAND]
  _refuses() {
    given a.xml "$1"
    run edit a.xml "${@:3}"
    expect 2 '' "xmldom: a.xml: $3 $4: $2\n"
  }
  _refuses '<a/>' 'a document cannot be without its root element' --remove /a
  _refuses '<a/>' 'nothing can stand beside the root element' --insert-before /a '<b/>'
  _refuses '<a/>' 'nothing can stand beside the root element' --insert-before / '<b/>'
  _refuses '<a><b/></a>' 'the element holds elements, which a text cannot replace' --set /a x
}

edit_refuses_xml_that_does_not_parse() {
  run edit missing.xml --append /a '<b></c>'
  expect 2 '' "xmldom: --append: column 6 of the XML: mismatched tag, near </c>\n  <b></c>
       ^\n$_help"
  run edit missing.xml --set / x --replace /a $'<b>\n<c>'
  expect 2 '' "xmldom: --replace: line 2, column 4 of the XML: no element found, near <c>\n  <c>
     ^\n$_help"
}

edit_refuses_a_path_that_cannot_be_used() {
  run edit missing.xml --set /a x --remove 'a[b'
  expect 2 '' "xmldom: --remove: column 2 of the path: '[' without ']'\n  a[b\n   ^\n$_help"
}

edit_says_what_to_use_for_an_attribute() {
  run edit missing.xml --set /a/@b x
  expect 2 '' "xmldom: --set: column 4 of the path: an element is needed here; --set-attr PATH NAME VALUE\
 sets an attribute of it\n  /a/@b\n     ^\n$_help"
}

edit_understands_positions_and_tests_of_existence() {
  given a.xml '<a><b/><b><c/></b><b/></a>'
  run edit --set-attr '/a/b[c]' n 2 --remove '/a/b[1]' --set-attr '/a/b[last()]' n 3 a.xml
  expect 0 "<a>\n  <b n='2'>\n    <c/>\n  </b>\n  <b n='3'/>\n</a>\n" ''
}

edit_refuses_text_that_no_document_can_hold() {
  run edit missing.xml --set /a $'x\x01'
  expect 2 '' "xmldom: --set: column 2 of the text: no XML document can hold this\n  x\\\\x01
   ^\n$_help"
  run edit missing.xml --set-attr /a b $'\xff'
  expect 2 '' "xmldom: --set-attr: column 1 of the value: no XML document can hold this\n  \\\\xFF
  ^\n$_help"
}

edit_refuses_a_name_that_no_attribute_can_have() {
  local name
  for name in '' 1a 'a b' 'a ' "a='' b" 'a/><!--'; do
    run edit missing.xml --set-attr /a "$name" x
    expect 2 '' "xmldom: --set-attr: '$name' cannot be the name of an attribute\n$_help"
  done
}

edit_needs_an_edit() {
  given a.xml '<a/>'
  run edit a.xml
  expect 2 '' "xmldom: an edit is needed, such as --set PATH TEXT\n$_help"
}

edit_needs_all_operands_of_an_edit() {
  run edit --set-attr /a b
  expect_status 2
  expect_text stdout ''
  expect_part stderr --set-attr
}

edit_of_what_is_no_xml_is_trouble() {
  given a.xml '<a>'
  run edit a.xml --set / x
  expect 2 '' 'a.xml:1:4: no element found, near <a>\n  <a>\n     ^\n'
}

run_cases
