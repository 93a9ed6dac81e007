# Help, manual pages and completions of both programs, each from one definition; and the page of the schema language.
schema_page=$(realpath "$(dirname "$0")/../../../docs/man/tlv-schema.5")
. "$(dirname "$0")/lib.sh"
lint() { mandoc -T lint -W "$1" "$2" >out || fail "$2"; }

# The page of the language: what stands in it is what the programs do.
shown_behind() { sed -n '\|^\.\\" '"$1"'$|,/^\.Ed/{/^\./d;s/\\-/-/g;p}' "$schema_page"; }
lint warning "$schema_page"
mkdir relay
for file in family relay; do shown_behind "file relay/$file.tlv" >relay/$file.tlv; done
program=tlvc
run check --strict relay/*.tlv; is 0; quiet
run format --check relay/*.tlv; is 0
run generate --out generated relay/*.tlv; is 0
shown_behind 'part of include/tlvmsg/relay.h' >part
while IFS= read -r line; do grep -qxF -- "$line" generated/include/tlvmsg/relay.h || fail "relay.h lacks '$line'"; done <part
shown_behind commands >commands
while read -r line; do eval "$line" >out 2>err || fail "$line"; done <commands
equal "$(wc -l <part) $(wc -l <commands)" '16 4'
prints 'list: relay_list, tag 32771'
rm report.bin
shown_behind fingerprints | python3 -c '
import re, sys
for name, text, stated in re.findall(r"^ *(\w+) ([^=]*)= (0x\w+)$", sys.stdin.read(), re.M):
    hashed = 0xCBF29CE484222325
    for byte in bytes.fromhex(text):
        hashed = (hashed ^ byte) * 0x100000001B3 % 2**64
    print(name, stated, f"0x{hashed:016X}")' >fingerprints
equal "$(wc -l <fingerprints)" 6
for attribute in $(tlvc explain T035 | grep -o '^    @[a-z_]*'); do # what it does, and its bit in fingerprints
    equal "$(grep -c "^\.It Li $attribute\$" "$schema_page") $(grep -c "^\.Li $attribute ,\$" "$schema_page")" '1 1'
done
program=tlv
while read -r name stated hashed; do
    equal "$stated" "$hashed"
    run show --schema relay/relay.tlv "$name"; is 0; prints "fingerprint $hashed\$"
done <fingerprints

# The examples of the help work, with files of such names.
tlv sample zel_led_control >led.bin; cp led.bin a.bin; cp led.bin b.bin; xxd led.bin >b.txt
tlv sample $message | xxd >dump.txt
tlv decode -t zel_led_control led.bin >led.json
echo 000000 05 4d | text2pcap -q - trace.pcapng >text 2>&1

for program in tlv tlvc; do
    commands=$($program --complete '' | cut -f1)
    equal "$(wc -w <<<"$commands")" "$($program --help | sed -n '/^Subcommands:/,/^$/p' | grep -c '^  [a-z]')"
    run --help; is 0; quiet; prints '^Exit status:'; prints '^Examples:'
    $program explain --help >help; run help explain; is 0; same help out
    $program --help >help; run help; is 0; same help out
    run --version; is 0; prints "^$program [0-9]+\.[0-9]+\.[0-9]+\$"
    lint error "$TLV_SHARE/man/man1/$program.1"
    for command in $commands; do
        run "$command" --help; is 0; prints '^Examples:'
        prints "^  .*$program $command"
        $program --help | grep -q "^  $command " || fail "--help lacks $command"

        page=$TLV_SHARE/man/man1/$program-$command.1
        lint error "$page"
        mandoc -T ascii "$page" | col -b >out
        for section in NAME SYNOPSIS DESCRIPTION OPTIONS EXAMPLES 'EXIT STATUS' 'SEE ALSO'; do prints "^$section\$"; done
        prints "$program $command"
        # Every option of the help is in the manual.
        for option in $($program "$command" --help | grep -oE '^  -[^ ]+' | tr , '\n'); do
            grep -qF -- "$option" out || fail "$program-$command(1) lacks $option"
        done
    done
    for command in '' $commands; do
        rm -f m.bin new.bin
        $program $command --help | sed -n "/^Examples:/,/^Exit/s/^  \(.*$program\b.*\)/\1/p" >examples
        while read -r example; do
            (set -o pipefail; eval "$example") >out 2>err </dev/null
            case $?:$example in
            0:* | 1:*diff* | 1:*guess* | 1:*pcapng* | 1:*lsp) ;;
            *) fail "the example '$example'" ;;
            esac
        done <examples
        [ -s examples ] || fail "no examples of '$command'"
    done
done

# What is asked of tlvc wrongly: status 2, and a hint. Whose reader has gone is no trouble, a full disk is.
run chek relay; is 2; error_has "did you mean 'check'"
run check --strickt relay; is 2; error_has 'FILE is required|--strict'
run check relay/relay.tlv --strickt=1; is 2; error_has "did you mean '--strict'"
run compare --level abi relay relay; is 2; error_has 'wire\|json\|source\|layout'
run explain T0012; is 2; error_has "see 'tlvc explain'"
equal "$(tlvc explain | sed -n 's/^\(T012\): .*/\1/p')" T012
tlvc explain 2>err | head -1 >out; equal "${PIPESTATUS[*]}" '0 0'; quiet
tlvc explain 2>err >/dev/full; equal $? 4; error_has '^tlvc: standard output: No space'

# bash
. "$TLV_SHARE/bash-completion/completions/tlv"
. "$TLV_SHARE/bash-completion/completions/tlvc"
compopt() { :; } # which only works while completing
complete_words() { COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); "_$1"; echo "${COMPREPLY[*]}" >out; }
complete_words tlv deco; prints '^decode$'
complete_words tlv decode --compact --type ifi; prints '^ifid$'
complete_words tlv decode --type = zel_led_contr; prints '^zel_led_control$'
complete_words tlv decode --color =; prints '^auto always never$'
complete_words tlv decode --color=al; prints '^--color=always$' # where the = breaks no words
complete_words tlv decode --type = ifid led.b; prints '^led.bin$'
complete_words tlv help ver; prints '^verify$'
complete_words tlv sample --kind bo; prints '^boundary$'
complete_words tlv types --family voi; prints '^voice$'
complete_words tlv types --kind dynamic; prints '^dynamic-array dynamic-byte-array$'
complete_words tlv types --used-by zel_led_contr; prints '^zel_led_control$'
complete_words tlv explain wrong-t; prints '^wrong-tag$'
complete_words tlvc comp; prints '^compare$'
complete_words tlvc compare --level = la; prints '^layout$'
complete_words tlvc explain T04; prints '^T040 T041 .*T04[0-9]$'
complete_words tlvc check --strict relay/re; prints '^relay/relay.tlv$'

# fish
fish_words() { fish --no-config -c "source $TLV_SHARE/fish/vendor_completions.d/${1%% *}.fish; complete -C '$1'" >out 2>err; }
fish_words 'tlv deco'; prints '^decode'
fish_words 'tlv decode -t zel_led_contr'; prints '^zel_led_control'
fish_words 'tlv decode --type=zel_led_contr'; prints '^--type=zel_led_control'
fish_words 'tlv annotate led.b'; prints '^led.bin'
fish_words 'tlvc explain C00'; prints '^C002.type added'
fish_words 'tlvc generate --out gen'; prints '^generated/'

# zsh completes only at a terminal, which zpty gives it: it draws a prompt, gets a tab, and draws the word.
zsh_words() { # what is typed, what must appear
    cat >.zshrc <<END
fpath=($TLV_SHARE/zsh/site-functions \$fpath); autoload -Uz compinit; compinit -u -d $scratch/zcompdump
PS1='ready> '
END
    ZDOTDIR=$PWD TERM=dumb timeout 20 zsh -fc '
        zmodload zsh/zpty; zpty shell zsh -i; zpty -r shell text "*ready> "
        zpty -w -n shell "$1$(printf "\t")"; zpty -r shell text "*$2*"; print -r -- "$text"' - "$@" >out 2>err
    prints "$2"
}
for program in tlv tlvc; do zsh -n "$TLV_SHARE/zsh/site-functions/_$program" || fail 'zsh: syntax'; done
zsh_words 'tlv decode -t zel_led_contr' zel_led_control
zsh_words 'tlv decode --type=zel_led_contr' zel_led_control
zsh_words 'tlvc check --format=js' json
finish
