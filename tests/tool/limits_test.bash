# Cases of documents far larger than usual, with little stack.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

# As deep and as long as 256 KiB of stack could never hold.
many=$(scaled 200000)

_run_with_little_stack() { run_shell "ulimit -s 256; exec \"\$tool\" $1"; }

_given_many_records() {
  {
    echo '<r>'
    seq -f '<item id="%.0f"><name>n&amp;</name></item>' "$many"
    echo '</r>'
  } > a.xml
}

_given_many_levels() {
  {
    yes '<a>' | head -n "$many"
    yes '</a>' | head -n "$many"
  } > a.xml
}

many_records_are_handled_with_little_stack() {
  _given_many_records
  _run_with_little_stack 'check a.xml'
  expect 0 '' ''
  _run_with_little_stack 'tree a.xml'
  expect 0 "r\n└── item × $many @id\n    └── name × $many #text\n" ''
  _run_with_little_stack 'select --count //name a.xml'
  expect 0 "$many\n" ''
  _run_with_little_stack "select --first 'r/item[@id=$many]' a.xml"
  expect 0 "<item id='$many'>\n  <name>n&amp;</name>\n</item>\n" ''
  _run_with_little_stack 'value --attr id //item a.xml'
  expect 0 "$(seq "$many")\n" ''
  _run_with_little_stack 'path //name a.xml | tail -n 1'
  expect 0 "/r/item[$many]/name\n" ''
  _run_with_little_stack 'value -f @id -f name -f ../@id "r/item[name][last()]" a.xml'
  expect 0 "$many\tn&\t\n" ''
  _run_with_little_stack 'mask a.xml | grep -c "<name></name>"'
  expect 0 "$many\n" ''
  _run_with_little_stack 'diff a.xml a.xml'
  expect 0 '' ''
  _run_with_little_stack "page --from $many r a.xml"
  expect 0 "<r>\n  <item index='$many' id='$many'>\n    <name>n&amp;</name>\n  </item>\n</r>\n" ''
  _run_with_little_stack 'check --lossless a.xml'
  expect 0 '' ''
  _run_with_little_stack "edit -i --set 'r/item[@id=$many]/name' x --remove r/item a.xml"
  expect 0 '' ''
  run select --count //name a.xml
  expect 0 "$((many - 1))\n" ''
  run value --first "r/item[@id=$many]/name" a.xml
  expect 0 'x\n' ''
}

the_text_of_many_references_is_collected() {
  {
    echo '<r>'
    yes '<name>n&amp;</name>' | head -n "$many"
    echo '</r>'
  } > a.xml
  run_shell '"$tool" value --library r a.xml | md5sum'
  expect 0 "$(yes 'n&' | head -n "$many" | paste -s -d ' ' | md5sum)\n" ''
  run_shell '"$tool" value r a.xml | md5sum'
  expect 0 "$({ echo; yes 'n&' | head -n "$many"; echo; } | md5sum)\n" ''
}

many_levels_are_handled_with_little_stack() {
  _given_many_levels
  _run_with_little_stack 'check a.xml'
  expect 0 '' ''
  _run_with_little_stack "tree a.xml | tail -n 1 | sed 's/^ *//'"
  expect 0 "└── … $((many - 32)) more levels\n" ''
  _run_with_little_stack 'select --count //none a.xml'
  expect 1 '0\n' ''
  _run_with_little_stack 'select --first //none a.xml'
  expect 1 '' ''
  _run_with_little_stack 'value --library a a.xml'
  expect 0 '\n' ''
  _run_with_little_stack 'value a a.xml | wc -l'
  expect 0 "$((2 * many))\n" ''
  _run_with_little_stack 'format --quiet --indent-off a.xml | grep -c "<a>"'
  expect 0 "$((many - 1))\n" ''
  _run_with_little_stack 'diff a.xml a.xml'
  expect 0 '' ''
  _run_with_little_stack 'check --lossless a.xml'
  expect_status 1
  expect_part stderr "a.xml:$many:4: a text of white space alone would be lost"
  _run_with_little_stack 'edit -i --set-attr / b 1 a.xml'
  expect 0 '' ''
  _run_with_little_stack "select --first --count 'a[@b=1]' a.xml"
  expect 0 '1\n' ''
}

many_edits_of_one_document_are_done() {
  local edits=() i
  for ((i = 1; i <= 300; ++i)); do edits+=(--append / "<b c='$i'/>" --set "/a/b[@c=$i]" "$i"); done
  run edit "${edits[@]}" <<< '<a/>'
  expect_status 0
  expect_text stderr ''
  cp "$scratch/stdout" a.xml
  run value //b a.xml
  expect 0 "$(seq 300)\n" ''
}

many_elements_are_edited_at_once_in_linear_time() {
  local count=$(scaled 100000)
  { echo '<r>'; yes '  <a/><b/>' | head -n "$count"; echo '</r>'; } > a.xml
  run_shell '(ulimit -t 20; "$tool" edit --all --insert-before //b "<c/>" --remove //a a.xml) | grep -c "^  <c/><b/>"'
  expect 0 "$count\n" ''
}

elements_below_a_long_indentation_are_filled_in_linear_time() {
  local count=$(scaled 50000)
  { echo '<r>'; printf '%*s<o>\n' "$count" ''; yes '<a/>' | head -n "$count"; echo '</o></r>'; } > a.xml
  run_shell '(ulimit -t 8; "$tool" edit --all --append //a "<c/>" a.xml) | grep -c "^  <c/>"'
  expect 0 "$count\n" ''
}

fields_of_the_parent_are_searched_once_for_all_its_children() {
  local count=$(scaled 50000)
  { echo '<r><t>x</t>'; yes '<a/>' | head -n "$count"; echo '</r>'; } > a.xml
  run_shell '(ulimit -t 8; "$tool" value -f ../t -f ../none //a a.xml) | grep -c "^x"'
  expect 0 "$count\n" ''
}

many_names_are_handled_with_little_stack() {
  {
    echo '<r>'
    seq -f '<n%.0f/>' "$many"
    echo '</r>'
  } > a.xml
  _run_with_little_stack 'tree a.xml | tail -n 1'
  expect 0 "└── n$many\n" ''
}

many_attributes_of_one_element_are_handled_with_little_stack() {
  {
    echo '<r '
    seq -f 'a%.0f="1"' 50000
    echo '/>'
  } > a.xml
  _run_with_little_stack "tree a.xml | sed 's/.* //'"
  expect 0 '@a50000\n' ''
}

# Each limit is met at another point, from the start of the tool to its result. Below the first, the
# loader of the system gives up (127).
memory_that_is_out_is_trouble() {
  if [ "$slowness" -ne 1 ]; then skip 'memory cannot be limited here'; fi
  { echo '<r>'; yes '<a b="c">text</a>' | head -n 20000; echo '</r>'; } > a.xml
  cp a.xml before.xml
  local limit status way=-i refused=0
  for limit in $(seq 4000 250 24000); do
    if [ "$way" = -i ]; then way=--in-place=write; else way=-i; fi
    run_shell "ulimit -v $limit; exec \"\$tool\" edit $way --set //a y a.xml"
    status=$(cat "$scratch/status")
    case $status in
      0) cp before.xml a.xml ;;
      127) ;;
      2)
        refused=$((refused + 1))
        expect_part stderr 'out of memory'
        cmp a.xml before.xml || fail
        expect_names . a.xml before.xml
        ;;
      *)
        echo "  exit status $status with $limit KiB"
        cat "$scratch/stderr"
        fail
        ;;
    esac
  done
  [ "$refused" -gt 10 ] || { echo "  only $refused limits were met"; fail; }
}

# The check needs little but for a comment, which the parser keeps whole.
memory_that_is_out_is_trouble_for_a_check_too() {
  _run_checks_with_memory_up_to 14000 check
}

# The load, and the parser that looks for losses, keep the comment too.
memory_that_is_out_is_trouble_for_a_check_of_losses() {
  _run_checks_with_memory_up_to 26000 'check --lossless'
}

_run_checks_with_memory_up_to() {
  if [ "$slowness" -ne 1 ]; then skip 'memory cannot be limited here'; fi
  { echo '<!--'; yes '<a b="c">text</a>' | head -n 200000; echo '--><r/>'; } > a.xml
  local limit status refused=0
  for limit in $(seq 7000 250 "$1"); do
    run_shell "ulimit -v $limit; exec \"\$tool\" $2 a.xml"
    status=$(cat "$scratch/status")
    case $status in
      0 | 127) ;;
      2)
        refused=$((refused + 1))
        expect_part stderr 'out of memory'
        ;;
      *)
        echo "  exit status $status with $limit KiB"
        cat "$scratch/stderr"
        fail
        ;;
    esac
  done
  [ "$refused" -gt 3 ] || { echo "  only $refused limits were met"; fail; }
}

run_cases
