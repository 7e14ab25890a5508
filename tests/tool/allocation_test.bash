# Cases of memory that runs out at each allocation in turn, alone or with all that follow: the tool says
# so and ends with 2, or does without what it did not get and does all that it does otherwise. A file
# that is edited in place is the old one or the new one, whole, and nothing is left beside it.
#
# XMLDOM_TEST_MALLOC is the library whose malloc fails (FailingMalloc.cpp). XMLDOM_TEST_LONG=1
# tries every allocation, not some of each run.

. "$(dirname "$0")/driver.bash"

# How many allocations of a run fail, each alone and then with all after it, unless all of them do.
_sample=10

_needs_failing_malloc() {
  [ "$slowness" -eq 1 ] || skip 'no library can stand in front of the malloc here'
  [ -n "${XMLDOM_TEST_MALLOC:-}" ] || skip 'the C library lets nobody replace its malloc'
  ulimit -c 0
  shopt -s dotglob nullglob
  export XMLDOM_TEST_FAILING='' XMLDOM_TEST_COUNT=''
  sweeps=0 runs=0 refused=0 finished=0
}

# The document that is read, and the other that it is compared with.
_old=$'<?xml version="1.0"?>
<!DOCTYPE a [<!ENTITY x "an entity"><!ATTLIST n d CDATA "by default">]>
<!-- a comment that is longer than a short string -->
<a>
  <b c="1">the old text &amp; more of it</b>
  <b c="2">&x;<![CDATA[<characters>]]></b>
  <!-- a comment -->
  <d><e/>text</d>
</a>
'
_fragment=$'<n m="an attribute">&x; and text\n  <o/></n>'

# _run FAILING ARGUMENT...: runs the tool without what FAILING says. Out: "status", and what it wrote to
# its "output", its "errors", and into the "file". No other program runs here, which would cost more.
_run() {
  printf %s "$_old" > a.xml
  {
    XMLDOM_TEST_FAILING=$1 LD_PRELOAD=$XMLDOM_TEST_MALLOC \
      "$tool" "${@:2}" < other.xml > "$scratch/stdout" 2> "$scratch/stderr"
  } 2> /dev/null  # where the shell tells of signals
  status=$?
  IFS= read -r -d '' output < "$scratch/stdout"
  IFS= read -r -d '' errors < "$scratch/stderr"
  IFS= read -r -d '' file < a.xml
}

_complain() {
  echo "  $1: XMLDOM_TEST_FAILING=$at $(printf ' %q' xmldom "${arguments[@]}")"
  printf '%s' "$errors" | sed 's/^/    stderr: /'
  fail
}

# _try FAILING: makes one run of "arguments", and compares it with that which had all memory.
_try() {
  local at=$1 name text
  _run "$at" "${arguments[@]}"
  runs=$((runs + 1))
  if [ "$status $output" = "$full_status $full_output" ] && [ "$errors" = "$full_errors" ]; then
    finished=$((finished + 1))
    [ "$file" = "$full_file" ] || _complain 'ends well, and the file is not the new one'
  elif [ "$status" -eq 2 ]; then
    refused=$((refused + 1))
    [[ $errors == *memory* ]] || _complain 'says nothing of memory'
    # One of several files may be passed over.
    [[ $full_output == *"$output"* ]] || _complain 'has written what it never writes otherwise'
  else
    _complain "exit status $status"
  fi
  [ "$file" = "$_old" ] || [ "$file" = "$full_file" ] || _complain 'neither the old file nor the new one'
  for name in *; do
    case $name in
      a.xml | other.xml) ;;
      a.xml.old)
        IFS= read -r -d '' text < "$name"
        [ "$text" = "$_old" ] || _complain "$name is not the old file"
        rm "$name"
        ;;
      *) _complain "stray $name"; rm "$name" ;;
    esac
  done
}

# _sweep FIRST STATUS ARGUMENT...: lets allocations of a run fail, from that with the number FIRST on.
# With all memory the run ends with STATUS.
_sweep() {
  local at='' first=$1 arguments=("${@:3}")
  local full_status full_output full_errors full_file count step=1 n
  XMLDOM_TEST_COUNT=$scratch/count _run '' "${arguments[@]}"
  full_status=$status full_output=$output full_errors=$errors full_file=$file
  rm -f a.xml.old
  if [ "$status" -ne "$2" ]; then _complain "exit status $status with all memory"; return; fi
  read -r count < "$scratch/count"
  [ "$count" -gt "$first" ] || { _complain 'needs no memory of its own'; return; }
  # Another allocation is the first of those that fail in each run.
  if [ -z "${XMLDOM_TEST_LONG:-}" ]; then
    step=$(((count - first + _sample) / _sample))
    first=$((first + sweeps * 7 % step))
  fi
  sweeps=$((sweeps + 1))
  for ((n = first; n <= count; n += step)); do
    _try "$n"
    _try "$n+"
  done
}

# Each run first makes the tables of all options. Out: about how many allocations that takes, and never
# more ("beginning"); those before it are tried with one command alone.
_measure_beginning() {
  _needs_failing_malloc
  printf '<a><b c="1">another text</b><d/></a>\n' > other.xml
  XMLDOM_TEST_COUNT=$scratch/count _run '' --version
  read -r beginning < "$scratch/count"
  beginning=$((beginning - 100))
}

_tell() {
  echo "  $runs runs of $sweeps commands: $refused ended with 2, $finished did without the memory"
  # Where all had the same end, nothing was done to the allocations.
  [ "$refused" -gt "$finished" ] || fail
}

the_beginning_ends_with_2() {
  _measure_beginning
  local _sample=40
  _sweep 1 0 check a.xml
  _tell
}

mistakes_are_told_or_end_with_2() {
  _measure_beginning
  _sweep "$beginning" 0 --version
  _sweep "$beginning" 0 --help
  _sweep "$beginning" 0 edit --help
  _sweep "$beginning" 2 edit --frobnicate a.xml
  _sweep "$beginning" 2 select '//b[' a.xml
  _sweep "$beginning" 2 edit --append /a '<n>' a.xml
  _tell
}

what_reads_a_document_answers_fully_or_with_2() {
  _measure_beginning
  printf '<a>\n<b>\n</a>\n' > "$scratch/broken.xml"
  _sweep "$beginning" 0 check a.xml
  _sweep "$beginning" 0 check --verbose a.xml -
  _sweep "$beginning" 1 check "$scratch/broken.xml"
  _sweep "$beginning" 1 check --lossless a.xml
  _sweep "$beginning" 0 check --lossless other.xml
  _sweep "$beginning" 0 select //b a.xml
  _sweep "$beginning" 0 select --first --source "a/b[@c='2']" a.xml
  _sweep "$beginning" 0 select --count //b -H a.xml other.xml
  _sweep "$beginning" 1 select //none a.xml
  _sweep "$beginning" 0 value //b a.xml
  _sweep "$beginning" 0 value --library //b a.xml
  _sweep "$beginning" 0 value -f @c -f . -f ../d/e //b a.xml
  _sweep "$beginning" 0 path //b a.xml
  _sweep "$beginning" 0 tree --color=always a.xml
  iconv -f UTF-8 -t UTF-16 other.xml > "$scratch/wide.xml"
  _sweep "$beginning" 0 value //b "$scratch/wide.xml"
  _sweep "$beginning" 0 check "$scratch/wide.xml"
  _tell
}

what_writes_a_document_writes_it_or_ends_with_2() {
  _measure_beginning
  _sweep "$beginning" 0 page --from 2 --rows 3 --page 1 --pages 2 --pad '<p/>' /a a.xml
  _sweep "$beginning" 0 mask a.xml
  _sweep "$beginning" 0 format a.xml
  _sweep "$beginning" 2 format -i a.xml
  _sweep "$beginning" 0 format -i --lossy a.xml
  _sweep "$beginning" 0 format -i.old --lossy a.xml
  _sweep "$beginning" 0 format --in-place=write --lossy a.xml
  _sweep "$beginning" 0 diff a.xml a.xml
  _sweep "$beginning" 1 diff a.xml other.xml
  _sweep "$beginning" 1 diff --all a.xml -
  _tell
}

# _sweep_edits OPTION...: with each kind of edit.
_sweep_edits() {
  _measure_beginning
  _sweep "$beginning" 0 edit "$@" --set "/a/b[@c='1']" 'the new text & more' a.xml
  _sweep "$beginning" 0 edit "$@" --append /a "$_fragment" a.xml
  _sweep "$beginning" 0 edit "$@" --replace /a/b "$_fragment" a.xml
  _sweep "$beginning" 0 edit "$@" --insert-before /a/d/e "$_fragment" a.xml
  _sweep "$beginning" 0 edit "$@" --insert-after /a/b "$_fragment" a.xml
  _sweep "$beginning" 0 edit "$@" --remove /a/b a.xml
  _sweep "$beginning" 0 edit "$@" --rename /a/d another-name a.xml
  _sweep "$beginning" 0 edit "$@" --set-attr /a/b c 'the "new" value' a.xml
  _sweep "$beginning" 0 edit "$@" --remove-attr /a/b c a.xml
}

edits_to_standard_output_are_whole_or_end_with_2() {
  _sweep_edits
  _sweep "$beginning" 0 edit --all --rename //b x --append //x '<y/>' --remove /a/d a.xml
  _sweep "$beginning" 1 edit --set /a/none x a.xml
  _tell
}

edits_by_a_new_file_leave_the_old_one_or_the_new_one() {
  _sweep_edits -i
  _sweep "$beginning" 0 edit -i.old --set /a/b x a.xml
  _tell
}

edits_into_the_file_leave_the_old_contents_or_the_new_ones() {
  _sweep_edits --in-place=write
  _tell
}

a_file_in_another_encoding_is_the_old_one_or_the_new_one() {
  _measure_beginning
  local _old=$'<?xml version="1.0" encoding="ISO-8859-1"?>\n<a>\n  <b>\xe9</b>\n</a>\n'
  _sweep "$beginning" 0 edit -i --set /a/b $'\xc3\xa9 \xe2\x82\xac' a.xml
  _sweep "$beginning" 0 edit -i --append /a $'<n>\xc3\xa9 \xe2\x82\xac</n>' a.xml
  _sweep "$beginning" 0 select --source /a/b a.xml
  _sweep "$beginning" 1 check --lossless a.xml
  _sweep "$beginning" 0 format -i --lossy a.xml
  _tell
}

run_cases
