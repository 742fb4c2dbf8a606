# Completion of hhc for fish.

complete -c hhc -f -a "(__fish_complete_path (commandline -ct) | string match -ri '.*(?:/|\.hhp)(?:\t.*)?\$')"
complete -c hhc -s h -l help -d 'Print the options'
complete -c hhc -l version -d 'Print name and version'
complete -c hhc -l gnu -d 'Exit with status 0 if the help file was made'
complete -c hhc -l timestamp -d 'Put the time into the help file'
complete -c hhc -l jobs -x -d 'Threads that compress'
