# Cases of runs with random arguments on random documents: each ends with one of the exit statuses of
# the tool, in time, without a report of a sanitizer; a file that is edited in place stays whole.
#
# XMLDOM_TEST_RUNS is how many runs there are, XMLDOM_TEST_SEED makes others.

. "$(dirname "$0")/driver.bash"

_runs=${XMLDOM_TEST_RUNS:-100}
_seed=${XMLDOM_TEST_SEED:-1}

# _pick WORD...: one of them, in "picked".
_pick() {
  local at=$((RANDOM % $# + 1))
  picked=${!at}
}

_pick_path() {
  _pick a /a //b /a/b a/c '/a/b[@c]' "//b[@c='1']" '//*' / . .. '' '[' '/a/b[2]' "a[b='x']" '//b/@c' $'\e[1m' \
    '/a/b[last()]' "//b[c=3]" 'nothing' '//'
}

_pick_xml() {
  _pick '<n/>' '<n m="1">t</n>' '<n>' '' 'text' '<n><!-- c --></n>' $'<n>\n</n>' '<n>&amp;&x;</n>' '<n>é</n>' \
    $'<n>\xff</n>' '<n xml:space="preserve"> </n>'
}

_pick_text() { _pick x '' 'a & b' '<' ']]>' $'1\n2' é $'\xc2\x9b' $'\xff' $'\x01' ' ' "it's \"quoted\""; }

_pick_name() { _pick c d n '' é 'a b' xmlns:c xml:space '<'; }

# Asks the tool for the options of each command. Out: "options_of", and "all_options" with mistakes.
declare -A options_of
_learn_options() {
  local of
  all_options=(-x --frobnicate --help=1 --)
  for of in $(commands_shown); do
    options_of[$of]=$({ "$tool" "$of" --help; "$tool" --help; } | options_shown | paste -s -d ' ')
    read -ra of <<< "${options_of[$of]}"
    all_options+=("${of[@]}")
  done
}

# Appends a random option to "arguments", with its values: mostly one of the command's.
_add_option() {
  local own=()
  read -ra own <<< "${options_of[$command]:-}"
  if [ ${#own[@]} -eq 0 ] || [ $((RANDOM % 5)) -eq 0 ]; then own=("${all_options[@]}"); fi
  _pick "${own[@]}"
  # That ends a run before anything is done.
  case $picked in -h | --help | --version) _pick "${own[@]}" ;; esac
  if [ "$picked" = -i ]; then _pick -i -i.old; fi
  arguments+=("$picked")
  case $picked in
    --set) _add _pick_path _pick_text ;;
    --set-attr) _add _pick_path _pick_name _pick_text ;;
    --remove) _add _pick_path ;;
    --remove-attr | --rename) _add _pick_path _pick_name ;;
    --append | --replace | --insert-before | --insert-after) _add _pick_path _pick_xml ;;
    --attr) _add _pick_name ;;
    -f | --field) _add _pick_field; arguments+=(-f .) ;;
    --separator) _add _pick_text ;;
    --pad) _add _pick_xml ;;
    --from | --rows | --page | --pages | --depth) _add _pick_number ;;
    --color) _add _pick_color ;;
    --in-place) _add _pick_way ;;
  esac
}

# _add PICK...: appends what each of these picks.
_add() {
  local pick
  for pick; do "$pick"; arguments+=("$picked"); done
}

_pick_field() { _pick c @c . b/c b/@c ../b ../../a '*' 'b[2]' "b[c='3']/@c" '' '[' / //b; }
_pick_number() { _pick 1 2 3 0 x 100 100001 -1 99999999999; }
_pick_color() { _pick always never auto x; }
_pick_way() { _pick write rename x; }

# Makes a.xml of random pieces, most of which fit together.
_make_document() {
  local i
  {
    _pick '' '' '' '<?xml version="1.0"?>' '<!-- c -->' '<!DOCTYPE a [<!ENTITY x "y"><!ATTLIST b c CDATA "1">]>'
    if [ $((RANDOM % 10)) -eq 0 ]; then
      _pick '<?xml version="1.0" encoding="ISO-8859-1"?>' $'\xef\xbb\xbf' '<?xml version="1.0" encoding="x"?>'
    fi
    printf '%s<a>' "$picked"
    for ((i = RANDOM % 8; i > 0; --i)); do
      _pick '<b/>' '<b c="1">x</b>' $'\n  ' $'\r\n' 'text' '<b><c>3</c></b>' '<!-- c -->' '<![CDATA[<]]>' \
        '&amp;&#233;' '<?p i?>' $'\xc3\xa9' "<b c='&lt;'/>"
      if [ $((RANDOM % 40)) -eq 0 ]; then
        _pick '<b>' '</b>' '<' '<b c="1" c="2"/>' '&x;' $'\xe9'
      fi
      printf '%s' "$picked"
    done
    _pick '</a>' $'</a>\n' '</a><!-- c -->'
    if [ $((RANDOM % 20)) -eq 0 ]; then _pick '' '</b>' $'</a>\n<a/>'; fi
    printf '%s' "$picked"
  } > a.xml
}

_run_once() {
  local arguments=() edit command before
  _make_document
  before=$(md5sum < a.xml)
  _pick check format select value path tree edit edit edit diff mask page slect
  command=$picked
  arguments=("$command")
  if [ "$command" = edit ]; then
    _pick -i -i --in-place=write --verbose
    arguments+=("$picked")
    _pick '--set / x' '--set-attr / c x' '--remove /a/b' '--rename /a/b n' '--remove-attr //b c' \
      '--insert-after /a/b <n/>'
    read -ra edit <<< "$picked"
    arguments+=("${edit[@]}")
  fi
  if [ $((RANDOM % 2)) -eq 0 ]; then _add_option; fi
  if [ $((RANDOM % 8)) -eq 0 ]; then _add_option; fi
  case $command in select | value | path | page) _pick_path; arguments+=("$picked") ;; esac
  arguments+=(a.xml)
  if [ $((RANDOM % 8)) -eq 0 ] || [ "$command" = diff ]; then _pick a.xml - missing.xml .; arguments+=("$picked"); fi
  keep timeout 60 "$tool" "${arguments[@]}" <<< '<a><b c="2">y</b></a>'
  case $(cat "$scratch/status") in
    0) done=$((done + 1)) ;;
    1 | 2) ;;
    *) echo "  exit status $(cat "$scratch/status")"; fail ;;
  esac
  if grep -aE 'Sanitizer|runtime error' "$scratch/stderr"; then fail; fi
  if [ "$before" != "$(md5sum < a.xml)" ] && ! "$tool" check a.xml; then
    echo "  a.xml is not well-formed any more"
    fail
  fi
  if [ -e "$scratch/failed" ]; then
    printf '  run %s, with a.xml' "$run"
    printf ' %q' "$tool" "${arguments[@]}"
    echo
    cat -v a.xml
  fi
}

random_runs_end_well() {
  local run picked done=0
  echo "  seed $_seed, $_runs runs"
  _learn_options
  RANDOM=$_seed
  for ((run = 1; run <= _runs; ++run)); do
    _run_once
    [ ! -e "$scratch/failed" ] || break
    rm -f a.xml.old
  done
  echo "  $done ended with 0"
  [ "$done" -gt $((_runs / 20)) ] || fail
  expect_names . a.xml
}

run_cases
