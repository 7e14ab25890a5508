# What the scripts of evidence put into docs/hardening.md: programs of this test print what the
# project's own print.

. "$(dirname "$0")/project.bash"

# A project with an empty section NAME, whose builds and packages are there.
_given_section() {
  command -v git >/dev/null || skip 'there is no git here'
  _given_a_copy
  mkdir -p copy/docs
  printf '<!-- %s -->\n<!-- end -->\n' "$1" > copy/docs/hardening.md
  git -C copy init --quiet
  git -C copy -c user.name=A -c user.email=a@example.org commit --quiet --allow-empty --message 'first'
  _given_program dpkg-query 'echo installed'
  _given_program cmake ':'
}

# _given_part FILE TEXT: a program of the copy that prints the text; escapes as for given.
_given_part() {
  mkdir -p "copy/$(dirname "$1")"
  printf '%b' "$2" > "copy/$1.printed"
  printf '#!/bin/bash\ncat "$0.printed"\n' > "copy/$1"
  chmod +x "copy/$1"
}

# _expect_record TEXT: what is recorded, below the line that says when.
_expect_record() {
  expect_status 0
  expect_text stderr ''
  sed '1,/^$/d' copy/docs/hardening.md | sed '1,/^$/d; /^<!-- end/d' | sed '$d' > record
  printf '%b' "$1" > expected
  diff -u expected record || fail
}

failing_allocations_are_added_up_by_places() {
  _given_section failing-allocations
  _given_part build/dev/tests/xmldom-allocation-tests "$(
    printf '%-56s %21s %21s\\n' '' 'small tree' 'realistic tree'
    printf '%-56s %10s %10s %10s %10s\\n' operation alone 'and after' alone 'and after'
    printf 'query\\n'
    printf '  %-54s %10d %10d %10d %10d\\n' 'SelectNodes of all' 1 2 30 40 SelectSingleNode 5 6 0 0
    printf 'support\\n  %-54s %10d %10d %10d %10d\\n' 'CMemFile: 2 writes' 7 8 0 0
    printf 'query\\n  %-54s %10d %10d %10d %10d\\n' 'GetListChildNode of all' 100 0 0 0
    printf '3 operations, 99 failing allocations\\n[  PASSED  ] 3 tests.\\n')"
  _given_program valgrind 'echo "3 operations, 12 failing allocations"'
  local table='| Place | Operations | Small tree: one alone | and all after | Realistic tree: one alone | and all after |
|---|---|---|---|---|---|
| query | 3 | 106 | 8 | 30 | 40 |
| support | 1 | 7 | 8 | 0 | 0 |

3 operations, 99 failing allocations.\n'
  keep copy/scripts/failing-allocations --record --without-valgrind
  _expect_record "$table"
  keep copy/scripts/failing-allocations --record
  _expect_record "${table}Under Valgrind: 3 operations, 12 failing allocations.\n"
}

growth_tells_of_exceptions_and_of_what_grows_most() {
  _given_section growth
  local row='%-58s %-52s %6s %12s %12s %6s  %s\\n'
  _given_part tests/growth/instructions/check "$(
    printf "$row" operation shape n 'for n' 'for 4n' ratio ''
    printf "$row" SelectNodes 'a chain' 1000 10 41 4.10 '' \
      AddChild 'many children' 1000 10 43 4.30 '' \
      'xmldom::ANameThatIsLongerThanItsColumn, which moves those behind' e 1000 10 42 4.20 '' \
      Compare 'two orders' 250 10 160 16.00 'limits.md: Comparing'
    printf '4 operations and shapes, 0 wrong\\n')"
  keep copy/scripts/growth --record
  _expect_record '4 operations and shapes, 0 wrong. Of those that are no exception, none takes more than 4.30 times the
instructions for four times the size (AddChild, many children). [Limits](limits.md#what-is-not-linear) tells of
the others:

| Operation and shape | n | Instructions for 4n by those for n |
|---|---|---|
| Compare, two orders | 250 | 16.00 |\n'
}

conformance_names_the_other_parsers() {
  _given_section conformance
  _given_part tests/conformance/compare '5 documents, 5 readers, 1 differences, all explained\n'
  _given_part tests/conformance/page ''
  _given_program xmlwf 'echo "xmlwf using expat_2.5.0"'
  _given_program xmllint 'echo "xmllint: using libxml version 20914" >&2'
  keep copy/scripts/conformance --record
  _expect_record '5 documents, 5 readers, 1 differences, all explained.
The readers are the library in two ways, the tool,
xmlwf (expat_2.5.0) and xmllint (libxml version 20914).\n'
}

soak_adds_up_the_cases_of_each_subject() {
  _given_section soak
  _given_part build/release/tests/xmldom-soak-tests \
    '[ RUN      ] SoakText\ntext: 30 cases, seed 7\npath list without memory: 4 cases, seed 7\ntext: 6 cases, seed 7\n'
  keep copy/scripts/soak --record 0
  _expect_record 'No difference and no property that fails in 40 cases, 1 rounds of new seeds.

| Subject | Cases |
|---|---|
| path list without memory | 4 |
| text | 36 |\n'
}

hostile_counts_how_the_commands_ended() {
  _given_section hostile
  local row='%-34s %7d KiB %8d KiB  %-30s %d  %s\\n'
  _given_part tests/hostile/hostile "$(
    printf "$row" 'many entities' 900 32768 check 0 '' 'many entities' 900 32768 'path //b' 1 'a.xml: 2 none' \
      'many entities' 900 32768 'value //b' 2 'a.xml: memory is out' levels 2000 40000 check 2 'a.xml: too deep'
    printf '4 runs, 0 that ended in another way\\n')"
  keep copy/scripts/hostile --record
  _expect_record '| Document | Size in KiB | Address space in KiB | Answers | Errors with a message |
|---|---|---|---|---|
| many entities | 900 | 32768 | 2 | 1 |
| levels | 2000 | 40000 | 0 | 1 |

4 runs, 0 that ended in another way.\n'
}

_given_tool_tests() {
  _given_section try-tool
  mkdir -p copy/tests/tool
  echo 'echo "  seed $XMLDOM_TEST_SEED, $XMLDOM_TEST_RUNS runs"; echo "  12 ended with 0"' \
    > copy/tests/tool/random_runs_test.bash
  printf '%s\n' 'echo "  70 runs, in 30 of which the file was replaced"' \
    'echo "  40 runs, in 20 of which the file was replaced"; echo "  left behind: nothing"' \
    'echo "  50 runs, in 25 of which the file was replaced"' > copy/tests/tool/faults_test.bash
  printf '%s\n' 'echo "  80 runs of 1 commands: 78 ended with 2, 2 did without the memory"' \
    'echo "  20 runs of 3 commands: 19 ended with 2, 1 did without the memory"' > copy/tests/tool/allocation_test.bash
  echo 'echo "1 passed, 0 failed, 0 skipped"' > copy/tests/tool/replacement_test.bash
}

try_tool_tells_of_random_runs_and_of_each_way_to_fail() {
  _given_tool_tests
  keep copy/scripts/try-tool --record --runs 40 --seed 9
  _expect_record '| What was tried | Runs | What came of it |
|---|---|---|
| random arguments, seed 9 | 40 | no finding of a sanitizer; 12 ended with 0 |
| a call that fails | 70 | the file is the old or the new one, whole; 30 times the new one |
| a kill at a call | 40 | the file is the old or the new one, whole; 20 times the new one |
| a signal that ends the tool at a call | 50 | the file is the old or the new one, whole; 25 times the new one |
| an allocation that fails, alone or with all after it, in 4 commands | 100 | 97 ended with 2 and a message, 3 did without the memory |
| two loops that edit one file at once | 2000 | no edit is lost |\n'
}

try_tool_records_nothing_when_a_test_fails() {
  _given_tool_tests
  echo 'exit 1' >> copy/tests/tool/faults_test.bash
  keep copy/scripts/try-tool --record --runs 40 --seed 9
  expect_status 1
  expect_part stderr 'failed: faults'
  expect_file copy/docs/hardening.md '<!-- try-tool -->\n<!-- end -->\n'
}

static_analysis_tells_of_the_packages_too() {
  _given_section static
  mkdir -p copy/xmldom/base
  touch copy/xmldom/base/{A,B}.cpp
  git -C copy add xmldom
  _given_program clang-tidy 'case "$*" in
      *--list-checks*) printf "Enabled checks:\n    bugprone-a\n    bugprone-b\n" ;;
      *--version*) echo "  LLVM version 14.0.6" ;;
    esac'
  _given_part scripts/packages ''
  _given_part tests/packages/hardening '   /usr/bin/xmldom\n   /usr/lib/libxmldom.so.0.1.0\n'
  keep copy/scripts/check --static --record
  expect_status 0
  grep -q '^clang-tidy 14, 2 checks of `.clang-tidy`, 2 sources and the headers that they include: 0 findings\.$' \
    copy/docs/hardening.md || { cat copy/docs/hardening.md; fail; }
  grep -qxF -- '- `/usr/lib/libxmldom.so.0.1.0`' copy/docs/hardening.md || fail
}

run_cases
