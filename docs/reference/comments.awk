# comments.awk HEADER: what Doxygen reads of a header, line for line, so that its warnings name lines
# of the header. Three things that readers of the header see without being told become explicit:
#
# - the heading "// ---- Title (Source.cpp)" and the contract below it hold for the members that
#   follow, up to the next heading or the end of the class;
# - a declaration right below another one shares the comment above that, but for a destructor;
# - the parts of a contract, such as "Result:", stand out.

function trimmed(text) {
  sub(/^ +/, "", text)
  return text
}

# `first`: the text begins a comment, where a part needs no new line.
function marked(text, first,    before) {
  before = ""
  if (first && match(text, "^" parts)) {
    before = "**" substr(text, 1, RLENGTH) "**"
    text = substr(text, RLENGTH + 1)
  }
  gsub(parts, "<br>**&**", text)
  return before text
}

function braces(code,    opened) {
  opened = gsub(/[{]/, "", code)
  return opened - gsub(/[}]/, "", code)
}

BEGIN {
  parts = "(Result|Out|Ownership|Effects|Bad input|Cost|Deliberate|References|Iteration|Stack" \
          "|Threads|Exceptions|Text|Loading|Derived classes|Changes by hand|Edits during the loop):"
  depth = 0
}

/^ *\/\/ ---- / {
  title = $0
  sub(/^ *\/\/ ---- /, "", title)
  sub(/ \(.*/, "", title)
  print (grouped ? "/** @} */ " : "") "/** @name " title
  grouped = heading = 1
  shared = ""
  next
}

heading && /^ *\/\// {
  sub(/^ *\/\/ ?/, "")
  print marked($0, 0)
  next
}

heading {
  print "*/ /** @{ */"
  heading = 0
  next
}

/^ *\/\/\/($| )/ {
  first = !commented
  text = trimmed($0)
  sub(/^\/\/\/ ?/, "", text)
  text = marked(text, first)
  shared = first ? text : shared " " text
  sharedDepth = depth
  commented = 1
  ended = 0
  print "/// " text
  next
}

{
  commented = 0
  code = $0
  sub(/ *\/\/.*/, "", code)
}

code ~ /^ *$/ || code ~ /^#/ || code ~ /^ *(public|protected|private):/ { shared = "" }

{
  line = $0
  if (shared != "" && ended && depth == sharedDepth && code !~ /^ *}|~/ && line !~ /\/\/\/</) {
    line = "/** " shared " */ " trimmed(line)
  }
  depth += braces(code)
  ended = depth == sharedDepth && code ~ /[;}]$/
  if (grouped && code == "};") {
    line = "/** @} */ " line
    grouped = 0
  }
  print line
}

END { print "/** @file */" }
