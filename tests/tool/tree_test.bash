# Cases of `xmldom tree`.

. "$(dirname "$0")/driver.bash"

tree_merges_siblings_of_one_name_and_counts_them() {
  given a.xml '<config version="1"><interface name="eth0"><mtu>1500</mtu></interface>
<dns/><interface name="lo" up="1"/><interface/></config>'
  run tree a.xml
  expect 0 'config @version
├── interface × 3 @name @up
│   └── mtu #text
└── dns
' ''
}

tree_merges_below_parents_that_are_merged() {
  given a.xml '<a><row><x/><y/></row><row><x/><z><w/></z></row><end><x/></end></a>'
  run tree a.xml
  expect 0 'a
├── row × 2
│   ├── x × 2
│   ├── y
│   └── z
│       └── w
└── end
    └── x
' ''
}

tree_tells_an_element_from_an_attribute_of_its_name() {
  given a.xml '<a b="1"><b a="2"/></a>'
  run tree a.xml
  expect 0 'a @b\n└── b @a\n' ''
}

tree_of_one_element_is_one_line() {
  run tree <<< '<a>text</a>'
  expect 0 'a #text\n' ''
}

tree_tells_text_from_comments_and_instructions() {
  given a.xml '<a>\n <!-- c -->\n <b><!-- c --></b><c><?pi?></c><d><![CDATA[]]></d>
<e><!-- c -->x</e><f><![CDATA[<]]></f><g>&lt;</g><h><!----><?pi?> y</h></a>'
  run tree a.xml
  expect 0 'a #comment
├── b #comment
├── c #instruction
├── d
├── e #text #comment
├── f #text
├── g #text
└── h #text #comment #instruction
' ''
}

tree_depth_limits_the_levels_and_says_how_many_are_left_out() {
  given a.xml '<a><b><c><d>x</d></c><c/></b><b/><e><f/></e></a>'
  run tree --depth 2 a.xml
  expect 0 'a
├── b × 2
│   └── … 2 more levels
└── e
    └── … 1 more level
' ''
  run tree --depth 1 a.xml
  expect 0 'a\n└── … 3 more levels\n' ''
  run tree --depth 4 a.xml
  expect 0 'a
├── b × 2
│   └── c × 2
│       └── d #text
└── e
    └── f
' ''
}

tree_marks_text_at_the_last_level_but_not_of_levels_left_out() {
  given a.xml '<a><b>x</b><c><d>y</d></c></a>'
  run tree --depth 2 a.xml
  expect 0 'a\n├── b #text\n└── c\n    └── … 1 more level\n' ''
}

tree_goes_on_with_the_right_parent_behind_levels_left_out() {
  given a.xml '<a><b><c><d/></c></b><e at="1">x</e></a>'
  run tree --depth 2 a.xml
  expect 0 'a\n├── b\n│   └── … 2 more levels\n└── e @at #text\n' ''
}

tree_shows_32_levels_unless_told_otherwise() {
  given a.xml "$(printf '<a>%.0s' {1..40})$(printf '</a>%.0s' {1..40})"
  run tree a.xml
  expect_status 0
  expect_text stderr ''
  [ "$(wc -l < "$scratch/stdout")" = 33 ] || fail
  expect_part stdout '└── … 8 more levels'
}

tree_refuses_a_depth_that_is_no_positive_number() {
  given a.xml '<a/>'
  local depth
  for depth in 0 -1 many ''; do
    run tree "--depth=$depth" a.xml
    expect_status 2
    expect_text stdout ''
    expect_part stderr --depth
  done
}

tree_colors_when_told_always() {
  given a.xml '<a x="1"><b><c/></b><b>t</b></a>'
  local name='\033[1;34m' plain='\033[0m'
  _expect_colors() {
    expect 0 "${name}a$plain \033[36m@x$plain\n\
└── ${name}b$plain × \033[33m2$plain \033[32m#text$plain\n\
    └── \033[2m… 1 more level$plain\n" ''
  }
  run tree --depth 2 --color always a.xml
  _expect_colors
  NO_COLOR=1 run tree --depth 2 --color=always a.xml
  _expect_colors
}

tree_does_not_color_what_is_no_terminal() {
  run tree <<< '<a/>'
  expect 0 'a\n' ''
  run tree --color=auto <<< '<a/>'
  expect 0 'a\n' ''
}

# A terminal of its own, which ends lines with CR LF. Where none can be opened, script(1) may wait for
# ever.
_run_in_terminal() {
  (exec 3<> /dev/ptmx) 2> error || skip "no terminal: $(sed 's/.*line [0-9]*: //' error)"
  keep script -qec "$1" /dev/null
}

tree_colors_a_terminal_unless_told_never() {
  given a.xml '<a/>'
  _run_in_terminal "$tool tree a.xml"
  expect 0 '\033[1;34ma\033[0m\r\n' ''
  _run_in_terminal "$tool tree --color=auto a.xml"
  expect 0 '\033[1;34ma\033[0m\r\n' ''
  _run_in_terminal "$tool tree --color=never a.xml"
  expect 0 'a\r\n' ''
}

tree_does_not_color_a_terminal_when_the_environment_says_no() {
  given a.xml '<a/>'
  _run_in_terminal "NO_COLOR=1 $tool tree a.xml"
  expect 0 'a\r\n' ''
  _run_in_terminal "NO_COLOR= $tool tree a.xml"
  expect 0 '\033[1;34ma\033[0m\r\n' ''
  _run_in_terminal "TERM=dumb $tool tree a.xml"
  expect 0 'a\r\n' ''
}

tree_refuses_any_other_color() {
  given a.xml '<a/>'
  run tree --color=sometimes a.xml
  expect_status 2
  expect_text stdout ''
  expect_part stderr --color
}

tree_of_several_files_names_them_on_every_line() {
  given a.xml '<a><b/></a>'
  given c.xml '<c/>'
  run tree a.xml c.xml
  expect 0 'a.xml:a\na.xml:└── b\nc.xml:c\n' ''
}

run_cases
