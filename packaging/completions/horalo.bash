# Completion of horalo's commands and options for bash.

_horalo() {
  local word=$2 previous=$3 command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    local words="convert toggle show hide settings check-updates quit status"
    [[ $word != -* ]] || words="--background --help --version"
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    return
  fi
  case $command:$previous in
    convert:--zone)
      local zones
      zones=$(sed -n 's/^Z \([^ ]*\) .*/\1/p; s/^L [^ ]* \([^ ]*\)/\1/p' \
        /usr/share/zoneinfo/tzdata.zi 2> /dev/null)
      mapfile -t COMPREPLY < <(compgen -W "local UTC $zones" -- "$word")
      ;;
    convert:--only)
      mapfile -t COMPREPLY < <(compgen -W "unix-s unix-ms iso formatted relative" -- "$word")
      ;;
    convert:--now) ;;
    convert:*)
      mapfile -t COMPREPLY < <(compgen -W "--zone --now --only --json --help" -- "$word")
      ;;
    status:*)
      mapfile -t COMPREPLY < <(compgen -W "--json --help" -- "$word")
      ;;
    *)
      mapfile -t COMPREPLY < <(compgen -W "--help" -- "$word")
      ;;
  esac
}
complete -F _horalo horalo
