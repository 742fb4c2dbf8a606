# Completion of hh for fish.

# Whether the operand of this number is typed.
function __hh_operand
    set -l words (commandline -opc)
    test (count (string match -v -- '-*' $words)) -eq $argv[1]
end

complete -c hh -f
complete -c hh -n '__hh_operand 1' -a '(__fish_complete_directories)'
complete -c hh -n '__hh_operand 2' \
    -a "(__fish_complete_path (commandline -ct) | string match -ri '.*(?:/|\.chm)(?:\t.*)?\$')"
complete -c hh -o decompile -d 'Unpack a help file'
complete -c hh -s v -d 'Print the name of each file'
complete -c hh -s h -l help -d 'Print the options'
complete -c hh -l version -d 'Print name and version'
complete -c hh -l internal -d 'Write internal streams too'
