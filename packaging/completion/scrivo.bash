# Completion of scrivo for bash, without the helpers of the bash-completion package.

# Folders, and files whose extension is among the arguments, in any case.
_scrivo_paths() {
  local extension
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(
    compgen -d -- "$word"
    for extension in "$@"; do
      compgen -f -X "!*.$extension" -- "$word"
    done)
}

# Words out of a list.
_scrivo_words() {
  mapfile -t COMPREPLY < <(compgen -W "$*" -- "$word")
}

# The next item of a list with commas.
_scrivo_list() {
  local done=
  [[ $word == *,* ]] && done=${word%,*},
  mapfile -t COMPREPLY < <(compgen -P "$done" -W "$*" -- "${word##*,}")
  compopt -o nospace 2>/dev/null
}

_scrivo() {
  local chm='[cC][hH][mM]' hhp='[hH][hH][pP]'
  local reading='--contents --code-page --language --with-hidden --all-messages --quiet -q --help -h'
  local compiling='--title --default-page --index --no-index --no-favorites --without-bars --keep-charsets --compiler --strict'
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} options operands=0 i
  COMPREPLY=()

  # The equals sign of --option=value is a word of its own.
  if [[ $word == = ]]; then
    word=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  if [ "$COMP_CWORD" -eq 1 ]; then
    _scrivo_words compile project tree check decompile export view text list info help --help -h --version
    return
  fi
  case $command in
    help)
      [ "$COMP_CWORD" -eq 2 ] && _scrivo_words compile project tree check decompile export view text list info
      return
      ;;
    compile | project) options="--output -o --keep-project --view $compiling $reading" ;;
    tree) options=$reading ;;
    check) options="--json $reading" ;;
    decompile) options='--web --keywords --quiet -q --help -h' ;;
    export) options="--force --scripts $compiling $reading" ;;
    view) options="--scripts $compiling $reading" ;;
    text) options="--output -o --force $compiling $reading" ;;
    list) options='--internal --help -h' ;;
    info) options='--help -h' ;;
    *) return ;;
  esac

  case $previous in
    --output | -o)
      if [ "$command" = text ]; then _scrivo_paths; else _scrivo_paths "$chm"; fi
      return
      ;;
    --compiler)
      _scrivo_paths '*'
      mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -c -- "$word")
      return
      ;;
    --contents) _scrivo_words auto navigation folders; return ;;
    --index) _scrivo_list keywords titles headings; return ;;
    --code-page)
      _scrivo_words 874 932 936 949 950 1250 1251 1252 1253 1254 1255 1256 1257 1258 koi8-r utf-8
      return
      ;;
    --language)
      _scrivo_words 'ar bg cs da de el en es et fi fr he hr hu it ja ko lt lv nb nl pl pt pt-BR ro ru sk sl sr' \
        'sv th tr uk vi zh-CN zh-TW'
      return
      ;;
    --title | --default-page) return ;;
  esac
  if [[ $word == -* ]]; then
    _scrivo_words "$options"
    return
  fi

  for ((i = 2; i < COMP_CWORD; ++i)); do
    case ${COMP_WORDS[i]} in
      --output | -o | --compiler | --contents | --index | --code-page | --language | --title | \
        --default-page)
        [[ ${COMP_WORDS[i + 1]} == = ]] && i=$((i + 1))
        i=$((i + 1))
        ;;
      -*) ;;
      *) operands=$((operands + 1)) ;;
    esac
  done
  case $command,$operands in
    compile,0 | project,0 | tree,0 | check,0) _scrivo_paths ;;
    export,0 | view,0 | text,0) _scrivo_paths "$chm" "$hhp" ;;
    decompile,0 | list,0 | info,0) _scrivo_paths "$chm" ;;
    export,1 | decompile,1) _scrivo_paths ;;
  esac
}
complete -F _scrivo scrivo
