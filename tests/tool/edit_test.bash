# Cases of `xmldom edit` on its way to standard output: what each edit does, and what is refused.

. "$(dirname "$0")/driver.bash"

_help="xmldom: 'xmldom edit --help' explains more\n"

# edits BEFORE AFTER ARGUMENT...: the arguments make the one document of the other.
_edits() {
  given a.xml "$1"
  run edit "${@:3}" a.xml
  expect 0 "$2" ''
}

_document='<?xml version="1.0"?>\n<!-- head -->\n<config  a='\''1'\''>\n\t<!-- c -->
\t<host name = "x"/> <!-- tail -->\n\n\t<if>\n\t\t<ip>1.2.3.4</ip>\n\t</if>\n\t<empty/>\n</config>'

# changes OLD NEW ARGUMENT...: of _document, the arguments change this line alone, to these lines.
_changes() {
  given a.xml "$_document"
  local before=${_document%%"$1"*} after=${_document#*"$1"}
  run edit "${@:3}" a.xml
  expect 0 "$before$2$after" ''
}

edit_changes_nothing_but_the_lines_of_the_edit() {
  _changes '<ip>1.2.3.4</ip>' '<ip>1 &lt; 2 &amp; 3</ip>' --set //ip '1 < 2 & 3'
  _changes 'name = "x"' 'name = "it'\''s"' --set-attr //host name "it's"
  _changes 'name = "x"' 'name = "x" port="5"' --set-attr //host port 5
  _changes ' name = "x"' '' --remove-attr //host name
  _changes '</if>' '</if>\n\t<if n='\''2'\''/>' --insert-after //if "<if n='2'/>"
  _changes '<if>' '<new/>\n\t<if>' --insert-before //if '<new/>'
  _changes '<empty/>' '<empty/>\n\t<last/>' --append / '<last/>'
  _changes '<empty/>' '<empty>\n\t\t<new/>\n\t</empty>' --append //empty '<new/>'
  _changes '<empty/>' '<full>x</full>' --replace //empty '<full>x</full>'
  _changes '\t<if>\n\t\t<ip>1.2.3.4</ip>\n\t</if>\n' '' --remove //if
  _changes '<empty/>' '<none/>' --rename /config/empty none
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

edits_are_done_in_the_order_in_which_they_stand() {
  _edits '<a/>' '<a>\n  <b>x</b>\n</a>' --append /a '<b/>' --set /a/b x
  _edits '<a/>' '<a>\n  <b>2</b>\n  <b>1</b>\n</a>' --append /a '<b>1</b>' \
    --insert-before /a/b '<c/>' --replace /a/c '<b>2</b>'
  _edits '<a><b/></a>' '<a>\n  <b c="2"/>\n</a>' --set-attr /a/b c 1 --remove /a/b \
    --append /a '<b/>' --set-attr /a/b c 2
}

edit_takes_a_slash_for_the_root_element() {
  _edits '<a>\n</a>' '<a b="1">\n  <c/>\n</a>' --append / '<c/>' --set-attr / b 1
  _edits '<a/>' '<b/>' --replace / '<b/>'
}

edit_changes_the_first_node_that_a_path_selects() {
  _edits '<a><b/><b/></a>' '<a><b>x</b><b/></a>' --set //b x
  _edits '<a><b/><c/></a>' '<a><b/><c>x</c></a>' --set /a/b/../c x
}

edit_of_all_changes_every_node_that_a_path_selects() {
  _edits '<a><b/><c><b/></c></a>' '<a><b>x</b><c><b>x</b></c></a>' --all --set //b x
  _edits '<b> <b> <b/> </b> </b>' '<b> <b> <b><c/></b> <c/> </b> <c/> </b>' \
    --append //b '<c/>' --all
}

edit_tells_how_many_changes_it_makes_when_asked() {
  given a.xml '<a><b/><b c="1"/></a>'
  run edit --verbose --all --set-attr //b c 2 --remove "//b" a.xml
  expect 0 '<a></a>' 'a.xml: --set-attr //b: 2 changes\na.xml: --remove //b: 2 changes\n'
  run edit --verbose --remove //b a.xml
  expect 0 '<a><b c="1"/></a>' 'a.xml: --remove //b: 1 change\n'
}

edit_keeps_the_encoding() {
  local declaration='<?xml version="1.0" encoding="ISO-8859-1"?>\n<!-- \xe9 -->\n'
  _edits "$declaration<a>\xe8</a>" "$declaration<a>&#8364;\xe9</a>" --set / $'\xe2\x82\xac\xc3\xa9'
  _edits '\xff\xfe<\0a\0>\0\xe8\0<\0/\0a\0>\0' '\xff\xfe<\0a\0>\0\xac\x20<\0/\0a\0>\0' \
    --set / $'\xe2\x82\xac'
}

edit_refuses_bytes_that_are_no_characters() {
  given a.xml '\xff\xfe<\0a\0>\0\0\xdc<\0/\0a\0>\0'
  run edit a.xml --set / x
  expect 2 '' 'a.xml:1:5: no character in UTF-16\n  \\xEF\\xBB\\xBF<a>\n                 ^\n'
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
    '--insert-after /a/c <d/>' '--remove /a/c' \
    '--set /a/c x' '--set-attr /a/c d x' '--remove-attr /a/c d' '--rename /a/c d'; do
    # shellcheck disable=SC2086
    run edit a.xml --set /a/b x $edit
    expect 1 '' "xmldom: a.xml: ${edit%% *} /a/c: the path selects nothing\n"
  done
}

edit_refuses_what_cannot_be_done() {
  # refuses BEFORE REASON OPTION PATH [OPERAND]: shown with the line of the element
  _refuses() {
    given a.xml "$1"
    run edit a.xml "${@:3}"
    expect 2 '' "a.xml:1:1: $3 $4: $2\n  $1\n  ^\n"
  }
  _refuses '<a/>' 'a document cannot be without its root element' --remove /a
  _refuses '<a/>' 'nothing can stand beside the root element' --insert-before /a '<b/>'
  _refuses '<a/>' 'nothing can stand beside the root element' --insert-after / '<b/>'
  _refuses '<a><b/></a>' 'the element holds elements, which a text cannot replace' --set /a x
  given a.xml '<a><b/></a>'
  run edit a.xml --append /a '<c/>' --set-attr //b c 1 --set /a x
  expect 2 '' "a.xml:1:1: --set /a, after the edits before it: the element holds elements, which a \
text cannot replace\n  <a><b c=\"1\"/><c/></a>\n  ^\n"
}

edit_refuses_to_change_an_element_that_an_entity_brings() {
  given a.xml '<!DOCTYPE a [<!ENTITY e "<b/>">]>\n<a>\n  &e;\n</a>\n'
  run edit a.xml --set //b x
  expect 2 '' 'a.xml:3:3: --set //b: the element comes from this entity, and cannot be changed here
    &e;\n    ^\n'
}

edit_whose_result_is_not_what_was_asked_for_writes_nothing() {
  # A parser takes white space off the ends of such an attribute.
  local -r document='<!DOCTYPE a [<!ATTLIST a b NMTOKEN "1">]><a b="2"/>'
  given a.xml "$document"
  run edit -i a.xml --set-attr /a b ' x '
  expect_status 2
  expect_text stdout ''
  expect_part stderr 'xmldom: a.xml: --set-attr /a: the result was checked, and it is not what the edit asks for'
  expect_part stderr '; nothing is written'
  expect_file a.xml "$document"
}

edit_of_an_attribute_that_is_missing_writes_nothing() {
  given a.xml '<a><b/></a>'
  run edit a.xml --remove-attr //b c
  expect 1 '' 'xmldom: a.xml: --remove-attr //b: there is no such attribute\n'
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
  expect 0 '<a><b n="2"><c/></b><b n="3"/></a>' ''
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
