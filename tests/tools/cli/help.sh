# Help, manual pages and completions, which all come from one definition.
. "$(dirname "$0")/lib.sh"
commands=$(tlv --complete '' | cut -f1)
equal "$(wc -w <<<"$commands")" "$(tlv --help | sed -n '/^Subcommands:/,/^$/p' | grep -c '^  [a-z]')"

run --help; is 0; quiet; prints '^Exit status:'; prints '^Examples:'
tlv sample --help >help; run help sample; is 0; same help out
tlv --help >help; run help; is 0; same help out
run --version; is 0; prints '^tlv [0-9]+\.[0-9]+\.[0-9]+$'
for command in $commands; do
    run "$command" --help; is 0; prints '^Examples:'
    prints "^  .*tlv $command"
    tlv --help | grep -q "^  $command " || fail "--help lacks $command"

    page=$TLV_SHARE/man/man1/tlv-$command.1
    mandoc -T lint -W error "$page" >out || fail "$page"
    mandoc -T ascii "$page" | col -b >out
    for section in NAME SYNOPSIS DESCRIPTION OPTIONS EXAMPLES 'EXIT STATUS' 'SEE ALSO'; do prints "^$section\$"; done
    prints "tlv $command"
    # Every option of the help is in the manual.
    for option in $(tlv "$command" --help | grep -oE '^  -[^ ]+' | tr , '\n'); do
        grep -qF -- "$option" out || fail "tlv-$command(1) lacks $option"
    done
done
mandoc -T lint -W error "$TLV_SHARE/man/man1/tlv.1" >out || fail 'tlv.1'

# The examples of the help work, with files of such names.
tlv sample zel_led_control >led.bin; cp led.bin a.bin; cp led.bin b.bin; xxd led.bin >b.txt
tlv sample $message | xxd >dump.txt
tlv decode -t zel_led_control led.bin >led.json
echo 000000 05 4d | text2pcap -q - trace.pcapng >text 2>&1
for command in '' $commands; do
    rm -f m.bin new.bin
    tlv $command --help | sed -n '/^Examples:/,/^Exit/s/^  \(.*tlv\b.*\)/\1/p' >examples
    while read -r example; do
        (set -o pipefail; eval "$example") >out 2>err </dev/null
        case $?:$example in
        0:* | 1:*diff* | 1:*guess* | 1:*pcapng*) ;;
        *) fail "the example '$example'" ;;
        esac
    done <examples
    [ -s examples ] || fail "no examples of '$command'"
done

# bash
. "$TLV_SHARE/bash-completion/completions/tlv"
compopt() { :; } # which only works while completing
complete_words() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); _tlv; echo "${COMPREPLY[*]}" >out; }
complete_words tlv deco; prints '^decode$'
complete_words tlv decode -t zel_led_contr; prints '^zel_led_control$'
complete_words tlv decode --compact --type ifi; prints '^ifid$'
complete_words tlv decode --type = zel_led_contr; prints '^zel_led_control$'
complete_words tlv decode --color =; prints '^auto always never$'
complete_words tlv decode --color=al; prints '^--color=always$' # where the = breaks no words
complete_words tlv decode --type = ifid led.b; prints '^led.bin$'
complete_words tlv help ver; prints '^verify$'
complete_words tlv show zel_led_contr; prints '^zel_led_control$'
complete_words tlv sample --kind bo; prints '^boundary$'
complete_words tlv types --family voi; prints '^voice$'
complete_words tlv types --kind dynamic; prints '^dynamic-array dynamic-byte-array$'
complete_words tlv types --used-by zel_led_contr; prints '^zel_led_control$'
complete_words tlv explain wrong-t; prints '^wrong-tag$'
complete_words tlv verify --st; prints '^--strict$'
complete_words tlv annotate led.b; prints '^led.bin$'

# fish
fish_words() { fish --no-config -c "source $TLV_SHARE/fish/vendor_completions.d/tlv.fish; complete -C '$1'" >out 2>err; }
fish_words 'tlv deco'; prints '^decode'
fish_words 'tlv decode -t zel_led_contr'; prints '^zel_led_control'
fish_words 'tlv sample --kind bo'; prints '^boundary'
fish_words 'tlv decode --type=zel_led_contr'; prints '^--type=zel_led_control'
fish_words 'tlv explain wrong-t'; prints '^wrong-tag'
fish_words 'tlv annotate led.b'; prints '^led.bin'

# zsh completes only at a terminal: it gets one, a tab, and a pattern to find in what it draws.
zsh_words() {
    cat >zshrc <<END
fpath=($TLV_SHARE/zsh/site-functions \$fpath); autoload -Uz compinit; compinit -u -d $scratch/zcompdump
PS1='> '
END
    mkdir -p dot && cp zshrc dot/.zshrc
    { sleep 1.5; printf '%s\t' "$1"; sleep 1.5; printf '\003exit\n'; sleep 0.3; } |
        ZDOTDIR=$scratch/dot TERM=dumb script -qec 'zsh -i' /dev/null >out 2>err
}
zsh -n "$TLV_SHARE/zsh/site-functions/_tlv" || fail 'zsh: syntax'
zsh_words 'tlv decode -t zel_led_contr'; prints 'zel_led_control'
zsh_words 'tlv decode --type=zel_led_contr'; prints 'zel_led_control'
zsh_words 'tlv sample --kind bo'; prints 'boundary'
finish
