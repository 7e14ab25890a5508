# Cases of replacing a file when something goes wrong on the way: afterwards there is the old file
# or the new one, whole, and nothing that could be taken for either.

# The quoted lines of bash are expanded where they run.
# shellcheck disable=SC2016

. "$(dirname "$0")/driver.bash"

# A file of some MiB, formatted as the tool does it.
_given_a_big_file() {
  {
    echo '<r>'
    seq -f '  <item>%.0f</item>' "${2:-100000}"
    echo '</r>'
  } > "$1"
}

# Mounts a file system of a few MiB on a folder, for this case alone.
_mount_small_disk() {
  mkdir "$1"
  mount -t tmpfs -o "size=$2" tmpfs "$1" 2> error || skip "no small disk: $(cat error)"
  # shellcheck disable=SC2064
  trap "umount '$PWD/$1'" EXIT
}

a_full_disk_leaves_the_old_file() {
  _mount_small_disk disk 3m
  _given_a_big_file disk/a.xml
  cp disk/a.xml old.xml
  run edit -i --set-attr / b 1 disk/a.xml
  expect 2 '' 'xmldom: disk/a.xml: write error: No space left on device\n'
  cmp old.xml disk/a.xml || fail
  expect_names disk a.xml
  run format -i --indent-off disk/a.xml
  expect 2 '' 'xmldom: disk/a.xml: write error: No space left on device\n'
  cmp old.xml disk/a.xml || fail
  expect_names disk a.xml
}

a_disk_that_is_too_small_for_the_old_file_beside_the_new_leaves_the_old_file() {
  _mount_small_disk disk 5m
  _given_a_big_file disk/a.xml
  cp disk/a.xml old.xml
  run edit -i.old --set-attr / b 1 disk/a.xml
  expect 2 '' 'xmldom: disk/a.xml: write error: No space left on device\n'
  cmp old.xml disk/a.xml || fail
  expect_names disk a.xml
  run edit -i --set-attr / b 1 disk/a.xml
  expect 0 '' ''
}

a_limit_on_the_size_of_files_leaves_the_old_file() {
  _given_a_big_file a.xml
  cp a.xml old.xml
  run_shell 'ulimit -f 1024; "$tool" edit -i --set-attr / b 1 a.xml'
  expect 2 '' 'xmldom: a.xml: write error: File too large\n'
  cmp old.xml a.xml || fail
  [ "$(find . -name '.xmldom-*')" = '' ] || fail
}

a_disk_that_is_read_only_leaves_the_old_file() {
  _mount_small_disk disk 1m
  given disk/a.xml '<a/>'
  mount -o remount,ro "$PWD/disk" 2> error || skip "no read-only disk: $(cat error)"
  run edit -i --set / x disk/a.xml
  expect 2 '' 'xmldom: disk/a.xml: Read-only file system\n'
  expect_file disk/a.xml '<a/>'
}

a_folder_that_is_read_only_leaves_the_old_file() {
  mkdir folder
  given folder/a.xml '<a/>'
  chmod 555 folder
  local reason='Permission denied'
  if [ "$(id -u)" -eq 0 ]; then
    # Root is bound by this alone.
    chattr +i folder 2> error || skip "no read-only folder for root: $(cat error)"
    # shellcheck disable=SC2064
    trap "chattr -i '$PWD/folder'" EXIT
    reason='Operation not permitted'
  else
    trap 'chmod 755 folder' EXIT
  fi
  run edit -i --set / x folder/a.xml
  expect 2 '' "xmldom: folder/a.xml: no file can be made beside it: $reason\n"
  expect_file folder/a.xml '<a/>'
  expect_names folder a.xml
}

a_name_that_is_taken_by_a_folder_leaves_the_old_file() {
  given a.xml '<a/>'
  mkdir a.xml.old
  run edit -i.old --set / x a.xml
  expect 2 '' "xmldom: a.xml: '$(realpath a.xml.old)' cannot be replaced: Is a directory\n"
  expect_file a.xml '<a/>'
  expect_names . a.xml a.xml.old
}

# Ends a run that has been started, and looks at what it leaves: the file must be the old one or the
# new one, and whatever else there is has a name that no pattern of XML files matches.
_kill_and_look() {
  kill -9 "$1" 2> /dev/null
  wait "$1" 2> /dev/null
  case $(md5sum < a.xml) in
    "$old") olds=$((olds + 1)) ;;
    "$new") news=$((news + 1)) ;;
    *)
      echo "  a.xml is neither the old file nor the new one"
      fail
      ;;
  esac
  cp ../old.xml a.xml
  local name
  for name in * .[!.]*; do
    case $name in
      a.xml | '.[!.]*') ;;
      .xmldom-??????)
        middles=$((middles + 1))
        rm "$name"
        ;;
      *)
        echo "  stray $name"
        fail
        ;;
    esac
  done
}

_start() {
  "$tool" edit -i --set-attr / b 1 a.xml &
  started=$!
}

# Waits until a run that has been started writes the new file, or ends.
_wait_for_the_new_file() {
  until compgen -G '.xmldom-*' > /dev/null || ! kill -0 "$started" 2> /dev/null; do :; done
}

a_file_that_somebody_else_changes_in_the_meantime_is_left_alone() {
  local started round
  # Once in a while the run is faster than this script.
  for ((round = 0; round < 500; ++round)); do
    _given_a_big_file a.xml
    (
      _start 2> stderr
      _wait_for_the_new_file
      kill -STOP "$started" && echo '<!-- mine -->' >> a.xml && kill -CONT "$started"
      wait "$started"
      echo $? > status
    ) 2> /dev/null
    [ "$(cat status)" = 0 ] || break
  done
  [ "$(cat status stderr)" = $'2\nxmldom: a.xml: changed by somebody else in the meantime' ] || {
    cat status stderr
    fail
  }
  [ "$(tail -n 1 a.xml)" = '<!-- mine -->' ] || fail
  [ "$(head -n 1 a.xml)" = '<r>' ] || fail
  expect_names . a.xml status stderr
}

a_kill_leaves_the_old_file_or_the_new_one() {
  _given_a_big_file old.xml "$(scaled 100000)"
  mkdir folder
  cd folder || fail
  cp ../old.xml a.xml
  local old new started took olds=0 news=0 middles=0 round pause
  old=$(md5sum < a.xml)
  took=$(date +%s%N)
  _start
  wait "$started"
  took=$((($(date +%s%N) - took) / 1000))
  new=$(md5sum < a.xml)
  [ "$old" != "$new" ] || fail
  cp ../old.xml a.xml

  # At any moment, the last ones behind the usual end, which a busy machine may put off.
  for ((round = 0; round < 30 || (news == 0 && round < 300); ++round)); do
    _start
    pause=$((took * round / 15))
    sleep "$(printf '%d.%06d' $((pause / 1000000)) $((pause % 1000000)))"
    _kill_and_look "$started"
  done
  # While the new file is being written, once this script is quick enough to see that.
  for ((round = 0; round < 30 || (middles == 0 && round < 500); ++round)); do
    _start
    _wait_for_the_new_file
    sleep "0.00$((round % 10))"
    _kill_and_look "$started"
  done
  # All of these have to be met, or little was tried.
  local count
  for count in "$olds" "$news" "$middles"; do
    [ "$count" -gt 0 ] && continue
    echo "  old $olds, new $news, left behind $middles"
    fail
  done
}

run_cases
