# What scripts/mutants makes of a source, and what it reports of a run. Nothing is built here.

. "$(dirname "$0")/project.bash"

command -v python3 >/dev/null || { echo "there is no python3 here"; exit 77; }

# _python TEXT: runs it beside the parts of the script.
_python() {
  keep env PYTHONDONTWRITEBYTECODE=1 PYTHONPATH="$project/tests/mutation" python3 -c "$1"
}

a_source_is_changed_in_one_place_at_a_time() {
  printf 'int F(int i) {\n  if (i == 0) return 1;\n  G("a == b", i + 1);\n  return i;\n}\n' >source
  _python 'from mutants import apply, mutants_of
text = open("source").read()
for mutant in mutants_of("a/source", text):
  print(mutant.kind, mutant.key())
  assert apply(mutant, text) != text'
  expect_status 0
  expect_text stderr ''
  expect_part stdout "condition ('a/source', 'int F(int i)', 'if (i == 0) return 1;', 'if (i != 0) return 1;')"
  expect_part stdout "off by one ('a/source', 'int F(int i)', 'G(\"a == b\", i + 1);', 'G(\"a == b\", i);')"
  expect_part stdout "dropped call ('a/source', 'int F(int i)', 'G(\"a == b\", i + 1);', ';')"
  ! grep -q '!= b' "$scratch/stdout" || { cat "$scratch/stdout"; fail; }
}

# _report REVIEWED: what is reported of a run that one mutant survived, with that list.
_report() {
  printf '%s\n' "$1" >reviewed
  _python 'from mutants import Mutant
from review import Review, report
survivor = Mutant("value", "a/b.cpp", 7, ["  return true;"], ["  return false;"], "bool F()")
counts = {"noticed": 7, "out of time": 2, "does not compile": 3, "same code": 4}
print(report(5, 100, counts, [survivor], Review("reviewed")))'
}

what_nobody_has_judged_counts_as_missed() {
  _report '# nothing'
  expect_status 0
  expect_part stdout '10 of 100 with the seed 5'
  expect_part stdout '90.0 %'
  expect_part stdout 'a/b.cpp: bool F()'
}

what_is_judged_does_not_count() {
  _report $'same: a/b.cpp: bool F()\n- return true;\n+ return false;\n= Nobody asks.'
  expect_status 0
  expect_part stdout '100.0 %'
  ! grep -q 'bool F' "$scratch/stdout" || { cat "$scratch/stdout"; fail; }
}

a_judgement_needs_a_known_verdict_and_a_reason() {
  _report $'fine: a/b.cpp: bool F()\n- return true;\n+ return false;\n= Nobody asks.'
  expect_status 1
  expect_part stderr 'no verdict'
  _report $'same: a/b.cpp: bool F()\n- return true;\n+ return false;'
  expect_status 1
  expect_part stderr 'a line is missing'
}

the_judgements_of_the_project_can_be_read() {
  _python 'from review import Review; Review()'
  expect 0 '' ''
}

run_cases
