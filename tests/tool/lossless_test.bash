# Cases of `xmldom check --lossless`.

. "$(dirname "$0")/driver.bash"

lossless_says_nothing_about_a_file_that_is_given_back() {
  given a.xml '<?xml version="1.0"?>\n<!-- c -->\n<!DOCTYPE a>\n<a b="1">\n  <c>x</c>\n</a>\n'
  run check --lossless a.xml
  expect 0 '' ''
  run check --lossless --verbose a.xml
  expect 0 '' 'a.xml: well-formed, lossless\n'
}

lossless_names_the_first_place_that_would_be_lost() {
  # reports TEXT LINE COLUMN REASON
  _reports() {
    given a.xml "$1"
    run check --lossless a.xml
    expect_status 1
    expect_text stdout ''
    expect_part stderr "a.xml:$2:$3: $4"
  }
  _reports '<a>\n  <b/> <!-- c -->\n</a>' 2 8 \
    'a comment inside the root element would be moved into a text'
  _reports '<a>\n<?p i?></a>' 2 1 \
    'a processing instruction inside the root element would be moved into a text'
  _reports '<a><b><![CDATA[x]]></b></a>' 1 7 'a CDATA section would be moved into a text'
  _reports '<a>\n  <b/>\n  text\n</a>' 3 3 'text beside elements would be moved before them'
  _reports '<a>\n  text\n</a>' 1 4 'a line break in a text would be lost'
  _reports '<a>&lt; &gt;</a>' 1 8 'white space in a text would be lost'
  _reports '<a><b> </b></a>' 1 7 'a text of white space alone would be lost'
  _reports '<a xml:space="preserve"> <b/></a>' 1 25 \
    "white space that xml:space='preserve' protects would change"
  _reports '<a>\n<b c="1&#10;2"/></a>' 2 8 \
    'a tab or line break in an attribute value would become a blank'
  _reports '<!DOCTYPE a [<!ENTITY e "x">]>\n<a>&e;</a>' 2 4 \
    'a reference to an entity would be replaced by its text'
  _reports '<!DOCTYPE a [<!ATTLIST a b CDATA "1">]>\n<a/>' 2 1 \
    'an attribute that the document type supplies would be written'
  _reports '<?xml version="1.0" encoding="ISO-8859-1"?><a/>' 1 31 'the encoding would become UTF-8'
}

lossless_shows_the_place() {
  given a.xml '<a>\n\t\xc3\xa9<b/></a>'
  run check --lossless a.xml
  expect 1 '' 'a.xml:1:4: a line break in a text would be lost\n  <a>\n     ^\n'
  given a.xml '<a><b/>\n\t\xc3\xa9</a>'
  run check --lossless a.xml
  expect 1 '' \
    'a.xml:2:2: text beside elements would be moved before them\n  \t\xc3\xa9</a>\n  \t^\n'
}

lossless_says_of_what_is_no_xml_only_that() {
  given a.xml '<a><!-- c --></b>'
  run check --lossless a.xml
  expect 1 '' 'a.xml:1:16: mismatched tag, near </b>\n  <a><!-- c --></b>\n                 ^\n'
}

lossless_looks_at_all_files() {
  given a.xml '<a/>'
  given b.xml '<b> </b>'
  run check --lossless b.xml a.xml missing.xml
  expect 2 '' 'b.xml:1:4: a text of white space alone would be lost\n  <b> </b>\n     ^
xmldom: missing.xml: No such file or directory\n'
}

lossless_reads_standard_input() {
  run check --lossless <<< '<a>&#10; </a>'
  expect 1 '' '(standard input):1:9: white space in a text would be lost\n  <a>&#10; </a>\n          ^\n'
}

run_cases
