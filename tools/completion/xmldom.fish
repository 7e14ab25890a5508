# Completion of commands, options and files for fish. What there is to complete comes from the
# tool's own help, so that it is what this tool understands.

# What the help lists: name, values and description of each option and command, with tabs between.
function __xmldom_lines
    command $argv --help 2>/dev/null | awk '
        /^  [-a-z]/ {
            line = substr($0, 3)
            description = ""
            if (match(line, /  +/)) {
                description = substr(line, RSTART + RLENGTH)
                line = substr(line, 1, RSTART - 1)
            }
            words = split(line, word, " ")
            values = ""
            for (i = 2; i <= words && word[i] ~ /^([A-Z]+|[a-z]+(\|[a-z]+)+)$/; ++i) {
                values = values (i > 2 ? " " : "") word[i]
            }
            if (line !~ /^-/ && description == "") next
            names = split(word[1], name, ",")
            for (i = 1; i <= names; ++i) print name[i] "\t" values "\t" description
        }
        /^Usage: .* PATH / { print "PATH" }'
end

# The values that an option has, one a line. Its lines follow.
function __xmldom_values
    for line in $argv[2..]
        set -l part (string split \t -- $line)
        if test "x$part[1]" = "x$argv[1]"; and test -n "$part[2]"
            string split ' ' -- $part[2]
            return
        end
    end
end

function __xmldom_offers
    set -l word (commandline -ct)
    set -l before (commandline -opc)
    set -l tool $before[1]
    set -l lines (__xmldom_lines $tool)

    # What stands in front: the command, its operands, and an option that waits for its values.
    set -l name
    set -l operands 0
    set -l values
    set -l literal
    for token in $before[2..]
        if set -q values[1]
            set -e values[1]
        else if test -z "$literal"; and test "x$token" = x--
            set literal yes
        else if test -z "$literal"; and string match -q -- '-*' $token
            set values (__xmldom_values $token $lines)
        else if test -z "$name"
            set name $token
            set lines (string match -- '-*' $lines) (__xmldom_lines $tool $name)
        else
            set operands (math $operands + 1)
        end
    end

    set -l choice (string match -r -- '^(--[a-z-]+)=' $word)
    if set -q values[1]
        string match -q '*|*' -- $values[1]; and string split '|' -- $values[1]
    else if set -q choice[2]; and test -z "$literal"
        set values (__xmldom_values $choice[2] $lines)
        string match -q '*|*' -- $values[1]; and printf "$choice[2]=%s\n" (string split '|' -- $values[1])
    else if test -z "$literal"; and string match -q -- '-*' $word
        string match -- '-*' $lines | string replace -r '\t.*\t' \t
    else if test -z "$name"
        string match -rv -- '^(-|PATH)' $lines | string replace -r '\t.*\t' \t
    else if not contains PATH $lines; or test $operands -gt 0
        # A path into a document is not completed; what follows it is a file, and so is all else.
        # A name that begins with a dash is no option of what looks for names.
        if string match -q -- '-*' $word
            set -l files $word*
            string join \n -- $files
        else
            __fish_complete_path $word
        end
    end
end

complete -c xmldom -f -k -a '(__xmldom_offers)'
