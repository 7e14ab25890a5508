# Sourced by what counts instructions: skips it, with the reason, where valgrind cannot do so.
if ! reason=$(valgrind --quiet --tool=none true 2>&1); then
  echo "skipped: no instructions can be counted here: $(head -n 1 <<<"$reason" | sed 's/.*line [0-9]*: //')"
  exit 77
fi
