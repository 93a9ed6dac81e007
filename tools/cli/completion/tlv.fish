# fish completion for tlv, which knows all that there is to offer.
function __tlv_complete
    set -l token (commandline -ct)
    set -l words (commandline -opc) "$token"
    set -l found ($words[1] --complete $words[2..-1] 2>/dev/null)
    if test "$found" = :files
        set -l begin (string match -r '^--[^=]*=' -- $token)
        set found (string replace -r '^' -- "$begin" (__fish_complete_path (string replace -- "$begin" '' $token)))
    end
    printf '%s\n' $found
end
complete -c tlv -f -a '(__tlv_complete)'
