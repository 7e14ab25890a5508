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
  expect 2 '' "xmldom: folder/a.xml: no file can be made beside it: $reason; \
--in-place=write writes into the file itself\n"
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

a_file_that_is_mounted_is_only_written_into() {
  given a.xml '<a/>'
  given mounted.xml '<b/>'
  mount --bind mounted.xml a.xml 2> error || skip "no bind mount: $(cat error)"
  # shellcheck disable=SC2064
  trap "umount '$PWD/a.xml'" EXIT
  run edit -i --set / x a.xml
  expect 2 '' "xmldom: a.xml: '$PWD/a.xml' cannot be replaced: Device or resource busy; \
--in-place=write writes into the file itself\n"
  expect_names . a.xml error mounted.xml
  run edit --in-place=write --set / x a.xml
  expect 0 '' ''
  expect_file mounted.xml '<b>x</b>'
}

# Each command has to find the element that the one before has added.
no_edit_is_lost_of_two_loops_at_once() {
  local edits=${XMLDOM_TEST_EDITS:-20} loop
  given a.xml '<a/>'
  for loop in 1 2; do
    for ((i = 0; i < edits; ++i)); do
      "$tool" edit -i --append / "<b loop='$loop'/>" a.xml || fail
    done &
  done
  wait
  run select --count /a/b a.xml
  expect 0 "$((2 * edits))\n" ''
  expect_names . a.xml
}

run_cases
