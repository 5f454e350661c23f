#!/usr/bin/env bash
# manual.sh MANUAL: what the build made in its folder MANUAL. The pages are sound mdoc, every option that
# completion proposes stands in its page, and completion in bash answers a table of cases; FILES is what
# readline completes by itself, NOTHING that it may not.
set -u
cd "$1" || exit 1
status=0
fail() { echo "$*"; status=1; }

if command -v mandoc >/dev/null; then
    lint=$(mandoc -T lint made/man1/* man3/* 2>/dev/null | grep -v 'referenced manual not found')
    [ -z "$lint" ] || fail "$lint"
fi
if command -v zsh >/dev/null; then zsh -n made/zsh/_scan695 || status=1; fi

source made/bash/scan695 || exit 1
compopt() { [[ $* != "+o default"* ]] || answer=NOTHING; }
ask() {  # the words of the line, the last one half written
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) answer=FILES
    _scan695
    [ ${#COMPREPLY[@]} = 0 ] || answer=${COMPREPLY[*]}
}
while IFS='|' read -r line want; do
    read -ra words <<<"$line"
    [[ $line != *' ' ]] || words+=("")
    ask "${words[@]}"
    [ "$answer" = "$want" ] || fail "$line: $answer instead of $want"
done <<'END'
scan695 sh|show
scan695 --v|--version
scan695 a.abs --de|--debug
scan695 a.abs |FILES
scan695 a.abs -o |FILES
scan695 a.abs --fst = |FILES
scan695 a.abs --fst = x|FILES
scan695 a.abs -j |NOTHING
scan695 a.abs --jobs =|NOTHING
scan695 show --sy|--symbols
scan695 find |FILES
scan695 find --j|--json
scan695 find a.abs |NOTHING
scan695 diff --json a |FILES
scan695 diff a b |NOTHING
scan695 report -o out |FILES
scan695 report --output = out a.abs |NOTHING
END

ask scan695 c
[[ " $answer " == *" convert check "* ]] || fail "no subcommands: $answer"
pages=0
for page in made/man1/scan695-*.1; do
    name=${page##*/scan695-}
    ask scan695 "${name%.1}" -
    for option in $answer; do
        grep -Eq "^\.It .*Fl ${option#-}( |\$)" "$page" || fail "$page: no $option"
        pages=$((pages + 1))
    done
done
[ $pages -gt 20 ] || fail "few options: $pages"
exit $status
