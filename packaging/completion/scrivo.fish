# Completion of scrivo for fish.

# Whether the command is among the arguments; without any, whether none is given yet.
function __scrivo_command
    set -l words (commandline -opc)
    if test (count $argv) -eq 0
        test (count $words) -eq 1
    else
        set -q words[2]; and contains -- $words[2] $argv
    end
end

# Whether the operand of this number is typed, of one of the commands behind it.
function __scrivo_operand
    set -l words (commandline -opc)
    set -q words[2]; and contains -- $words[2] $argv[2..]; or return
    set -e words[1..2]
    set -l operand 1
    set -l value_follows no
    for word in $words
        if test $value_follows = yes
            set value_follows no
        else if contains -- $word -o --output --compiler --contents --index --code-page --language --title --default-page
            set value_follows yes
        else if not string match -q -- '-*' $word
            set operand (math $operand + 1)
        end
    end
    test $operand -eq $argv[1]
end

# Folders, and files whose extension is among the arguments.
function __scrivo_paths
    set -l extensions (string join '|' -- $argv)
    __fish_complete_path (commandline -ct) | string match -ri ".*(?:/|\.(?:$extensions))(?:\t.*)?\$"
end

# Lists with commas.
function __scrivo_index
    set -l so_far (string match -r '.*,' -- (commandline -ct | string replace -r '^--index=' ''))
    printf '%s\n' "$so_far"{keywords,titles,headings}
end

complete -c scrivo -f
complete -c scrivo -s h -l help -d 'Print the options'
complete -c scrivo -n __scrivo_command -l version -d 'Print the version'
complete -c scrivo -n __scrivo_command -a compile -d 'Compile a web into a help file'
complete -c scrivo -n __scrivo_command -a project -d 'Write a help project for a web'
complete -c scrivo -n __scrivo_command -a tree -d 'Print the contents of a web'
complete -c scrivo -n __scrivo_command -a check -d 'Find what is wrong with a web'
complete -c scrivo -n __scrivo_command -a decompile -d 'Unpack a help file into a folder'
complete -c scrivo -n __scrivo_command -a export -d 'Make a site for any browser'
complete -c scrivo -n __scrivo_command -a view -d 'Show in the browser'
complete -c scrivo -n __scrivo_command -a text -d 'Print topics as Markdown'
complete -c scrivo -n __scrivo_command -a list -d 'List the files in a help file'
complete -c scrivo -n __scrivo_command -a info -d 'Describe a help file'
complete -c scrivo -n __scrivo_command -a help -d 'Print the options of a command'
complete -c scrivo -n '__scrivo_command help' -a 'compile project tree check decompile export view text list info'

complete -c scrivo -n '__scrivo_operand 1 compile project tree check' -a '(__fish_complete_directories)'
complete -c scrivo -n '__scrivo_operand 1 decompile list info' -a '(__scrivo_paths chm)'
complete -c scrivo -n '__scrivo_operand 1 export view text' -a '(__scrivo_paths chm hhp)'
complete -c scrivo -n '__scrivo_operand 2 decompile export' -a '(__fish_complete_directories)'

set -l webs '__scrivo_command compile project tree check export view text'
complete -c scrivo -n $webs -l contents -x -a 'auto navigation folders' -d 'What the contents are made from'
complete -c scrivo -n $webs -l code-page -x -d 'Code page of labels, titles and keywords' \
    -a '874 932 936 949 950 1250 1251 1252 1253 1254 1255 1256 1257 1258 koi8-r utf-8'
complete -c scrivo -n $webs -l language -x -d 'Language of the help file' \
    -a 'ar bg cs da de el en es et fi fr he hr hu it ja ko lt lv nb nl pl pt pt-BR ro ru sk sl sr sv th tr uk vi zh-CN zh-TW'
complete -c scrivo -n $webs -l with-hidden -d 'Take in hidden files and folders'
complete -c scrivo -n $webs -l all-messages -d 'Print all messages'
complete -c scrivo -n "$webs decompile" -s q -l quiet -d 'Print errors only'

set -l compiling '__scrivo_command compile project export view text'
complete -c scrivo -n $compiling -l title -x -d 'Title of the help file'
complete -c scrivo -n $compiling -l default-page -x -d 'Page that the help file opens with'
complete -c scrivo -n $compiling -l index -x -a '(__scrivo_index)' -d 'What index entries are made from'
complete -c scrivo -n $compiling -l no-index -d 'Make no index'
complete -c scrivo -n $compiling -l no-favorites -d 'Leave out the Favorites tab'
complete -c scrivo -n $compiling -l without-bars -d 'Leave out generated navigation'
complete -c scrivo -n $compiling -l keep-charsets -d 'Keep wrong charset declarations'
complete -c scrivo -n $compiling -l compiler -r -F -d 'Help compiler to run'
complete -c scrivo -n $compiling -l strict -d 'Fail when the compiler reports anything'

set -l making '__scrivo_command compile project'
complete -c scrivo -n $making -s o -l output -x -a '(__scrivo_paths chm)' -d 'Help file to make'
complete -c scrivo -n $making -l keep-project -d 'Keep the project files'
complete -c scrivo -n $making -l view -d 'Open the help file when it is made'

complete -c scrivo -n '__scrivo_command text' -s o -l output -x -a '(__fish_complete_directories)' \
    -d 'Write one file per topic'
complete -c scrivo -n '__scrivo_command export text' -l force -d 'Replace the files of an earlier export'
complete -c scrivo -n '__scrivo_command export view' -l scripts -d "Keep the pages' scripts"
complete -c scrivo -n '__scrivo_command check' -l json -d 'Print findings as JSON'
complete -c scrivo -n '__scrivo_command decompile' -l web -d 'Make a FrontPage web'
complete -c scrivo -n '__scrivo_command decompile' -l keywords -d "Write the index into the web's pages"
complete -c scrivo -n '__scrivo_command list' -l internal -d 'Include internal streams'
