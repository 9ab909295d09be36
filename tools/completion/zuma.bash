# Completion of the zuma program: source this file, or put it into the completion folder of bash.

_zuma() {
  local mot=${COMP_WORDS[COMP_CWORD]} avant=${COMP_WORDS[COMP_CWORD-1]} verbe=${COMP_WORDS[1]:-}
  local -A options=(
    [init]="--help"
    [check]="--frame --json --param --driver --help"
    [run]="--lines --frame --sim --seconds --csv --ages --channels --replay --json --param --driver --fault --seed --fast --port --can --stops --start-anyway --help"
    [desktop]="--attach --frame --sim --param --driver --port --can --lang --person --stops --start-anyway --help"
    [dump]="--frame --sim --seconds --out --json --param --driver --port --can --start-anyway --help"
    [sim]="--seconds --json --help"
    [list]="--json --help"
    [show]="--of --frame --json --help"
    [watch]="--of --frame --rate --seconds --json --help"
    [scope]="--of --frame --seconds --trigger --wait --svg --json --help"
    [record]="--of --frame --out --ages --seconds --json --help"
    [blackbox]="--frame --svg --json --help"
    [convert]="--to --help"
    [diff]="--json --help"
    [compression]="--frame --out --rate --fault --json --start-anyway --help"
  )
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "${!options[*]} --help --version" -- "$mot")
  elif [ "$avant" = "--fault" ] && [ "$verbe" = run ]; then
    mapfile -t COMPREPLY < <(compgen -W "silence deaf garbage crc cut lose add flip babble unplug late stuck bounce hang dead running clock random" -- "$mot")
  elif [ "$avant" = "--lang" ]; then
    mapfile -t COMPREPLY < <(compgen -W "Français English" -- "$mot")
  elif [ "$avant" = "--fault" ]; then
    mapfile -t COMPREPLY < <(compgen -W "door button overrange freeze" -- "$mot")
  elif [[ $mot != -* && $avant != --o* && $verbe =~ ^(show|watch|scope|record)$ ]]; then
    # Names of what runs, blanks and all.
    local nom
    COMPREPLY=()
    while IFS= read -r nom; do
      nom=$(printf '%q' "$nom")
      [[ $nom == "$mot"* ]] && COMPREPLY+=("$nom")
    done < <(zuma list --names 2>/dev/null | sort -u)
  elif [[ $mot == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "${options[$verbe]:-}" -- "$mot")
  else
    compopt -o default
    COMPREPLY=()
  fi
}
complete -F _zuma zuma
