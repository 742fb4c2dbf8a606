# Completion of hhc for bash.

_hhc() {
  local word=${COMP_WORDS[COMP_CWORD]}
  if [ "${COMP_WORDS[COMP_CWORD - 1]}" = --jobs ]; then
    COMPREPLY=()
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '--gnu --timestamp --jobs --version --help -h' -- "$word")
  else
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.[hH][hH][pP]' -- "$word")
  fi
}
complete -F _hhc hhc
