# Completion of mirnctl for bash. The program itself tells what may stand at the cursor.
_mirnctl() {
  # The words as they are meant: bash takes "=" and ":" for words of their own.
  local words=() word
  for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
    if ((${#words[@]})) && [[ $word == [=:]* || ${words[-1]} == *[=:] ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  local typed=${COMP_WORDS[COMP_CWORD]}
  [[ $typed == [=:] ]] && typed=
  local ahead=${words[-1]%"$typed"} quote=
  [[ $typed == [\"\']* ]] && quote=${typed:0:1}
  words=("${words[@]//[\\\"\']/}")

  COMPREPLY=()
  local candidate
  while IFS=$'\t' read -r candidate _; do
    if [[ $candidate == : ]]; then
      compopt -o filenames 2> /dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$typed")
      return
    fi
    candidate=${candidate#"$ahead"}
    [[ $quote ]] || printf -v candidate %q "$candidate"
    [[ $candidate == *[=,] ]] && compopt -o nospace 2> /dev/null
    COMPREPLY+=("$candidate")
  done < <("${COMP_WORDS[0]}" complete -- "${words[@]}" 2> /dev/null)
}
complete -F _mirnctl mirnctl
