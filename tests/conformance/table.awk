# Writes what differences.txt explains as a table of a page.

BEGIN {
  RS = ""
  FS = "\n"
  print "| Documents | In folder | Differ | Why |"
  print "|---|---|---|---|"
}

{
  sub(/^(#[^\n]*\n?)+/, "")
  if ($0 == "") next
  folder = $3
  sub(/\/.*/, "", folder)
  documents = ""
  for (i = 3; i <= NF; ++i) {
    name = $i
    sub(/.*\//, "", name)
    documents = documents (i > 3 ? ", " : "") "`" name "`"
  }
  readers = "`" $2 "`"
  gsub(/ /, "`, `", readers)
  print "| " documents " | `" folder "/` | " readers " | " $1 " |"
}
