# Reads a page and writes what its ```cpp blocks make: with -v want=program a C++ source that runs
# them one after the other, with -v want=output what that program has to print.
#
# A block with a `main` that holds the line below is a scaffold: the blocks that follow are put where
# that line stands, up to the next scaffold. A block with any other `main` is a program of its own.
# The ```text or ```xml block that follows a sample is what it prints; without one, or with a heading
# in between, it prints nothing.

BEGIN {
  place = "// The sample stands here."
  writes = want == "program"
  if (writes) print "#include <cstdio>\n"
}

/^```/ && !fenced {
  fenced = 1
  language = substr($0, 4)
  shown = awaited && (language == "text" || language == "xml")
  begin = FNR
  count = 0
  next
}

/^```/ {
  fenced = 0
  if (language == "cpp") TakeBlock()
  if (shown) awaited = 0
  next
}

fenced && language == "cpp" { code[++count] = $0 }
fenced && shown && !writes { print }
!fenced && /^#/ { awaited = 0 }

END {
  if (failed) exit 1
  if (samples == 0) Fail("there is no sample")
  if (writes) WriteMain()
}

function Fail(reason) {
  print page ":" FNR ": " reason > "/dev/stderr"
  failed = 1
  exit 1
}

function TakeBlock(    i, mainLine, placeLine) {
  for (i = 1; i <= count; ++i) {
    if (code[i] ~ /^int main\(/) mainLine = i
    if (index(code[i], place)) placeLine = i
  }
  if (placeLine) {
    TakeScaffold(mainLine, placeLine)
    return
  }
  if (!mainLine && !scaffolded) Fail("the sample above has no scaffold")
  awaited = 1
  lineOf[++samples] = begin
  if (!writes) {
    print Announcement(begin)
  } else if (mainLine) {
    WriteFileScope(mainLine)
    WriteSample("", Lines(mainLine + 1, count - 1), "  return 0;\n}\n")
  } else {
    WriteSample(head, Lines(1, count), tail)
  }
  spaceOf[samples] = spaces
}

function TakeScaffold(mainLine, placeLine) {
  if (writes) WriteFileScope(mainLine)
  head = Lines(mainLine + 1, placeLine - 1)
  tail = Lines(placeLine + 1, count)
  scaffolded = 1
  awaited = 0
}

# Lines of the block, which compilers report as those of the page.
function Lines(from, to,    i, text) {
  text = "#line " begin + from " \"" page "\"\n"
  for (i = from; i <= to; ++i) text = text code[i] "\n"
  return text
}

# What stands before `main`: the headers first, all else in a namespace of its own.
function WriteFileScope(mainLine,    i) {
  if (spaces) print "}\n"
  for (i = 1; i < mainLine; ++i) {
    if (code[i] !~ /^#include/) continue
    print code[i]
    code[i] = ""
  }
  printf "\nnamespace page%d {\n%s", ++spaces, Lines(1, mainLine - 1)
}

function WriteSample(before, sample, after) {
  printf "%s", "int Sample" samples "() {\n" before sample after "\n"
}

function Announcement(number) { return "== " page ":" number }

function WriteMain(    i) {
  print "}\n\nint main() {"
  print "  // As a terminal shows it, whatever goes to standard error in between."
  print "  std::setvbuf(stdout, nullptr, _IOLBF, 0);"
  for (i = 1; i <= samples; ++i) {
    print "  std::puts(\"" Announcement(lineOf[i]) "\");"
    printf "  if (int status = page%d::Sample%d()) std::printf(\"returned %%d\\n\", status);\n", \
      spaceOf[i], i
  }
  print "}"
}
