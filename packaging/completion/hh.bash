# Completion of hh for bash.

_hh() {
  local word=${COMP_WORDS[COMP_CWORD]} i operands=0
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W '-decompile -v --internal --version --help -h' -- "$word")
    return
  fi
  for ((i = 1; i < COMP_CWORD; ++i)); do
    [[ ${COMP_WORDS[i]} == -* ]] || operands=$((operands + 1))
  done
  compopt -o filenames 2>/dev/null
  case $operands in
    0) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    1) mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X '!*.[cC][hH][mM]' -- "$word") ;;
    *) COMPREPLY=() ;;
  esac
}
complete -F _hh hh
