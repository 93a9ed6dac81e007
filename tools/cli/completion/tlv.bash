# bash completion for tlv, which knows all that there is to offer.
_tlv() {
    local word words=() cur=${COMP_WORDS[COMP_CWORD]}
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do # three words of --type=ifid where = breaks words
        if [[ $word == = || ${words[*]: -1} == --*= ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
    done
    mapfile -t COMPREPLY < <("${COMP_WORDS[0]}" --complete "${words[@]}" 2>/dev/null | cut -f1)
    if [[ ${COMPREPLY[0]} == :files ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "${cur#=}")
    elif [[ $cur != --*=* ]]; then
        COMPREPLY=("${COMPREPLY[@]#--*=}")
    fi
}
complete -F _tlv tlv
