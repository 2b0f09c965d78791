# bash completion for corvanemap. The keys come from the program itself, which lists them in a few
# milliseconds, so that they are always those of the program at hand.

# The keys that can be read or written.
_corvanemap_keys()
{
    local key rest
    while read -r key rest; do
        case $rest in
            "$2 "* | read\ and\ write\ *) printf '%s\n' "$key" ;;
        esac
    done < <(LC_ALL=C "$1" --formats 2>/dev/null)
}

# What stands in front of a colon is on the line already.
_corvanemap_behind_colon()
{
    if [[ $1 == *:* && $COMP_WORDBREAKS == *:* ]]; then
        COMPREPLY=("${COMPREPLY[@]#"${1%"${1##*:}"}"}")
    fi
}

# Fills COMPREPLY with the files that begin with a text.
_corvanemap_files()
{
    compopt -o filenames 2>/dev/null
    local IFS=$'\n'
    COMPREPLY=($(compgen -f -- "$1"))
}

# Fills COMPREPLY with those of the lines of standard input that begin with a text.
_corvanemap_lines()
{
    local line
    while IFS= read -r line; do
        [[ $line == "$1"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

# The presets of CSV layouts, which the program names to whoever gives none that it knows.
_corvanemap_presets()
{
    LC_ALL=C "$1" --csv-read "?" 2>&1 | sed -n 's/.* one of: //p' | sed 's/, /\n/g'
}

# The settings that can be changed.
_corvanemap_settings()
{
    LC_ALL=C "$1" --settings 2>/dev/null | sed -nE '/^[^ ]+ +bytes/!s/^([^ ]+) .*/\1=/p'
}

# The names of the services.
_corvanemap_providers()
{
    LC_ALL=C "$1" --providers 2>/dev/null | sed -nE 's/^.{5}([^ ]+) .*/\1/p'
}

# Succeeds for a word that is a key.
_corvanemap_is_key()
{
    _corvanemap_keys "$1" write | grep -qixF -- "$2"
}

_corvanemap()
{
    local program=${COMP_WORDS[0]} word previous tokens=0 second= inspect=
    local -a words=()
    COMPREPLY=()

    # bash takes "rte:131" and "KEY=VALUE" for three words; put them together again.
    local i part joined=
    for ((i = 1; i <= COMP_CWORD; i++)); do
        part=${COMP_WORDS[i]}
        if ((${#words[@]})) && [[ $part == [:=] || $joined ]]; then
            words[${#words[@]} - 1]+=$part
            joined=
            [[ $part == [:=] ]] && joined=1
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
        --encoding)
            COMPREPLY=($(compgen -W "utf-8 windows-1250 windows-1251 windows-1252 windows-1253
                iso-8859-2 iso-8859-7 iso-8859-15 shift_jis" -- "$word"))
            return
            ;;
        --from)
            COMPREPLY=($(compgen -W "$(_corvanemap_keys "$program" read)" -- "$word"))
            _corvanemap_behind_colon "$word"
            return
            ;;
        --option)
            COMPREPLY=($(compgen -W "no-commas via-points explorist hand-off" -- "$word"))
            return
            ;;
        --csv-read)
            _corvanemap_lines "$word" < <(echo auto && _corvanemap_presets "$program")
            return
            ;;
        --csv-write)
            _corvanemap_lines "$word" < <(_corvanemap_presets "$program")
            return
            ;;
        --set)
            compopt -o nospace 2>/dev/null
            COMPREPLY=($(compgen -W "$(_corvanemap_settings "$program")" -- "$word"))
            return
            ;;
        --provider)
            COMPREPLY=($(compgen -W "$(_corvanemap_providers "$program")" -- "$word"))
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
        --point | --split | --simplify | --find | --near | --radius | --locate | --elevation | \
            --panorama)
            return
            ;;
    esac
    if [[ $word == -* ]]; then
        COMPREPLY=($(compgen -W "--output --merge --recursive --from --list --split --option --reverse
            --sort --unique --simplify --optimize --optimize=best --way --directions --as-track
            --with-way --mode --type --avoid --hilliness --windingness --tractor --roads --providers
            --provider --find --near --radius --locate --elevation --panorama --country --offline
            --send --point --force --no-sync --check --strict --tolerant --fit --encoding --quiet
            --formats --csv-read --csv-write --remember --settings --set --inspect --summary --json
            --help --version -o -h" -- "$word"))
        return
    fi

    # How many tokens stand in front of the word?
    for ((i = 0; i < ${#words[@]} - 1; i++)); do
        case ${words[i]} in
            -o | --output | --from | --list | --split | --option | --simplify | --provider | --find | \
                --near | --radius | --locate | --elevation | --panorama | --csv-read | \
                --csv-write | --set | --way | --mode | --type | --avoid | --hilliness | \
                --windingness | --send | --point | --encoding)
                ((i++))
                ;;
            --inspect) inspect=1 ;;
            -*) ;;
            *LANG_*) ;;
            *)
                ((++tokens == 2)) && second=${words[i]}
                ;;
        esac
    done
    if ((tokens == 0)); then
        _corvanemap_files "$word"
    elif [[ $inspect ]]; then
        return
    elif ((tokens > 1)) && _corvanemap_is_key "$program" "$second"; then
        COMPREPLY=($(compgen -W "LANG_ENGLISH LANG_FRENCH LANG_GERMAN LANG_DUTCH" -- "$word"))
    else
        # The key, or one more source.
        COMPREPLY=($(compgen -W "$(_corvanemap_keys "$program" write)" -- "$word"))
        if ((${#COMPREPLY[@]})); then
            _corvanemap_behind_colon "$word"
        else
            _corvanemap_files "$word"
        fi
    fi
}

complete -F _corvanemap corvanemap
