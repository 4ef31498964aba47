#compdef mirnctl
# Completion of mirnctl for zsh. The program itself tells what may stand at the cursor.
_mirnctl() {
  local -a candidates
  local line
  for line in "${(@f)$("${(Q)words[1]}" complete -- "${(@Q)words[2,CURRENT]}" 2> /dev/null)}"; do
    [[ -n $line ]] || continue
    if [[ $line == : ]]; then
      _files
      return
    fi
    candidates+=("${${line%%$'\t'*}//:/\\:}:${line#*$'\t'}")
  done
  _describe mirnctl candidates
}
if [[ ${funcstack[1]:-} == _mirnctl ]]; then
  _mirnctl "$@"
else
  compdef _mirnctl mirnctl
fi
