# Completion of quillory-cli for bash.

# Completes the last word of a comma-separated list.
_quillory_cli_list() {
    local words=$1 current=$2 before=''
    [[ $current != *,* ]] || before=${current%,*},
    mapfile -t COMPREPLY < <(compgen -P "$before" -W "$words" -- "${current##*,}")
    compopt -o nospace 2>/dev/null
}

_quillory_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous='' command=${COMP_WORDS[1]} words=''
    ((COMP_CWORD == 0)) || previous=${COMP_WORDS[COMP_CWORD - 1]}
    # bash splits "--option=value" into three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "find remove --help --version" -- "$current")
        return
    fi

    case $command:$previous in
    find:--types)
        _quillory_cli_list "picture video audio document archive other" "$current"
        return
        ;;
    find:--skip)
        _quillory_cli_list "system applications desktop" "$current"
        return
        ;;
    find:--keep) words="oldest newest first shortest" ;;
    find:--compare) words="bytes sample" ;;
    find:--format) words="text json csv paths" ;;
    find:--progress) words="auto always never" ;;
    find:--min-size | find:--max-size | find:--exclude | find:--threads) return ;;
    find:--reference)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    remove:--action) words="trash delete hardlink reflink" ;;
    find:--output | remove:--journal)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    esac
    if [[ -z $words && $current == -* ]]; then
        case $command in
        find)
            words="--types --skip --hidden --min-size --max-size --exclude --reference --keep --compare --format
                --null --output --progress --threads --fail-on-duplicates --help"
            ;;
        remove) words="--apply --action --journal --help" ;;
        esac
    fi
    if [[ $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    compopt -o filenames 2>/dev/null
    case $command in
    find) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
    remove) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    esac
}

complete -F _quillory_cli quillory-cli
