# Completion of mirnctl for fish. The program itself tells what may stand at the cursor.
function __mirnctl_candidates
    set -l words (commandline -opc) (commandline -ct)
    set -l candidates ($words[1] complete -- $words[2..-1] 2> /dev/null)
    if test "$candidates" = :
        __fish_complete_path (commandline -ct)
    else
        string join -- \n $candidates
    end
end
complete -c mirnctl -f -a '(__mirnctl_candidates)'
