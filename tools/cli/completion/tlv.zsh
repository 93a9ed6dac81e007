#compdef tlv
# zsh completion for tlv, which knows all that there is to offer.
local -a found
found=("${(@f)$($words[1] --complete "${(@Q)words[2,CURRENT]}" 2>/dev/null)}")
compset -P '--*='
if [[ $found[1] == :files ]]; then
    _files
else
    found=("${(@)found#--*=}")
    found=("${(@)found//:/\\:}")
    found=("${(@)found/$'\t'/:}")
    _describe tlv found
fi
