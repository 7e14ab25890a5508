# check.awk TABLE SOURCE...: does the work of check. It reads the table first, then the include
# lines of each source.

function complain(text) {
  print text
  failed = 1
}

function folder_of(path) {
  if (!sub(/\/[^\/]*$/, "", path)) path = "."
  return path
}

function exists(path,    line) {
  if (!(path in known)) {
    known[path] = (getline line < path) >= 0
    close(path)
  }
  return known[path]
}

# The room of a file: the file itself where it has a line of its own, otherwise its folder.
function room_of(path) { return path in allowed ? path : folder_of(path) }

# Whether `room` is among the rooms of a list, or below one of them that ends with "/*".
function is_among(room, list,    names, count, i, stem) {
  count = split(list, names, " ")
  for (i = 1; i <= count; i++) {
    if (names[i] == room) return 1
    if (names[i] !~ /\/\*$/) continue
    stem = substr(names[i], 1, length(names[i]) - 1)
    if (substr(room "/", 1, length(stem)) == stem) return 1
  }
  return 0
}

# The file of the project that an include names, or an empty text when it is none of them: a path
# from the project's folder, or one from the folder of the source.
function included_file(name, source) {
  if (exists(name)) return name
  name = folder_of(source) "/" name
  while (sub(/[^\/]+\/\.\.\//, "", name)) continue
  return exists(name) ? name : ""
}

FNR == 1 { reads_table = ++file_count == 1 }

reads_table {
  sub(/#.*/, "")
  if (NF == 0) next
  room = $1
  if (!sub(/:$/, "", room)) complain(FILENAME ":" FNR ": a room has to end with ':'")
  if (room in allowed) complain(FILENAME ":" FNR ": " room " has a line already")
  for (i = 2; i <= NF; i++) {
    if ($i !~ /\/\*$/ && !($i in allowed)) {
      complain(FILENAME ":" FNR ": " $i " does not stand above " room)
    }
  }
  $1 = ""
  allowed[room] = $0
  line_of[room] = FNR
  table = FILENAME
  next
}

FNR == 1 {
  room = room_of(FILENAME)
  is_used[room] = 1
  if (!(room in allowed)) complain(FILENAME ":1: " room " has no line in " table)
}

match($0, /^[ \t]*#[ \t]*include[ \t]*[<"][^>"]*/) {
  name = substr($0, RSTART, RLENGTH)
  is_quoted = name ~ /"/
  sub(/.*[<"]/, "", name)
  file = included_file(name, FILENAME)
  if (file == "" && is_quoted) complain(FILENAME ":" FNR ": no such file: " name)
  if (file == "") next
  other = room_of(file)
  if (other != room && room in allowed && !is_among(other, allowed[room])) {
    complain(FILENAME ":" FNR ": " room " may not include " other ": " name)
  }
}

END {
  for (room in allowed) {
    if (!(room in is_used)) complain(table ":" line_of[room] ": no source stands in " room)
  }
  exit failed
}
