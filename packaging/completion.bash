# Bash completion for the programs with options. The choices come from the program's own --help: options,
# possible values, extensions of files.

# Prints each argument or option of a help text with its value, as in "--shape FILE.zrbf".
_boreforge_values() {
    sed -nE 's/^  ([A-Z]+|--[a-z-]+) ([A-Za-z0-9.,#|-]+)( .*)?$/\1 \2/p' <<<"$1"
}

_boreforge() {
    local current=${COMP_WORDS[COMP_CWORD]} help values positionals value="" given=0 word i extension
    COMPREPLY=()
    help=$("$1" --help 2>/dev/null) || return
    values=$(_boreforge_values "$help")
    positionals=$(grep '^[A-Z]' <<<"$values")
    for ((i = 1; i < COMP_CWORD; ++i)); do  # `value` becomes what the word before the cursor expects
        word=${COMP_WORDS[i]}
        if [[ $word == = ]]; then
            continue  # bash splits --option=value into three words
        elif [[ $word == -* ]]; then
            value=$(sed -n "s/^$word //p" <<<"$values")
        elif [[ -n $value ]]; then
            value=""
        else
            given=$((given + 1))
        fi
    done
    [[ $current != = ]] || current=""
    if [[ -z $value && $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(grep -oE '^  (-h,)?--[a-z-]+' <<<"$help" | grep -o -- '--.*')" -- "$current")
        return
    fi
    [[ " ${COMP_WORDS[*]} " != *" --output-folder"* ]] || given=0  # all of them are tracks
    [[ -n $value ]] || value=$(sed -n "$((given + 1))s/.* //p" <<<"$positionals")
    case $value in
        *.*.* | *,* | "") ;;  # a number or a colour
        *.*)
            compopt -o filenames
            extension=$(sed 's/[a-z]/[&\u&]/g' <<<"${value#*.}")  # in either case
            mapfile -t COMPREPLY < <(compgen -f -X "!*.$extension" -- "$current"; compgen -d -- "$current") ;;
        FOLDER)
            compopt -o filenames
            mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "${value//|/ }" -- "$current") ;;
    esac
}

complete -F _boreforge boreforge-batch boreforge-check boreforge-view
