# Cases of what all commands share: usage, help, where results and messages go, failing writes.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

a_command_is_needed() {
  local hint="xmldom: 'xmldom --help' explains more\n"
  run
  expect 2 '' "xmldom: a command is needed\n$hint"
  run --verbose
  expect 2 '' "xmldom: a command is needed\n$hint"
}

an_unknown_command_is_refused() {
  local hint="xmldom: 'xmldom --help' explains more\n"
  run frobnicate --foo a
  expect 2 '' "xmldom: unknown command 'frobnicate'\n$hint"
  run --verbose slect //a
  expect 2 '' "xmldom: unknown command 'slect' (did you mean 'select'?)\n$hint"
  run --verbos
  expect 2 '' "xmldom: unknown option '--verbos' (did you mean '--verbose'?)\n$hint"
}

unknown_options_are_named_as_typed_and_in_their_order() {
  local hint="xmldom: 'xmldom select --help' explains more\n"
  run select --frist=1 //a --cuont a.xml -x
  expect 2 '' "xmldom: unknown option '--frist=1' (did you mean '--first'?), unknown option \
'--cuont' (did you mean '--count'?), unknown option '-x'\n$hint"
  run select --verbos
  expect 2 '' "xmldom: unknown option '--verbos' (did you mean '--verbose'?)\n$hint"
  given a.xml '<a/>'
  run edit --set / --cuont a.xml
  expect 0 '<a>--cuont</a>' ''
}

a_flag_takes_no_value() {
  run select --first=3 a a.xml
  expect 2 '' "xmldom: --first takes no value\nxmldom: 'xmldom select --help' explains more\n"
}

missing_values_of_an_option_are_named() {
  run value -f
  expect 2 '' "xmldom: --field: 1 required FIELD missing\nxmldom: 'xmldom value --help' explains more\n"
  run edit --set /a
  expect 2 '' "xmldom: --set: 2 required PATH TEXT missing\nxmldom: 'xmldom edit --help' explains more\n"
}

too_many_operands_are_refused_in_their_order() {
  run diff a b c d
  expect 2 '' "xmldom: too many operands: 'c' 'd'\nxmldom: 'xmldom diff --help' explains more\n"
}

an_unknown_option_is_refused_by_every_command() {
  local command
  for command in check 'diff a b' edit format mask 'page a' 'path a' 'select a' 'value a' tree; do
    # shellcheck disable=SC2086
    run $command --frobnicate
    expect_status 2
    expect_text stdout ''
    expect_part stderr --frobnicate
    expect_part stderr "'xmldom ${command%% *} --help' explains more"
  done
}

help_lists_the_commands_and_the_exit_statuses() {
  run --help
  expect_status 0
  expect_text stderr ''
  local part
  for part in check diff edit format mask page path select tree value --verbose --version \
    'Exit status: 0 done' 'Example: '; do
    expect_part stdout "$part"
  done
  cp "$scratch/stdout" long
  run -h
  expect 0 "$(sed 's/\\/\\\\/g' long)\n" ''
}

help_of_a_command_has_its_options_and_an_example() {
  _expect_help() {
    run "$1" --help
    expect_status 0
    expect_text stderr ''
    local part
    for part in "${@:2}" 'Exit status: ' "Example: xmldom $1 "; do expect_part stdout "$part"; done
  }
  _expect_help check FILE --lossless
  _expect_help diff A B --all
  _expect_help edit FILE --append --insert-before --insert-after --replace --remove --rename --set \
    --set-attr --remove-attr --all '-i with a suffix attached' --no-filename
  _expect_help format FILE '-i with a suffix attached' --lossy --quiet --indent-off --no-filename
  _expect_help mask FILE --quiet --no-filename
  _expect_help page PATH FILE '--from N' --rows --page --pages --pad --yes-pad --no-filename
  _expect_help path PATH FILE --first --no-filename
  _expect_help select PATH FILE --count --first --no-filename
  _expect_help value PATH FILE --attr -0 --null --first --no-filename
  _expect_help tree FILE --depth --color --no-filename
}

version_tells_the_numbers_of_tool_library_and_parser() {
  local number='[0-9]+\.[0-9]+\.[0-9]+'
  run --version
  expect_status 0
  expect_text stderr ''
  [ "$(wc -l <"$scratch/stdout")" -eq 2 ] || fail
  grep -qxE "xmldom $number" "$scratch/stdout" || fail
  grep -qxE "built with libxmldom $number \(so-version [0-9]+\), running with Expat $number" \
    "$scratch/stdout" || fail
}

options_may_stand_behind_operands() {
  given a.xml '<a><b/></a>'
  run select //b a.xml --count
  expect 0 '1\n' ''
}

a_file_may_be_called_like_a_command() {
  given tree '<a/>'
  run check --verbose tree
  expect 0 '' 'tree: well-formed\n'
}

a_file_may_begin_with_a_dash_behind_two_dashes() {
  given -a.xml '<a/>'
  run format -- -a.xml
  expect 0 '<a/>\n' ''
}

results_alone_go_to_standard_output() {
  given a.xml '<a><b>1 &lt; 2</b></a>'
  run value //b a.xml
  expect 0 '1 < 2\n' ''
  run value --verbose //b a.xml
  expect 0 '1 < 2\n' ''
}

verbose_stands_before_a_command_or_behind_it() {
  given a.xml '<a/>'
  run check --verbose a.xml
  expect 0 '' 'a.xml: well-formed\n'
  run --verbose check a.xml
  expect 0 '' 'a.xml: well-formed\n'
}

log_events_go_to_standard_error_in_the_name_of_the_tool() {
  given a.xml '<!DOCTYPE a [<!ENTITY x SYSTEM "x">]>\n<a><b>&x;<!--\n--></b></a>'
  run value --library //b a.xml
  expect 0 '&x;<!--\n-->\n' \
    "xmldom: TranslateEntities FAILED to match entity at the begining of this string: '&x;<!--\nxmldom: -->'\n"
}

a_full_device_is_noticed() {
  given a.xml '<a>text</a>'
  local command
  for command in 'edit --set / x a.xml' 'format a.xml' 'mask a.xml' 'page a a.xml' 'path a a.xml' \
    'select a a.xml' 'select a --count a.xml' 'value a a.xml' 'tree a.xml' '--help' '--version'; do
    run_shell "\"\$tool\" $command > /dev/full"
    expect 2 '' 'xmldom: write error: No space left on device\n'
  done
}

a_full_device_ends_the_work() {
  given a.xml '<a>text</a>'
  run_shell '"$tool" format a.xml missing.xml > /dev/full'
  expect 2 '' 'xmldom: write error: No space left on device\n'
}

# Runs the tool with a pipe that nobody reads to its end. The option is one of env, for the signal.
_run_into_a_closed_pipe() {
  given a.xml "<a>$(printf '<b>%0100d</b>' {1..5000})</a>"
  run_shell "{ env $1 \"\$tool\" format a.xml; echo \$? > status; } | head -n 1; exit \$(cat status)"
}

a_closed_pipe_ends_the_tool_silently() {
  _run_into_a_closed_pipe --default-signal=PIPE
  expect 141 '<a>\n' ''
}

a_closed_pipe_is_noticed_where_its_signal_is_ignored() {
  _run_into_a_closed_pipe --ignore-signal=PIPE
  expect 2 '<a>\n' 'xmldom: write error: Broken pipe\n'
}

a_closed_standard_output_is_noticed() {
  [ "$slowness" -ne 30 ] || skip 'Valgrind opens its log in its place'
  given a.xml '<a/>'
  run_shell '"$tool" format a.xml >&-'
  expect 2 '' 'xmldom: write error: Bad file descriptor\n'
}

a_closed_standard_error_keeps_results_clean() {
  given a.xml '<a>&amp;</a>'
  run_shell '"$tool" value --verbose a a.xml 2>&-'
  expect 0 '&\n' ''
}

run_cases
