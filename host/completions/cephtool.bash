# Completion of cephtool in bash. The program itself says what fits.
_cephtool()
{
    local begun=${COMP_WORDS[COMP_CWORD]} word help ending IFS=$'\n'
    [[ $begun == "=" ]] && begun=
    COMPREPLY=()
    while IFS=$'\t' read -r word help; do
        case $word in
            :folders)
                compopt -o filenames
                COMPREPLY+=($(compgen -d -- "$begun")) ;;
            :files*)
                compopt -o filenames
                [[ $word == :files ]] && COMPREPLY+=($(compgen -f -- "$begun"))
                [[ $word == :files ]] || COMPREPLY+=($(compgen -d -- "$begun"))
                IFS=' ' read -ra word <<<"${word#:files}"
                for ending in "${word[@]}"; do
                    COMPREPLY+=($(compgen -f -X "!*$ending" -- "$begun"))
                done ;;
            *)
                COMPREPLY+=("$word") ;;
        esac
    done < <("${COMP_WORDS[0]}" complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
} &&
    complete -F _cephtool cephtool
