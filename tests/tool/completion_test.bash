# Cases of the completion for bash, zsh and fish: what the shell offers behind what has been typed so
# far. Those for bash try everything; those for the others try that each of them does the same.

. "$(dirname "$0")/driver.bash"
. "$(dirname "$0")/../../tools/completion/xmldom"

# _offers "WORD..." [OFFER...]: behind these words, the last of which is being typed, the shell
# offers these and nothing else. A '=' is a word of its own, as the shell has it.
_offers() {
  local IFS=$' \n' offered
  read -ra COMP_WORDS <<<"xmldom $1"
  [[ $1 != *' ' && -n $1 ]] || COMP_WORDS+=('')
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  COMPREPLY=(left from before)
  _xmldom "$tool"
  offered=$(printf '%s\n' "${COMPREPLY[@]}" | sort)
  [ "$offered" = "$(printf '%s\n' "${@:2}" | sort)" ] && return
  echo "  behind 'xmldom $1' it offers:" "${COMPREPLY[@]}"
  fail
}

it_is_registered_for_the_tool() {
  [ "$(complete -p xmldom)" = 'complete -F _xmldom xmldom' ] || fail
}

commands_are_offered_first() {
  _offers '' check diff edit format mask page path select tree value
  _offers 'pa' page path
  _offers '--verbose s' select
  _offers 'unknown'
}

options_of_the_tool_stand_before_a_command() {
  _offers '-' -h --help --verbose --version
  _offers '--ver' --verbose --version
}

options_of_a_command_stand_behind_it() {
  _offers 'select -' -h --help --verbose --version --count --first -H --with-filename --no-filename --source
  _offers 'value -' -h --help --verbose --version --attr -f --field --separator --normalize --library \
    -0 --null --first -H --with-filename --no-filename
  _offers 'edit --set' --set --set-attr
  _offers 'edit --re' --remove --remove-attr --rename --replace
  _offers 'mask --q' --quiet
  _offers 'format --l' --lossy
  _offers 'check --l' --lossless
  _offers 'check a.xml --l' --lossless
}

# _options_behind COMMAND: its options and those of the tool.
_options_behind() { { "$tool" --help; "$tool" "$1" --help; } | options_shown; }

every_option_that_help_shows_is_offered() {
  local command options
  for command in check diff edit format mask page path select tree value; do
    mapfile -t options < <(_options_behind "$command")
    _offers "$command -" "${options[@]}"
  done
}

the_values_of_an_option_are_offered_where_they_are_known() {
  _offers 'tree --color ' auto always never
  _offers 'tree --color a' auto always
  _offers 'tree --color =' auto always never
  _offers 'tree --color = n' never
  given never ''
  _offers 'tree --color never ' never
}

nothing_is_offered_for_values_that_only_the_user_knows() {
  given a.xml ''
  _offers 'value --attr '
  _offers 'value -f '
  _offers 'value -f a '
  _offers 'tree --depth a'
  _offers 'edit --set '
  _offers 'edit --set /a '
  _offers 'edit --set-attr /a b '
  _offers 'select '
  _offers 'page --from 2 '
}

files_are_offered_where_they_can_stand() {
  given a.xml ''
  given 'b c.xml' ''
  mkdir folder
  given folder/d.xml ''
  _offers 'check ' a.xml 'b c.xml' folder
  _offers 'check a.xml b' 'b c.xml'
  _offers 'check folder/' folder/d.xml
  _offers 'select //a a' a.xml
  _offers 'value --attr n //a a' a.xml
  _offers 'value -f b -f @c --separator , //a a' a.xml
  _offers 'edit --set /a text --remove /b a' a.xml
  _offers 'edit --set-attr /a name value a' a.xml
  _offers 'diff a.xml f' folder
  _offers 'format -i.old a' a.xml
  given -a.xml ''
  _offers 'check -- -' -a.xml
}

_completions=$(realpath "$(dirname "$0")/../../tools/completion")

# _fish "WORD...": what fish offers, a line each, without descriptions.
_fish() {
  PATH="$(tool_folder):$PATH" HOME="$scratch" fish --no-config -c \
    "source '$_completions/xmldom.fish'; complete -C 'xmldom $1'" | cut -f 1
}

# The same for zsh, which hands what is offered to functions of its own; these print it instead.
_zsh() {
  PATH="$(tool_folder):$PATH" zsh -f -c '
    _describe() { if [[ $1 == -o ]]; then shift; fi; print -rl -- "${(@)${(P)2}%%:*}"; }
    _files() { print -rl -- ${words[CURRENT]}*(N); }
    compadd() {
      local prefix=""
      if [[ $1 == -P ]]; then prefix=$2; shift 2; fi
      shift
      print -rl -- $prefix${^@}
    }
    words=(xmldom "${(@s: :)1}") CURRENT=$#words
    . "$2/_xmldom"' zsh "$1" "$_completions"
}

# _all_offered SHELL: each command and each option that help shows.
_all_offered() {
  local shell=$1 commands command
  commands=$(commands_shown)
  diff <("_$shell" '' | sort -u) <(sort <<< "$commands") || fail
  for command in $commands; do
    diff <("_$shell" "$command -" | sort -u) <(_options_behind "$command") && continue
    echo "  $shell behind $command: '<' is offered, '>' is what help shows"
    fail
  done
}

# _expect_lines LINE...: standard input holds these.
_expect_lines() { diff <(sort -u | grep -v '^$') <(printf '%s\n' "$@" | sort | grep -v '^$') || fail; }

_values_and_files_offered() {
  given a.xml ''
  "_$1" 'tree --color ' | _expect_lines auto always never
  "_$1" 'tree --color=' | _expect_lines --color=auto --color=always --color=never
  "_$1" 'tree --color never a' | _expect_lines a.xml
  "_$1" 'value --attr ' | _expect_lines ''
  "_$1" 'edit --set-attr /a b ' | _expect_lines ''
  "_$1" 'edit --set-attr /a b c a' | _expect_lines a.xml
  "_$1" 'select a' | _expect_lines ''
  "_$1" 'select //a a' | _expect_lines a.xml
  "_$1" 'check a' | _expect_lines a.xml
  given -a.xml ''
  "_$1" 'check -- -' | _expect_lines -a.xml
}

fish_offers_all_that_help_shows() {
  command -v fish >/dev/null || skip 'there is no fish here'
  _all_offered fish
}

fish_offers_values_and_files_where_they_can_stand() {
  command -v fish >/dev/null || skip 'there is no fish here'
  _values_and_files_offered fish
}

zsh_offers_all_that_help_shows() {
  command -v zsh >/dev/null || skip 'there is no zsh here'
  _all_offered zsh
}

zsh_offers_values_and_files_where_they_can_stand() {
  command -v zsh >/dev/null || skip 'there is no zsh here'
  _values_and_files_offered zsh
}

run_cases
