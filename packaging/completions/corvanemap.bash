# bash completion for corvanemap. The keys come from the program itself, which lists them in a few
# milliseconds, so that they are always those of the program at hand.

# The keys that can be written.
_corvanemap_keys()
{
    local key rest
    while read -r key rest; do
        case $rest in
            write\ * | read\ and\ write\ *) printf '%s\n' "$key" ;;
        esac
    done < <(LC_ALL=C "$1" --formats 2>/dev/null)
}

# Fills COMPREPLY with the files that begin with a text.
_corvanemap_files()
{
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    COMPREPLY=($(compgen -f -- "$1"))
}

_corvanemap()
{
    local word previous tokens=0 inspect=
    local -a words=()
    COMPREPLY=()

    # bash takes "rte:131" for three words; put them together again.
    local i part joined=
    for ((i = 1; i <= COMP_CWORD; i++)); do
        part=${COMP_WORDS[i]}
        if ((${#words[@]})) && [[ $part == : || $joined ]]; then
            words[${#words[@]} - 1]+=$part
            joined=
            [[ $part == : ]] && joined=1
        else
            words+=("$part")
        fi
    done
    word=${words[${#words[@]} - 1]}
    previous=
    if ((${#words[@]} > 1)); then previous=${words[${#words[@]} - 2]}; fi

    case $previous in
        -o | --output)
            _corvanemap_files "$word"
            return
            ;;
        --list)
            COMPREPLY=($(compgen -W "all routes tracks waypoints pois" -- "$word"))
            return
            ;;
        --way)
            _corvanemap_files "$word"
            return
            ;;
        --mode)
            COMPREPLY=($(compgen -W "car truck pedestrian bicycle motorcycle van bus" -- "$word"))
            return
            ;;
        --type)
            COMPREPLY=($(compgen -W "recommended fastest shortest sightseeing economical
                thrilling" -- "$word"))
            return
            ;;
        --avoid)
            COMPREPLY=($(compgen -W "motorways tolls boat-ferries rail-ferries tunnels dirt-roads
                used-roads" -- "$word"))
            return
            ;;
        --hilliness | --windingness)
            COMPREPLY=($(compgen -W "high normal low" -- "$word"))
            return
            ;;
        --roads)
            COMPREPLY=($(compgen -W "add list remove" -- "$word"))
            return
            ;;
        --send)
            COMPREPLY=($(compgen -W "tomtom-home navigon-fresh navgate mio-more garmin" -- "$word"))
            return
            ;;
        --point | --split | --simplify | --provider | --find | --near | --radius | --locate | \
            --elevation | --panorama | --csv-read | --csv-write | --set)
            return
            ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "--output --list --split --reverse --sort --unique --simplify
            --optimize --optimize=best --way --directions --as-track --with-way --mode --type
            --avoid --hilliness --windingness --tractor --force --roads --providers --provider
            --find --near --radius --locate --elevation --panorama --country --offline --send
            --point --check --strict --quiet --formats --csv-read --csv-write --remember --settings
            --set
            --inspect --json --help --version -o -h" -- "$word"))
        return
    fi

    # How many tokens stand in front of the word?
    for ((i = 0; i < ${#words[@]} - 1; i++)); do
        case ${words[i]} in
            -o | --output | --list | --split | --simplify | --provider | --mode | --type | \
                --avoid | --hilliness | --windingness | --send | --point) ((i++)) ;;
            --inspect) inspect=1 ;;
            -*) ;;
            *LANG_*) ;;
            *) ((tokens++)) ;;
        esac
    done
    if ((tokens == 0)); then
        _corvanemap_files "$word"
    elif [[ ! $inspect ]] && ((tokens == 1)); then
        COMPREPLY=($(compgen -W "$(_corvanemap_keys "${COMP_WORDS[0]}")" -- "$word"))
        # What stands in front of a colon is on the line already.
        if [[ $word == *:* && $COMP_WORDBREAKS == *:* ]]; then
            COMPREPLY=("${COMPREPLY[@]#"${word%"${word##*:}"}"}")
        fi
    elif [[ ! $inspect ]]; then
        COMPREPLY=($(compgen -W "LANG_ENGLISH LANG_FRENCH LANG_GERMAN LANG_DUTCH" -- "$word"))
    fi
}

complete -F _corvanemap corvanemap
