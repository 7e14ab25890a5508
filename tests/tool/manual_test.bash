# Cases of the manual page: it is well written, and tells of what the tool has, and of nothing else.

. "$(dirname "$0")/driver.bash"

manual=$(realpath "$(dirname "$0")/../../docs/man/xmldom.1")

# The options that the manual page has as items of a section or subsection, a line each. The first
# dash is not in its source.
_described() {
  awk -v title="$1" '
    /^\.S[sh] / { below = $2 == title }
    below && /^\.It Fl / {
      for (at = 3; at <= NF && $at ~ /^(-|.,?$)/ && $at != "Ar"; ++at) {
        if ($at != ",") print "-" $at
      }
    }
  ' "$manual" | sort
}

the_page_is_well_written() {
  command -v mandoc >/dev/null || skip 'there is no mandoc here'
  keep mandoc -T lint -W all "$manual"
  expect 0 '' ''
}

every_command_is_described_in_the_order_of_the_help() {
  diff <(commands_shown) <(sed -n '/^\.Sh COMMANDS/,/^\.Sh PATHS/s/^\.Ss \([a-z]*\).*/\1/p' "$manual") ||
    fail
}

the_options_of_the_tool_are_described() {
  [ -n "$(_described DESCRIPTION)" ] || fail
  diff <("$tool" --help | options_shown) <(_described DESCRIPTION) || fail
}

the_options_of_every_command_are_described() {
  local command
  for command in $(commands_shown); do
    diff <("$tool" "$command" --help | options_shown | grep -vxE -e '-h|--help') \
      <(_described "$command") && continue
    echo "  $command: '<' is what --help shows, '>' what the page describes"
    fail
  done
}

the_examples_of_the_page_are_understood() {
  local line examples=0
  given config.xml "<config><hostname>a</hostname><interface name='eth0'/>\
<rules><rule/></rules><debug/></config>"
  while IFS= read -r line; do
    line=${line//\\(dq/\"}
    keep env PATH="$(tool_folder):$PATH" bash -c "${line#.Dl }"
    expect_status 0
    examples=$((examples + 1))
  done < <(sed -n '/^\.Sh EXAMPLES/,$p' "$manual" | grep '^\.Dl ')
  [ "$examples" -ge 5 ] || fail
  expect_names . config.xml config.xml.old
}

run_cases
