# Completion of hh for fish.

complete -c hh -f -a "(__fish_complete_path (commandline -ct) | string match -ri '.*(?:/|\.chm)(?:\t.*)?\$')"
complete -c hh -o decompile -d 'Unpack a help file'
complete -c hh -s v -d 'Print the name of each file'
complete -c hh -s h -l help -d 'Print the options'
complete -c hh -l version -d 'Print name and version'
complete -c hh -l internal -d 'Write internal streams too'
