# check.awk NAMES EXCEPTIONS SOURCE...: does the work of check.

function complain(text) {
  print text
  failed = 1
}

# Whether `name` stands in `text` as words of their own.
function stands_in(name, text,    at, before, after) {
  while ((at = index(text, name)) > 0) {
    before = at == 1 ? "" : substr(text, at - 1, 1)
    after = substr(text, at + length(name), 1)
    if (before !~ /[A-Za-z0-9_:~]/ && after !~ /[A-Za-z0-9_:]/) return 1
    text = substr(text, at + length(name))
  }
  return 0
}

function has_row(name) {
  if (stands_in(name, titles)) return 1
  if (name ~ /^xmldom::/ || name ~ /::operator/) return 0
  sub(/.*::/, "", name)
  return stands_in(name, titles)
}

# The exception for an operation: its own line, or that of its class.
function exception_of(name) {
  if (name in reason) return name
  if (name ~ /::operator/) sub(/::operator.*/, "::*", name)
  else sub(/::[^:]*$/, "::*", name)
  return name in reason ? name : ""
}

FILENAME == ARGV[1] {
  operations[++operation_count] = $0
  next
}

FILENAME == ARGV[2] {
  if (/^#/ || NF == 0) next
  if (!match($0, /: /)) {
    complain(FILENAME ":" FNR ": an exception has to be a name, a colon and a reason")
    next
  }
  name = substr($0, 1, RSTART - 1)
  if (name in reason) complain(FILENAME ":" FNR ": " name " has a line already")
  reason[name] = substr($0, RSTART + 2)
  place[name] = FILENAME ":" FNR
  exceptions[++exception_count] = name
  next
}

/^    \{"|FailingCall call = \{"/ {
  title = $0
  sub(/^[^"]*"/, "", title)
  sub(/".*/, "", title)
  titles = titles title "\n"
}

END {
  for (i = 1; i <= operation_count; ++i) {
    name = operations[i]
    exception = exception_of(name)
    if (has_row(name)) {
      if (exception == name) complain(place[name] ": " name " has a row, and needs no exception")
      continue
    }
    if (exception == "") complain(name " has neither a row nor an exception")
    is_used[exception] = 1
  }
  for (i = 1; i <= exception_count; ++i) {
    name = exceptions[i]
    if (!(name in is_used) && !has_row(name)) complain(place[name] ": there is no " name " without a row")
  }
  exit failed
}
